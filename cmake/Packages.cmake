# Debian packages by cpack: the application, and the builder that it recommends but can do without.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME lumenfold)
set(CPACK_PACKAGE_VENDOR "orrinworkshop")
set(CPACK_PACKAGE_CONTACT "orrinworkshop <packages@orrinworkshop.example>")
set(CPACK_PACKAGE_VERSION "${PROJECT_VERSION}")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_COMPONENTS_ALL application builder)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SECTION text)

set(CPACK_DEBIAN_APPLICATION_PACKAGE_NAME lumenfold)
set(CPACK_DEBIAN_APPLICATION_DESCRIPTION "author, check and build documentation websites
Lumenfold edits the configuration of a static documentation website in
forms and keeps your files plain JSON and Markdown.")
set(CPACK_DEBIAN_APPLICATION_PACKAGE_DEPENDS "qt6-qpa-plugins")
set(CPACK_DEBIAN_APPLICATION_PACKAGE_RECOMMENDS
    "lumenfold-builder, qt6-image-formats-plugins, fonts-inter, gstreamer1.0-plugins-base, gstreamer1.0-plugins-good")

set(CPACK_DEBIAN_BUILDER_PACKAGE_NAME lumenfold-builder)
set(CPACK_DEBIAN_BUILDER_DESCRIPTION "build documentation websites from git repositories
The builder of Lumenfold: it makes a static website of a site's
configuration, and of each version of its projects, read from tags.")
include(CPack)
