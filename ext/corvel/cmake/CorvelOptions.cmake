# One interface target carries the language level, the warnings and the sanitizers, so that no
# folder sets flags of its own.
include_guard(GLOBAL)

option(CORVEL_SANITIZE "Build with the address and undefined-behaviour sanitizers" OFF)
option(CORVEL_WERROR "Treat warnings as errors" ON)

set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/bin")

add_library(corvel_options INTERFACE)
target_compile_features(corvel_options INTERFACE cxx_std_20)
target_compile_options(corvel_options INTERFACE -Wall -Wextra -Wshadow -Wnon-virtual-dtor
    -Woverloaded-virtual -Wcast-align -Wnull-dereference)
if(CORVEL_WERROR)
    target_compile_options(corvel_options INTERFACE -Werror)
endif()
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # g++ 12 reports these inside the standard library at -O2, where nothing of ours is at fault.
    target_compile_options(corvel_options INTERFACE -Wno-null-dereference -Wno-restrict
        -Wno-maybe-uninitialized -Wno-stringop-overflow -Wno-array-bounds -Wno-dangling-pointer)
endif()
if(CORVEL_SANITIZE)
    target_compile_options(corvel_options INTERFACE -fsanitize=address,undefined
        -fno-sanitize-recover=all -fno-omit-frame-pointer -O1)
    target_link_options(corvel_options INTERFACE -fsanitize=address,undefined)
endif()

find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    # The base folder lets a clone in another place hit the same cache.
    set(CMAKE_CXX_COMPILER_LAUNCHER ${CMAKE_COMMAND} -E env
        "CCACHE_BASEDIR=${CMAKE_SOURCE_DIR}" CCACHE_NOHASHDIR=1 ${CCACHE_PROGRAM})
endif()
