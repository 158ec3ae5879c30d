# The application as macOS starts it: a bundle with its property list, what it says when the system asks the user for
# a folder, its icon, and the command beside the application, where agents find it.

set(bundleFolder ${CMAKE_BINARY_DIR}/packaging/macos)
configure_file(${CMAKE_SOURCE_DIR}/packaging/macos/Info.plist.in ${bundleFolder}/Info.plist @ONLY)

function(tarvo_mac_bundle target)
    if(NOT APPLE)
        return()
    endif()
    set(icon ${bundleFolder}/AppIcon.icns)
    set(picture ${CMAKE_SOURCE_DIR}/TarvoApp/Recursos/AppIcon-1024.png)
    add_custom_command(OUTPUT ${icon}
        COMMAND ${CMAKE_SOURCE_DIR}/packaging/macos/icons ${picture} ${icon}
        DEPENDS ${CMAKE_SOURCE_DIR}/packaging/macos/icons ${picture} VERBATIM)
    target_sources(${target} PRIVATE ${icon})
    set_source_files_properties(${icon} PROPERTIES MACOSX_PACKAGE_LOCATION Resources)
    foreach(language en es)
        set(strings ${CMAKE_SOURCE_DIR}/packaging/macos/${language}.lproj/InfoPlist.strings)
        target_sources(${target} PRIVATE ${strings})
        set_source_files_properties(${strings} PROPERTIES MACOSX_PACKAGE_LOCATION Resources/${language}.lproj)
    endforeach()
    set_target_properties(${target} PROPERTIES
        MACOSX_BUNDLE ON
        MACOSX_BUNDLE_BUNDLE_NAME "Tarvo AI"
        MACOSX_BUNDLE_INFO_PLIST ${bundleFolder}/Info.plist)
    install(TARGETS ${target} BUNDLE DESTINATION .)
    install(PROGRAMS $<TARGET_FILE:tarvo> DESTINATION ${target}.app/Contents/MacOS)
    # Qt's libraries and its QML modules go into the bundle.
    qt_generate_deploy_qml_app_script(TARGET ${target} OUTPUT_SCRIPT deploy)
    install(SCRIPT ${deploy})
endfunction()
