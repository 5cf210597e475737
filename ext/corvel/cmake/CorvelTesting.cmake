# With CORVEL_SEPARATE_TESTS the runner sees each test of a program, each case and each story, and
# runs it in a process of its own; without, it sees the programs.
#
# corvel_test(NAME SOURCES ... LINKS ... [ROOT FOLDER] [ENVIRONMENT A=B ...] [GUI] [MANY_FILES]):
# one test program. It knows the folder in which the paths of its data begin as SOURCE_ROOT, Corvel's
# own unless told otherwise, and the folder "data" beside its sources as TEST_DATA_DIR. GUI tests run
# on the offscreen platform, those that write many small files on a file system in memory.
include_guard(GLOBAL)

find_package(GTest REQUIRED)
find_package(Qt6 6.4 REQUIRED COMPONENTS Test)

include(GoogleTest)

option(CORVEL_SEPARATE_TESTS "Let ctest see each test, case and story" OFF)

set(CORVEL_TESTS_DIR "${CMAKE_CURRENT_LIST_DIR}/../tests")
cmake_path(NORMAL_PATH CORVEL_TESTS_DIR)

function(corvel_test name)
    cmake_parse_arguments(PARSE_ARGV 1 test "GUI;MANY_FILES" "ROOT" "SOURCES;LINKS;ENVIRONMENT")
    if(NOT test_ROOT)
        cmake_path(GET CORVEL_TESTS_DIR PARENT_PATH test_ROOT)
    endif()
    add_executable(${name} ${test_SOURCES})
    target_include_directories(${name} PRIVATE "${test_ROOT}/tests" "${CORVEL_TESTS_DIR}")
    target_compile_definitions(${name} PRIVATE
        TEST_DATA_DIR="${CMAKE_CURRENT_SOURCE_DIR}/data"
        SOURCE_ROOT="${test_ROOT}")
    target_link_libraries(${name} PRIVATE ${test_LINKS} corvel_options)
    if(test_GUI)
        target_sources(${name} PRIVATE "${CORVEL_TESTS_DIR}/support/gui_main.cpp")
        target_compile_definitions(${name} PRIVATE
            TEST_FONTS="${CORVEL_TESTS_DIR}/support/fonts.conf")
        target_link_libraries(${name} PRIVATE GTest::gtest Qt6::Test Qt6::Widgets)
        corvel_qt_target(${name})
        list(APPEND test_ENVIRONMENT "QT_QPA_PLATFORM=offscreen")
        set(label "gui")
    else()
        target_link_libraries(${name} PRIVATE GTest::gtest_main)
        set(label "")
    endif()
    if(test_MANY_FILES AND EXISTS /dev/shm)
        list(APPEND test_ENVIRONMENT "TMPDIR=/dev/shm")
    endif()
    if(CORVEL_SEPARATE_TESTS)
        gtest_discover_tests(${name} TEST_PREFIX "${name}." DISCOVERY_MODE PRE_TEST
            PROPERTIES LABELS "${label}" ENVIRONMENT "${test_ENVIRONMENT}")
    else()
        add_test(NAME ${name} COMMAND ${name})
        set_tests_properties(${name} PROPERTIES LABELS "${label}" ENVIRONMENT "${test_ENVIRONMENT}")
    endif()
endfunction()
