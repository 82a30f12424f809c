# What every target is compiled with: `tarnwick_options`.

option(TARNWICK_SANITISE "Build with AddressSanitizer and UBSan" OFF)
option(TARNWICK_FUZZ "Count the branches taken, for clang's fuzzer; clang alone" OFF)
option(TARNWICK_COVERAGE "Count the lines and branches that run, for gcov" OFF)

if(NOT CMAKE_BUILD_TYPE)
    set(CMAKE_BUILD_TYPE Release CACHE STRING "" FORCE)
endif()

# Asserts guard against our own mistakes and stay on in every build, hence no -DNDEBUG.
set(CMAKE_CXX_FLAGS_RELEASE "-O2 -g1")
set(CMAKE_CXX_FLAGS_DEBUG "-O0 -g")
if(TARNWICK_SANITISE)
    set(CMAKE_CXX_FLAGS_DEBUG "-O1 -g1")
endif()

find_program(TARNWICK_CCACHE ccache)
if(TARNWICK_CCACHE)
    # ccache keeps nothing of a file with precompiled headers unless told that we name no time of the compilation and
    # that macros of the headers count by their text.
    # It looks at the files that the compiler names instead of running the preprocessor first.
    set(CMAKE_CXX_COMPILER_LAUNCHER env CCACHE_DEPEND=1
        CCACHE_SLOPPINESS=pch_defines,time_macros ${TARNWICK_CCACHE})
endif()

# The linkers of most machines are slow; these two are not.
find_program(TARNWICK_MOLD mold)
find_program(TARNWICK_LLD ld.lld)
if(TARNWICK_MOLD)
    add_link_options(-fuse-ld=mold)
elseif(TARNWICK_LLD)
    add_link_options(-fuse-ld=lld)
endif()

add_library(tarnwick_options INTERFACE)
target_compile_features(tarnwick_options INTERFACE cxx_std_20)
target_compile_options(tarnwick_options INTERFACE
    -Wall -Wextra -Wpedantic -Werror -Wshadow -Wconversion -Wsign-conversion -Wdouble-promotion
    -Wold-style-cast -Wnon-virtual-dtor -Woverloaded-virtual -Wmissing-declarations -Wundef
    $<$<CXX_COMPILER_ID:GNU>:-Wduplicated-cond -Wlogical-op>
    # What ccache needs to see through a precompiled header; and a header of one place serves all others.
    $<$<CXX_COMPILER_ID:GNU>:-fpch-preprocess>
    "$<$<CXX_COMPILER_ID:Clang>:SHELL:-Xclang -fno-pch-timestamp>"
    # A fused multiply-add rounds once where the text rounds twice: same level, same input, same bytes.
    -ffp-contract=off
    # sqrt of a negative number need not set errno; without this every square root carries a call.
    -fno-math-errno
    # All code ends in a program, none in a shared library: data lie at a known distance and functions can be inlined.
    -fPIE)
target_link_options(tarnwick_options INTERFACE -pie)
set_property(TARGET tarnwick_options PROPERTY CXX_EXTENSIONS OFF)
set(CMAKE_CXX_EXTENSIONS OFF)
if(TARNWICK_SANITISE)
    target_compile_options(tarnwick_options INTERFACE
        -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(tarnwick_options INTERFACE -fsanitize=address,undefined)
endif()
if(TARNWICK_FUZZ)
    if(NOT CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
        message(FATAL_ERROR "TARNWICK_FUZZ needs clang: cmake --preset fuzz")
    endif()
    target_compile_options(tarnwick_options INTERFACE -fsanitize=fuzzer-no-link)
endif()
if(TARNWICK_COVERAGE)
    # Branches that only an exception out of a library takes are not ours to cover: the figures leave them out.
    target_compile_options(tarnwick_options INTERFACE --coverage -fprofile-update=atomic)
    target_link_options(tarnwick_options INTERFACE --coverage)
endif()
