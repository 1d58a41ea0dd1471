# find_package(VendrelModel) and pkg-config after `cmake --install`.
# Each part has a component, which is a package of its own (cmake/Packages.cmake).
install(TARGETS vendrelmodel_static vendrelmodel_shared EXPORT VendrelModelTargets
        ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT library
                NAMELINK_COMPONENT development)
install(TARGETS vendrelmodel RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT tool)
# The headers below vendrelmodel/, which include each other so.
install(CODE "execute_process(COMMAND \"${CMAKE_COMMAND}\" \"-DSOURCE=${PROJECT_SOURCE_DIR}\"
  \"-DTARGET=\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_INCLUDEDIR}\"
  -P \"${PROJECT_SOURCE_DIR}/cmake/InstallHeaders.cmake\" COMMAND_ERROR_IS_FATAL ANY)" COMPONENT development)
install(EXPORT VendrelModelTargets NAMESPACE VendrelModel::
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/VendrelModel COMPONENT development)
configure_package_config_file(cmake/VendrelModelConfig.cmake.in
  ${PROJECT_BINARY_DIR}/VendrelModelConfig.cmake
  INSTALL_DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/VendrelModel)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/VendrelModelConfigVersion.cmake
                                 COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/VendrelModelConfig.cmake
              ${PROJECT_BINARY_DIR}/VendrelModelConfigVersion.cmake
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/VendrelModel COMPONENT development)
# The file names its prefix from its own place, so that `cmake --install --prefix` may choose one.
file(RELATIVE_PATH VENDREL_PC_TO_PREFIX "/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/")
string(REGEX REPLACE "/$" "" VENDREL_PC_TO_PREFIX "${VENDREL_PC_TO_PREFIX}")
configure_file(cmake/vendrelmodel.pc.in ${PROJECT_BINARY_DIR}/vendrelmodel.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/vendrelmodel.pc
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)
install(FILES ${PROJECT_SOURCE_DIR}/CHANGELOG.md ${PROJECT_SOURCE_DIR}/docs/start.md
        DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/vendrelmodel COMPONENT tool)
