# Where things go. A program finds its assets beside its executable, and the application its builder:
# all goes into one folder that can be moved anywhere. On a system each program has a folder of its
# own, to which a link on the search path leads.
include(GNUInstallDirs)

option(LUMENFOLD_SYSTEM_INSTALL
    "Install below lib with links, menu entry, icons, manual pages and completions" OFF)
if(LUMENFOLD_SYSTEM_INSTALL)
    set(application_dir "${CMAKE_INSTALL_LIBDIR}/lumenfold")
    set(builder_dir "${CMAKE_INSTALL_LIBDIR}/lumenfold-builder")
else()
    set(application_dir ".")
    set(builder_dir ".")
endif()

install(TARGETS lumenfold RUNTIME DESTINATION "${application_dir}" COMPONENT application)
foreach(part styles themes icons)
    install(DIRECTORY "${CMAKE_SOURCE_DIR}/ext/corvel/${part}"
        DESTINATION "${application_dir}/assets/corvel" COMPONENT application)
endforeach()
foreach(part styles icons)
    install(DIRECTORY "${CMAKE_SOURCE_DIR}/${part}"
        DESTINATION "${application_dir}/assets/app" COMPONENT application)
endforeach()
install(DIRECTORY "${CMAKE_SOURCE_DIR}/schemas" DESTINATION "${application_dir}"
    COMPONENT application)

install(TARGETS lumenfold_cli RUNTIME DESTINATION "${builder_dir}" COMPONENT builder)
install(DIRECTORY "${CMAKE_SOURCE_DIR}/ext/corvel/themes"
    DESTINATION "${builder_dir}/assets/corvel" COMPONENT builder)

if(LUMENFOLD_SYSTEM_INSTALL)
    include(DesktopFiles)
endif()
include(Packages)
