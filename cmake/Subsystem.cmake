# tarnwick_subsystem(NAME HEADERS ... SOURCES ... [LIBRARIES ...])
#
# A static library `tarnwick_NAME` of files of one folder of src, listed by name. Link `tarnwick_world`, which is what a
# level is and how it moves, or `tarnwick_modules`, which is all: above the world modules call one another in circles,
# so nothing links one of those subsystems alone. `all_verify_interface_header_sets` compiles each header by itself.
function(tarnwick_subsystem name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "HEADERS;SOURCES;LIBRARIES")
    add_library(tarnwick_${name} STATIC ${arg_SOURCES})
    target_sources(tarnwick_${name} PUBLIC FILE_SET HEADERS BASE_DIRS ${PROJECT_SOURCE_DIR}/src FILES ${arg_HEADERS})
    set_target_properties(tarnwick_${name} PROPERTIES VERIFY_INTERFACE_HEADER_SETS ON)
    target_link_libraries(tarnwick_${name} PUBLIC tarnwick_options PRIVATE ${arg_LIBRARIES})
    target_include_directories(tarnwick_${name} PUBLIC ${PROJECT_SOURCE_DIR}/src)
    tarnwick_precompiled(tarnwick_${name} standard)
endfunction()

# tarnwick_test_suite(NAME SOURCES ... [LIBRARIES ...])
#
# The tests of one subsystem, as objects: all of them make up `tarnwick_tests`, and `tarnwick_tests_NAME` (built on
# demand only) holds these alone, which links in a moment while one works on a module.
function(tarnwick_test_suite name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;LIBRARIES")
    add_library(tarnwick_tests_${name}_objects OBJECT ${arg_SOURCES})
    target_link_libraries(tarnwick_tests_${name}_objects PUBLIC tarnwick_test_support ${arg_LIBRARIES})
    # What a test asserts runs once: the second level of optimisation costs more than it saves.
    target_compile_options(tarnwick_tests_${name}_objects PRIVATE $<$<CONFIG:Release>:-O1>)
    if("nlohmann_json::nlohmann_json" IN_LIST arg_LIBRARIES)
        tarnwick_precompiled(tarnwick_tests_${name}_objects json_tests)
    else()
        tarnwick_precompiled(tarnwick_tests_${name}_objects tests)
    endif()
    add_executable(tarnwick_tests_${name} EXCLUDE_FROM_ALL)
    target_link_libraries(tarnwick_tests_${name} PRIVATE tarnwick_tests_${name}_objects tarnwick_test_main)
    target_link_libraries(tarnwick_tests PRIVATE tarnwick_tests_${name}_objects)
endfunction()
