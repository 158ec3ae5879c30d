# What is installed, and the Debian package of it. The package holds the command and the application together.
include(GNUInstallDirs)

if(APPLE)
    set(CPACK_GENERATOR DragNDrop)
    include(CPack)
    return() # The bundle installs itself.
endif()

set(programs $<TARGET_FILE:tarvo>)
install(TARGETS tarvo RUNTIME)
if(TARVO_APP AND NOT TARVO_SANITIZE)
    list(APPEND programs $<TARGET_FILE:tarvo-app>)
    install(TARGETS tarvo-app RUNTIME)
    install(FILES packaging/ai.tarvo.TarvoAI.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
    install(FILES packaging/ai.tarvo.TarvoAI.metainfo.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
    install(FILES packaging/tarvo-ai.svg DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)
endif()

# Made of what the command says of itself; "package" is no part of the usual build, since it needs their tools.
set(made ${CMAKE_BINARY_DIR}/packaging)
set(docs ${CMAKE_INSTALL_DATADIR}/doc/tarvo-ai)
add_custom_target(packaging-files
    COMMAND ${CMAKE_SOURCE_DIR}/packaging/completions $<TARGET_FILE:tarvo> ${made}
    COMMAND ${CMAKE_SOURCE_DIR}/packaging/documents ${made} ${programs}
    WORKING_DIRECTORY ${CMAKE_SOURCE_DIR}
    DEPENDS ${programs} VERBATIM)
install(FILES ${made}/tarvo.bash DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions RENAME tarvo
    OPTIONAL)
install(FILES ${made}/_tarvo DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/vendor-completions OPTIONAL)
install(FILES ${made}/tarvo.fish DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d OPTIONAL)
install(FILES ${made}/tarvo.1.gz ${made}/tarvo-app.1.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 OPTIONAL)
install(FILES ${made}/es/tarvo.1.gz ${made}/es/tarvo-app.1.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/es/man1 OPTIONAL)
install(FILES packaging/copyright ${made}/changelog.gz ${made}/changelog.Debian.gz DESTINATION ${docs} OPTIONAL)
install(DIRECTORY ${made}/icons/ DESTINATION ${CMAKE_INSTALL_DATADIR}/icons OPTIONAL)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME tarvo-ai)
set(CPACK_PACKAGE_CONTACT "Tarvo AI <packages@tarvo-ai.example>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "disk-space analyser and cleaner that is afraid of losing things")
set(CPACK_PACKAGE_DESCRIPTION
    "Tarvo AI measures what really fills a home folder and says of every item\nwhether it recreates itself, needs a look or must be kept. It frees what is\nsafe in one confirmed step and sets the user's own files aside for 7 days.\nIt comes as a command, a desktop application and a tool server for coding\nagents, in Spanish and English. Nothing leaves the machine.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS
    "zip, unzip, qml6-module-qtqml, qml6-module-qtqml-workerscript, qml6-module-qtquick, qml6-module-qtquick-controls, qml6-module-qtquick-layouts, qml6-module-qtquick-templates, qml6-module-qtquick-window, qml6-module-qt-labs-platform, qt6-qpa-plugins")
# Dialogs that are not ours speak the user's language, and the window a Wayland desktop's.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "qt6-translations-l10n, qt6-wayland")
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "systemd") # Starts the weekly cleanup where no window is open.
include(CPack)
