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

# Manual pages and the changelog are installed compressed, as Debian wants them
# (gzip -n: no name or time stamp, so the same sources give the same bytes).
find_program(PV_GZIP gzip REQUIRED)
configure_file(${PV_SHARE}/doc/changelog ${PROJECT_BINARY_DIR}/doc/changelog @ONLY)
set(PV_COMPRESSED)
foreach(source IN ITEMS ${PV_SHARE}/man/man1/pairview.1 ${PV_SHARE}/man/man1/pvcompare.1
                        ${PV_SHARE}/man/man1/pvcmd.1 ${PROJECT_BINARY_DIR}/doc/changelog)
  get_filename_component(name ${source} NAME)
  set(target ${PROJECT_BINARY_DIR}/doc/${name}.gz)
  add_custom_command(OUTPUT ${target}
                     COMMAND ${PV_GZIP} -9n -c ${source} > ${target}
                     DEPENDS ${source} VERBATIM)
  list(APPEND PV_COMPRESSED ${target})
endforeach()
add_custom_target(pv_compressed_docs ALL DEPENDS ${PV_COMPRESSED})
install(FILES ${PROJECT_BINARY_DIR}/doc/pairview.1.gz ${PROJECT_BINARY_DIR}/doc/pvcompare.1.gz
              ${PROJECT_BINARY_DIR}/doc/pvcmd.1.gz
        DESTINATION share/man/man1)
install(FILES ${PROJECT_BINARY_DIR}/doc/changelog.gz ${PV_SHARE}/doc/copyright
        DESTINATION share/doc/pairview)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME pairview)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_VENDOR "The Pairview developers")
set(CPACK_PACKAGE_CONTACT "The Pairview developers <pairview@pairview.invalid>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "Compare two directories side by side and act on what differs")
# Debian shows each line of the long description indented by one blank, within
# 80 columns.
set(CPACK_PACKAGE_DESCRIPTION
    "Pairview lists the files of two directories side by side and reports\n"
    "each one as matched, different (by date and time or by length) or\n"
    "present on one side only. It steps through the differences, compares\n"
    "pairs of files, finds files and text and copies between the panes,\n"
    "through command scripts that its own interpreter, pvcmd, runs with fc,\n"
    "findstr, dir and xcopy built in. pvcompare runs the same compare without\n"
    "a window, for scripts and CI.")
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
