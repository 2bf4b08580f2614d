# The desktop application's entries: launcher, bus service, types, icons, menus of file managers.
include(${CMAKE_CURRENT_LIST_DIR}/ArchiveTypes.cmake)
set(application org.vantoro.vantoro)
set(data ${CMAKE_INSTALL_DATADIR})
set(icons ${CMAKE_SOURCE_DIR}/resources/icons)

string(JOIN ";" desktop_mime_types ${VANTORO_MIME_TYPES})
string(APPEND desktop_mime_types ";")
string(JOIN ";" menu_mime_types ${VANTORO_MENU_TYPES})
string(APPEND menu_mime_types ";")
set(thunar_patterns "*.zip;*.zipx;*.rar;*.7z;*.tar;*.gz;*.tgz;*.bz2;*.tbz2;*.xz;*.txz;*.zst;*.lzma;*.lha;*.lzh;*.sit;*.hqx;*.cab;*.iso;*.arj;*.ace;*.alz;*.cpio;*.rpm;*.deb;*.jar;*.apk;*.cbz;*.cbr;*.xar;*.pkg")

configure_file(${application}.desktop.in ${application}.desktop @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/${application}.desktop DESTINATION ${data}/applications)
install(FILES ${application}.metainfo.xml DESTINATION ${data}/metainfo)
install(FILES ${application}.mime.xml DESTINATION ${data}/mime/packages RENAME ${application}.xml)
install(FILES man/vantoro.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
install(FILES completions/vantoro.bash DESTINATION ${data}/bash-completion/completions RENAME vantoro)
install(FILES completions/_vantoro DESTINATION ${data}/zsh/vendor-completions)
install(FILES completions/vantoro.fish DESTINATION ${data}/fish/vendor_completions.d)

# The bus wants the program's full path, and where that is may be decided as late as at the installation
# (cmake --install --prefix, packages).
set(service_template ${CMAKE_CURRENT_SOURCE_DIR}/${application}.service.in)
set(service_folder ${CMAKE_INSTALL_DATADIR}/dbus-1/services)
configure_file(InstallService.cmake.in InstallService.cmake @ONLY)
install(SCRIPT ${CMAKE_CURRENT_BINARY_DIR}/InstallService.cmake)

set(hicolor ${data}/icons/hicolor)
install(FILES ${icons}/vantoro.svg DESTINATION ${hicolor}/scalable/apps RENAME ${application}.svg)
install(FILES ${icons}/vantoro-16.svg DESTINATION ${hicolor}/16x16/apps RENAME ${application}.svg)
install(FILES ${icons}/stIconTemplate.svg DESTINATION ${hicolor}/symbolic/apps RENAME ${application}-symbolic.svg)
foreach(row ${VANTORO_TYPE_ICONS})
    string(REPLACE " " ";" row "${row}")
    list(GET row 0 type)
    list(GET row 1 kind)
    install(FILES ${icons}/archive-${kind}.svg DESTINATION ${hicolor}/scalable/mimetypes RENAME ${type}.svg)
endforeach()

configure_file(file-managers/dolphin-extract.desktop.in ${application}.extract.desktop @ONLY)
configure_file(file-managers/dolphin-compress.desktop ${application}.compress.desktop COPYONLY)
# KDE starts the entries of such a file only if it is executable.
install(PROGRAMS
    ${CMAKE_CURRENT_BINARY_DIR}/${application}.extract.desktop
    ${CMAKE_CURRENT_BINARY_DIR}/${application}.compress.desktop
    DESTINATION ${data}/kio/servicemenus)
foreach(FILE_MANAGER Nautilus Caja)
    string(TOLOWER ${FILE_MANAGER} name)
    configure_file(file-managers/menu_extension.py.in ${name}/vantoro_menu.py @ONLY)
    install(FILES ${CMAKE_CURRENT_BINARY_DIR}/${name}/vantoro_menu.py DESTINATION ${data}/${name}-python/extensions)
endforeach()
foreach(action extract-here extract-to-desktop extract-to compress)
    configure_file(file-managers/nemo-${action}.nemo_action.in vantoro-${action}.nemo_action @ONLY)
    install(FILES ${CMAKE_CURRENT_BINARY_DIR}/vantoro-${action}.nemo_action DESTINATION ${data}/nemo/actions)
endforeach()
install(PROGRAMS file-managers/thunar.tap
    DESTINATION ${CMAKE_INSTALL_LIBEXECDIR}/thunar-archive-plugin RENAME ${application}.tap)
configure_file(file-managers/thunar-uca.xml.in thunar-uca.xml @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/thunar-uca.xml DESTINATION ${CMAKE_INSTALL_DOCDIR})

# An installation by hand refreshes the desktop's caches; packages leave that to the package manager.
install(SCRIPT UpdateCaches.cmake)
