# Most of a compilation goes into reading the standard library's headers. So they are read once for each kind of
# target, and the targets of that kind share the result:
#
#   standard  the standard library; every target of ours that names no other
#   tests     and GoogleTest
#   json      the standard library and nlohmann/json
#   json_tests  GoogleTest and nlohmann/json
#
# CLI11 is in none: it defines objects, so that each file that reads it compiles all of it.
# Only headers that never change here are among them: a header of ours would build everything anew at each change.
# No file may lean on them; building with TARNWICK_PRECOMPILED=OFF (the preset `alone`) proves that none does.
option(TARNWICK_PRECOMPILED "Read the headers of libraries once for all files" ON)

set(TARNWICK_PRECOMPILED_standard
    <algorithm> <array> <bit> <cmath> <cstddef> <cstdint> <cstdio> <cstdlib> <cstring> <fstream> <functional>
    <iterator> <limits> <list> <map> <memory> <set> <span> <string> <string_view> <utility> <vector>)
set(TARNWICK_PRECOMPILED_tests
    ${TARNWICK_PRECOMPILED_standard} <filesystem> <random> <sstream> <gtest/gtest.h>)
set(TARNWICK_PRECOMPILED_json
    ${TARNWICK_PRECOMPILED_standard} <iostream> <optional> <nlohmann/json.hpp>)
set(TARNWICK_PRECOMPILED_json_tests
    ${TARNWICK_PRECOMPILED_tests} <optional> <nlohmann/json.hpp>)
set(TARNWICK_PRECOMPILED_json_LIBRARIES nlohmann_json::nlohmann_json)
set(TARNWICK_PRECOMPILED_tests_LIBRARIES GTest::gtest)
set(TARNWICK_PRECOMPILED_json_tests_LIBRARIES GTest::gtest nlohmann_json::nlohmann_json)

# tarnwick_precompiled(TARGET KIND): the files of TARGET start with the precompiled headers of KIND.
function(tarnwick_precompiled target kind)
    if(NOT TARNWICK_PRECOMPILED)
        return()
    endif()
    set(headers tarnwick_precompiled_${kind})
    if(NOT TARGET ${headers})
        add_library(${headers} OBJECT ${PROJECT_SOURCE_DIR}/cmake/Precompiled.cpp)
        target_link_libraries(${headers} PRIVATE tarnwick_options ${TARNWICK_PRECOMPILED_${kind}_LIBRARIES})
        target_precompile_headers(${headers} PRIVATE ${TARNWICK_PRECOMPILED_${kind}})
    endif()
    target_precompile_headers(${target} REUSE_FROM ${headers})
    if(kind MATCHES "json|tests")
        # g++ 12 forgets on the way which warnings the library's headers switch off, and finds errors in std::string
        # that are none. Without precompiled headers these warnings are on.
        target_compile_options(${target} PRIVATE $<$<CXX_COMPILER_ID:GNU>:
            -Wno-array-bounds -Wno-restrict -Wno-stringop-overflow -Wno-stringop-overread>)
    endif()
endfunction()

# Builds everything once more, in build/alone, each file with nothing but the headers that it includes.
add_custom_target(each_file_alone
    COMMAND ${CMAKE_COMMAND} --preset alone
    COMMAND ${CMAKE_COMMAND} --build --preset alone
    WORKING_DIRECTORY ${PROJECT_SOURCE_DIR}
    USES_TERMINAL VERBATIM)
