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

# install_documents(PROGRAM PACKAGE COMPONENT): its manual page, compressed without a time so that
# equal builds are equal, and what each package of a distribution has in its folder of documents.
find_program(GZIP_PROGRAM gzip)
function(install_documents program package component)
    set(page "${linux_files}/${program}.1")
    if(GZIP_PROGRAM)
        set(packed "${CMAKE_CURRENT_BINARY_DIR}/pages/${program}.1.gz")
        file(MAKE_DIRECTORY "${CMAKE_CURRENT_BINARY_DIR}/pages")
        add_custom_command(OUTPUT "${packed}"
            COMMAND sh -c "${GZIP_PROGRAM} -9nc < '${page}' > '${packed}'"
            DEPENDS "${page}" VERBATIM)
        add_custom_target(${component}_page ALL DEPENDS "${packed}")
        set(page "${packed}")
    endif()
    install(FILES "${page}" DESTINATION "${CMAKE_INSTALL_MANDIR}/man1" COMPONENT ${component})
    install(FILES "${linux_files}/copyright" "${CMAKE_SOURCE_DIR}/CHANGELOG.md"
        DESTINATION "${CMAKE_INSTALL_DATADIR}/doc/${package}" COMPONENT ${component})
endfunction()
install_documents(lumenfold lumenfold application)
install_documents(lumenfold-cli lumenfold-builder builder)

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
