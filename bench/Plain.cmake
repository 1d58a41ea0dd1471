# vendrelmodel_bench_plain: the program that measures, with a library made from a copy of src/ in
# which the catch clauses that only add a context to a failure are taken out.
set(plain_source ${PROJECT_SOURCE_DIR}/src)
set(plain_copy ${CMAKE_CURRENT_BINARY_DIR}/plain)
file(GLOB_RECURSE plain_headers CONFIGURE_DEPENDS ${plain_source}/*.h)
set(plain_files ${VENDREL_SOURCES} ${plain_headers})
list(REMOVE_ITEM plain_files ${VENDREL_EMBEDDED})  # no file of src/
set(plain_copies ${plain_files})
list(TRANSFORM plain_copies REPLACE "^${plain_source}" "${plain_copy}")

set(plain_script ${CMAKE_CURRENT_SOURCE_DIR}/without_contexts.py)
add_custom_command(OUTPUT ${plain_copies}
                   COMMAND Python3::Interpreter ${plain_script} ${plain_source} ${plain_copy}
                   DEPENDS ${plain_script} ${plain_files}
                   COMMENT "Copying src/ without the contexts of failures" VERBATIM)

add_library(vendrel_plain STATIC EXCLUDE_FROM_ALL ${plain_copies} ${VENDREL_EMBEDDED})
target_include_directories(vendrel_plain PUBLIC ${plain_copy})
target_link_libraries(vendrel_plain
                      PUBLIC pugixml::pugixml
                      PRIVATE vendrel_flags nlohmann_json::nlohmann_json PkgConfig::RE2
                              PkgConfig::UTF8PROC PkgConfig::UCHARDET)
set_source_files_properties(${plain_copy}/core/Version.cpp
                            PROPERTIES COMPILE_DEFINITIONS VENDREL_VERSION="${PROJECT_VERSION}"
                                       SKIP_PRECOMPILE_HEADERS ON)
if(VENDREL_PRECOMPILE)
  target_precompile_headers(vendrel_plain PRIVATE ${plain_copy}/project/VBProject.h)
endif()

get_target_property(bench_sources vendrelmodel_bench SOURCES)
add_executable(vendrelmodel_bench_plain EXCLUDE_FROM_ALL ${bench_sources})
target_include_directories(vendrelmodel_bench_plain PRIVATE ${PROJECT_SOURCE_DIR}/tests)
target_link_libraries(vendrelmodel_bench_plain
                      PRIVATE vendrel_generator vendrel_plain CLI11::CLI11 benchmark::benchmark
                              vendrel_flags)
