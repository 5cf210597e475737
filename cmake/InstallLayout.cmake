# The program finds its assets beside its executable, so both go into one folder.
set(LUMENFOLD_INSTALL_DIR "." CACHE STRING "Folder below the install prefix")

install(TARGETS lumenfold RUNTIME DESTINATION "${LUMENFOLD_INSTALL_DIR}")
foreach(part styles themes icons)
    install(DIRECTORY "${CMAKE_SOURCE_DIR}/ext/corvel/${part}"
        DESTINATION "${LUMENFOLD_INSTALL_DIR}/assets/corvel")
endforeach()
foreach(part styles icons)
    install(DIRECTORY "${CMAKE_SOURCE_DIR}/${part}"
        DESTINATION "${LUMENFOLD_INSTALL_DIR}/assets/app")
endforeach()
