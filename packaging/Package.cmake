# cmake --build build/release --target package: a Debian package.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME vantoro)
set(CPACK_PACKAGE_VENDOR "The Vantoro project")
set(CPACK_PACKAGE_CONTACT "The Vantoro project <support@vantoro.org>")
set(CPACK_PACKAGE_HOMEPAGE_URL "https://vantoro.org/")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "archive utility for the desktop")
set(CPACK_PACKAGE_DESCRIPTION
    "Vantoro extracts archives of all usual formats into folders, shows what is in
them, and makes new ones. Archives are read by a confined process that has no
file system and no network. vantoro-cli runs the same engine without a display.")
set(CPACK_PACKAGE_DIRECTORY ${CMAKE_BINARY_DIR}/package)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# Loaded at run time, not linked: 7-Zip's plug-in library, libarchive, OpenSSL, ISA-L, uchardet, libwavpack, ICU (in the
# version that the names of its functions carry).
string(REGEX REPLACE "\\..*" "" VANTORO_ICU_MAJOR "${ICU_VERSION}")
set(CPACK_DEBIAN_PACKAGE_DEPENDS
    "p7zip-full | 7zip (>= 22), libarchive13 | libarchive13t64, libssl3 | libssl3t64, libicu${VANTORO_ICU_MAJOR}, libuchardet0, libisal2, libwavpack1, hicolor-icon-theme")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS
    "qt6-image-formats-plugins, qt6-wayland, qt6-translations-l10n, shared-mime-info, desktop-file-utils")
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "python3-nautilus, python3-caja")
include(CPack)
