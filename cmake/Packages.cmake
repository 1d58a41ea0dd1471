# Debian packages: `cpack --config build/release/CPackConfig.cmake` makes one of each part. What they
# depend on is read from what they are linked to.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME vendrelmodel)
set(CPACK_PACKAGE_VENDOR "VendrelModel")
set(CPACK_PACKAGE_CONTACT "VendrelModel developers <vendrelmodel@localhost>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${PROJECT_DESCRIPTION}")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL tool library development)
if(VENDREL_BUILD_PYTHON)
  list(APPEND CPACK_COMPONENTS_ALL python)
endif()
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)

set(CPACK_DEBIAN_TOOL_PACKAGE_NAME vendrelmodel)
set(CPACK_DEBIAN_TOOL_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_LIBRARY_PACKAGE_NAME libvendrelmodel2)
set(CPACK_DEBIAN_LIBRARY_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libvendrelmodel-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SHLIBDEPS OFF)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS
    "libvendrelmodel2 (= ${PROJECT_VERSION}), libpugixml-dev, libre2-dev, libutf8proc-dev, libuchardet-dev")
set(CPACK_DEBIAN_PYTHON_PACKAGE_NAME python3-vendrelmodel)
set(CPACK_DEBIAN_PYTHON_PACKAGE_SECTION python)
# Compiled for the Python of this system.
execute_process(COMMAND /usr/bin/python3 -c
                "import sys; print('python3 (>= %d.%d), python3 (<< %d.%d)' % (*sys.version_info[:2], sys.version_info[0], sys.version_info[1] + 1))"
                OUTPUT_VARIABLE CPACK_DEBIAN_PYTHON_PACKAGE_DEPENDS OUTPUT_STRIP_TRAILING_WHITESPACE
                ERROR_QUIET)
include(CPack)
