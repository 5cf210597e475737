# Functions for the targets of Corvel and of applications on it.
include_guard(GLOBAL)

# What every Qt target gets: moc, and no silent conversions between bytes and QString.
function(corvel_qt_target target)
    set_target_properties(${target} PROPERTIES AUTOMOC ON)
    target_compile_definitions(${target} PRIVATE QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII
        QT_NO_KEYWORDS QT_NO_FOREACH)
endfunction()

# Stops the configuration when a target that must stay free of Qt links it, directly or through
# another of our libraries. Called after the target's links are written.
function(corvel_require_qt_free target)
    set(queue ${target})
    set(seen "")
    while(queue)
        list(POP_FRONT queue current)
        if(current IN_LIST seen)
            continue()
        endif()
        list(APPEND seen ${current})
        if(current MATCHES "Qt[56]?::|^Qt[56]")
            message(FATAL_ERROR "${target} must not depend on Qt, but reaches ${current}")
        endif()
        if(TARGET ${current})
            foreach(property LINK_LIBRARIES INTERFACE_LINK_LIBRARIES)
                get_target_property(links ${current} ${property})
                if(links)
                    string(REGEX REPLACE "\\$<LINK_ONLY:([^>]*)>" "\\1" links "${links}")
                    list(APPEND queue ${links})
                endif()
            endforeach()
        endif()
    endwhile()
endfunction()

# corvel_check_assets(NAME ARGUMENTS...): every build checks styles, themes and icons first. The
# arguments are those of corvel_lint; whatever lies in the folders named is watched.
function(corvel_check_assets name)
    set(watched "")
    foreach(argument IN LISTS ARGN)
        if(IS_DIRECTORY "${argument}")
            file(GLOB_RECURSE files CONFIGURE_DEPENDS "${argument}/*.*")
            list(APPEND watched ${files})
        endif()
    endforeach()
    set(stamp "${CMAKE_CURRENT_BINARY_DIR}/${name}.stamp")
    add_custom_command(OUTPUT "${stamp}"
        COMMAND corvel_lint ${ARGN}
        COMMAND ${CMAKE_COMMAND} -E touch "${stamp}"
        DEPENDS corvel_lint ${watched}
        COMMENT "Checking ${name}"
        VERBATIM)
    add_custom_target(${name} ALL DEPENDS "${stamp}")
endfunction()
