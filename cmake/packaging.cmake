# Desktop integration and the Debian package.
#
# The programs find their shipped files at ../share/pairview beside their own
# executable, so the layout below works from any prefix.

set(PV_SHARE ${PROJECT_SOURCE_DIR}/share)
install(FILES ${PV_SHARE}/applications/pairview.desktop DESTINATION share/applications)
install(FILES ${PV_SHARE}/icons/hicolor/scalable/apps/pairview.svg
        DESTINATION share/icons/hicolor/scalable/apps)
configure_file(${PV_SHARE}/metainfo/org.pairview.Pairview.metainfo.xml
               ${PROJECT_BINARY_DIR}/org.pairview.Pairview.metainfo.xml @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/org.pairview.Pairview.metainfo.xml DESTINATION share/metainfo)
install(FILES ${PV_SHARE}/man/man1/pvcompare.1 ${PV_SHARE}/man/man1/pvcmd.1
        DESTINATION share/man/man1)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME pairview)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_VENDOR "The Pairview developers")
set(CPACK_PACKAGE_CONTACT "The Pairview developers <pairview@localhost>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "Compare two directories side by side and act on what differs")
set(CPACK_PACKAGE_DESCRIPTION
    "Pairview lists the files of two directories side by side and reports each one as\n"
    "matched, different (by date and time or by length) or present on one side only.\n"
    "It steps through the differences, compares pairs of files, finds files and text\n"
    "and copies between the panes, through command scripts that its own interpreter,\n"
    "pvcmd, runs with fc, findstr, dir and xcopy built in. pvcompare runs the same\n"
    "compare without a window, for scripts and CI.")
string(REPLACE ";" "" CPACK_PACKAGE_DESCRIPTION "${CPACK_PACKAGE_DESCRIPTION}")
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "${CPACK_PACKAGE_CONTACT}")
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
# Run-time dependencies come from the binaries themselves (dpkg-shlibdeps); the SVG
# icon plugin and xdg-open are loaded or started at run time, so they are named.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS "libqt6svg6, qt6-qpa-plugins, xdg-utils")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
include(CPack)
