# What a Linux desktop and its shells look for (freedesktop.org: desktop entries, shared MIME
# information, AppStream, icon themes).
set(linux_files "${CMAKE_SOURCE_DIR}/packaging/linux")

# link_on_path(NAME FOLDER COMPONENT): NAME in the search path leads to the program in FOLDER.
function(link_on_path name folder component)
    file(RELATIVE_PATH target "/${CMAKE_INSTALL_BINDIR}" "/${folder}/${name}")
    set(link "${CMAKE_CURRENT_BINARY_DIR}/links/${name}")
    file(MAKE_DIRECTORY "${CMAKE_CURRENT_BINARY_DIR}/links")
    file(CREATE_LINK "${target}" "${link}" SYMBOLIC)
    install(FILES "${link}" DESTINATION "${CMAKE_INSTALL_BINDIR}" COMPONENT ${component})
endfunction()
link_on_path(lumenfold "${application_dir}" application)
link_on_path(lumenfold-cli "${builder_dir}" builder)

install(FILES "${linux_files}/lumenfold.desktop"
    DESTINATION "${CMAKE_INSTALL_DATADIR}/applications" COMPONENT application)
install(FILES "${linux_files}/lumenfold-mime.xml" RENAME lumenfold.xml
    DESTINATION "${CMAKE_INSTALL_DATADIR}/mime/packages" COMPONENT application)
install(FILES "${linux_files}/example.orrinworkshop.lumenfold.metainfo.xml"
    DESTINATION "${CMAKE_INSTALL_DATADIR}/metainfo" COMPONENT application)
install(FILES "${linux_files}/lumenfold.1"
    DESTINATION "${CMAKE_INSTALL_MANDIR}/man1" COMPONENT application)
install(FILES "${linux_files}/lumenfold-cli.1"
    DESTINATION "${CMAKE_INSTALL_MANDIR}/man1" COMPONENT builder)

install(FILES "${linux_files}/lumenfold-cli.bash" RENAME lumenfold-cli
    DESTINATION "${CMAKE_INSTALL_DATADIR}/bash-completion/completions" COMPONENT builder)
install(FILES "${linux_files}/_lumenfold-cli"
    DESTINATION "${CMAKE_INSTALL_DATADIR}/zsh/site-functions" COMPONENT builder)
install(FILES "${linux_files}/lumenfold-cli.fish"
    DESTINATION "${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d" COMPONENT builder)

set(logo "${CMAKE_SOURCE_DIR}/icons/logo_lumenfold.svg")
set(icons_dir "${CMAKE_INSTALL_DATADIR}/icons/hicolor")
install(FILES "${logo}" RENAME lumenfold.svg
    DESTINATION "${icons_dir}/scalable/apps" COMPONENT application)
find_program(RSVG_CONVERT rsvg-convert)
if(RSVG_CONVERT)
    set(sizes 16 22 24 32 48 64 128 256 512)
    foreach(size IN LISTS sizes)
        set(icon "${CMAKE_CURRENT_BINARY_DIR}/icons/${size}/lumenfold.png")
        add_custom_command(OUTPUT "${icon}"
            COMMAND ${CMAKE_COMMAND} -E make_directory "${CMAKE_CURRENT_BINARY_DIR}/icons/${size}"
            COMMAND ${RSVG_CONVERT} -w ${size} -h ${size} -o "${icon}" "${logo}"
            DEPENDS "${logo}" VERBATIM)
        list(APPEND icons "${icon}")
        install(FILES "${icon}" DESTINATION "${icons_dir}/${size}x${size}/apps"
            COMPONENT application)
    endforeach()
    add_custom_target(desktop_icons ALL DEPENDS ${icons})
endif()
