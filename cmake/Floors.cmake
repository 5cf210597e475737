# The application is built in floors, one folder and one static library each. A floor may use those
# that are already there, so the order of `add_subdirectory` keeps every arrow pointing downwards:
#
#     lumenfold_floor(forms SOURCES add_dialog.cpp ... USES editing [LINKS target ...])
#
# makes lumenfold_forms. What a floor may include is told by the table in docs/architecture.md.
function(lumenfold_floor name)
    cmake_parse_arguments(PARSE_ARGV 1 floor "" "" "SOURCES;USES;LINKS")
    foreach(used IN LISTS floor_USES)
        if(NOT TARGET lumenfold_${used})
            message(FATAL_ERROR "app/${name} uses app/${used}, which is not below it")
        endif()
        list(APPEND floor_LINKS lumenfold_${used})
    endforeach()
    add_library(lumenfold_${name} STATIC ${floor_SOURCES})
    target_include_directories(lumenfold_${name} PUBLIC "${CMAKE_SOURCE_DIR}")
    target_link_libraries(lumenfold_${name} PUBLIC ${floor_LINKS})
    lumenfold_require_qt_free(lumenfold_${name})
endfunction()
