# tarnwick_discover_suites(TARGET WORKING_DIRECTORY FOLDER [ENVIRONMENT NAME=VALUE ...] [SHARDS SUITE COUNT ...])
#
# Registers the GoogleTest suites of the program TARGET with CTest, each as one test that runs in one process. A process
# a test would spend more time on loading sixty libraries than on testing, and the fixtures put every module back to
# program start. A suite that takes long is dealt out to COUNT processes, so that the last of several jobs does not
# run on alone; CTest starts these first.
#
# The program is asked for its suites by CTest, just before the tests run, and only after it has changed: it costs the
# build nothing.
function(tarnwick_discover_suites target)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "WORKING_DIRECTORY" "ENVIRONMENT;SHARDS")
    set(include ${CMAKE_CURRENT_BINARY_DIR}/${target}_suites.cmake)
    file(GENERATE OUTPUT ${include} CONTENT
"set(program [==[$<TARGET_FILE:${target}>]==])
set(working_directory [==[${arg_WORKING_DIRECTORY}]==])
set(environment [==[${arg_ENVIRONMENT}]==])
set(shards [==[${arg_SHARDS}]==])
include([==[${PROJECT_SOURCE_DIR}/cmake/ListSuites.cmake]==])
")
    set_property(DIRECTORY APPEND PROPERTY TEST_INCLUDE_FILES ${include})
endfunction()
