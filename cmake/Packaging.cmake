# Installation for Linux render nodes and the Debian package built from it:
#   bin/orbivane-render                  the command-line renderer
#   lib/orbivane/Orbivane.so, .pipl      the effect module and its PiPL sidecar, found by the
#                                        renderer relative to its own folder
#   share/orbivane/examples/             the example scenes
#   share/doc/orbivane/                  README and the documentation
# cpack -G DEB (scripts/package.sh) writes dist/orbivane_<version>_<arch>.deb; its dependencies
# come from dpkg-shlibdeps, so they name exactly the shared libraries the programs link.
include(GNUInstallDirs)

install(TARGETS orbivane-render RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(TARGETS Orbivane LIBRARY DESTINATION lib/orbivane)
# Image files other than PNG (EXR frames, TIFF or JPEG textures) go through this module.
install(TARGETS orbivane_imageio LIBRARY DESTINATION lib/orbivane)
install(FILES ${CMAKE_BINARY_DIR}/Orbivane.pipl DESTINATION lib/orbivane)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/examples/ DESTINATION ${CMAKE_INSTALL_DATADIR}/orbivane/examples)
install(FILES ${PROJECT_SOURCE_DIR}/README.md DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/orbivane)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/docs/ DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/orbivane)

set(CPACK_PACKAGE_NAME orbivane)
set(CPACK_PACKAGE_VENDOR "Orbivane")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "Orbivane effect renderer for render nodes (orbivane-render)")
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_SOURCE_DIR}/dist)
set(CPACK_GENERATOR DEB)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "Orbivane developers <orbivane@localhost>")
set(CPACK_DEBIAN_PACKAGE_SECTION graphics)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
    "Renders Orbivane scenes (JSON) to PNG or OpenEXR with the Orbivane After Effects effect\n loaded into a headless emulated host. Scene examples are in /usr/share/orbivane/examples.")
include(CPack)
