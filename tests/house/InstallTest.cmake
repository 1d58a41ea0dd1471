# Installs the build into an empty prefix, then builds and runs the consumer against it: by
# find_package and by pkg-config, with the static and with the shared library. Then each header is
# compiled alone, and the programs of the guide are compiled and run.
#   cmake -DBUILD=... -DSOURCE=... -DWORK=... -DCXX=... -P InstallTest.cmake
cmake_minimum_required(VERSION 3.25)
set(prefix "${WORK}/prefix")
file(REMOVE_RECURSE "${WORK}")

function(step)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE result OUTPUT_VARIABLE output
                  ERROR_VARIABLE output)
  if(NOT result EQUAL 0)
    list(JOIN ARGN " " command)
    message(FATAL_ERROR "${command}\n${output}")
  endif()
endfunction()

function(expect_shared program wanted)
  execute_process(COMMAND ldd "${program}" OUTPUT_VARIABLE libraries COMMAND_ERROR_IS_FATAL ANY)
  string(REGEX MATCH "libvendrelmodel\\.so\\.2[^\n]*" found "${libraries}")
  if(wanted AND NOT found MATCHES "${prefix}")
    message(FATAL_ERROR "${program} does not use the installed shared library: ${libraries}")
  elseif(found AND NOT wanted)
    message(FATAL_ERROR "${program} uses the shared library: ${found}")
  endif()
endfunction()

step(${CMAKE_COMMAND} --install "${BUILD}" --prefix "${prefix}")
step("${prefix}/bin/vendrelmodel" --version)
foreach(page IN ITEMS man/man1/vendrelmodel.1 man/man1/vendrelmodel-find.1
                      bash-completion/completions/vendrelmodel zsh/vendor-completions/_vendrelmodel
                      fish/vendor_completions.d/vendrelmodel.fish doc/vendrelmodel/manual.html)
  if(NOT EXISTS "${prefix}/share/${page}")
    message(FATAL_ERROR "${page} was not installed")
  endif()
endforeach()

foreach(shared IN ITEMS OFF ON)
  set(folder "${WORK}/package-${shared}")
  step(${CMAKE_COMMAND} -S "${SOURCE}/tests/house/consumer" -B "${folder}" -G Ninja
       "-DCMAKE_PREFIX_PATH=${prefix}" "-DCMAKE_CXX_COMPILER=${CXX}" -DBUILD_SHARED_LIBS=${shared})
  step(${CMAKE_COMMAND} --build "${folder}")
  step("${folder}/consumer")
  expect_shared("${folder}/consumer" ${shared})
endforeach()

file(GLOB_RECURSE description "${prefix}/*/vendrelmodel.pc")
get_filename_component(description "${description}" DIRECTORY)
get_filename_component(libraries "${description}" DIRECTORY)
foreach(shared IN ITEMS OFF ON)
  set(kind --static)
  if(shared)
    set(kind --shared)
  endif()
  execute_process(COMMAND ${CMAKE_COMMAND} -E env "PKG_CONFIG_PATH=${description}"
                          pkg-config --cflags --libs ${kind} vendrelmodel
                  OUTPUT_VARIABLE flags COMMAND_ERROR_IS_FATAL ANY)
  separate_arguments(flags UNIX_COMMAND "${flags}")
  if(NOT shared)  # both kinds have one name; this is how a linker is told to take the archive
    list(TRANSFORM flags REPLACE "^-lvendrelmodel$" "-l:libvendrelmodel.a")
  endif()
  set(program "${WORK}/pkgconfig-${shared}")
  step("${CXX}" -std=c++20 "${SOURCE}/tests/house/consumer/Main.cpp" -o "${program}" ${flags}
       "-Wl,-rpath,${libraries}")
  step("${program}")
  expect_shared("${program}" ${shared})
endforeach()

step("${SOURCE}/tests/house/headers.sh" "${prefix}/include" "${WORK}/headers" "${CXX}")
step("${SOURCE}/tests/house/guide.sh" "${SOURCE}/docs/library.md" "${WORK}/guide"
     "${SOURCE}/samples/Ledger/Ledger.vbp" "${CXX}" -std=c++20 -Wall -Wextra -Werror "{}" ${flags}
     "-Wl,-rpath,${libraries}")
file(REMOVE_RECURSE "${WORK}")
