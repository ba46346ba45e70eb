# What makes the desktop know the program: its entry in menus, its activation by the session bus, its icons; and the
# guide, which lies in the bundle.
set(VEILKEEP_DESKTOP_ENTRY "${PROJECT_BINARY_DIR}/com.ostrel.Veilkeep.desktop")
set(VEILKEEP_BUS_SERVICE "${PROJECT_BINARY_DIR}/com.ostrel.Veilkeep.service")
configure_file("${PROJECT_SOURCE_DIR}/resources/desktop/com.ostrel.Veilkeep.desktop.in" "${VEILKEEP_DESKTOP_ENTRY}" @ONLY)
configure_file("${PROJECT_SOURCE_DIR}/resources/desktop/com.ostrel.Veilkeep.service.in" "${VEILKEEP_BUS_SERVICE}" @ONLY)
install(FILES "${VEILKEEP_DESKTOP_ENTRY}" DESTINATION /usr/share/applications)
install(FILES "${VEILKEEP_BUS_SERVICE}" DESTINATION /usr/share/dbus-1/services)

# For catalogues of software; the pictures are those of docs/images, which the vendor's address has to serve.
set(VEILKEEP_METAINFO "${PROJECT_BINARY_DIR}/com.ostrel.Veilkeep.metainfo.xml")
configure_file("${PROJECT_SOURCE_DIR}/resources/desktop/com.ostrel.Veilkeep.metainfo.xml.in" "${VEILKEEP_METAINFO}" @ONLY)
install(FILES "${VEILKEEP_METAINFO}" DESTINATION /usr/share/metainfo)

set(images "${PROJECT_SOURCE_DIR}/resources/images")
install(FILES "${images}/com.ostrel.Veilkeep.svg" DESTINATION /usr/share/icons/hicolor/scalable/apps)
install(FILES "${images}/com.ostrel.Veilkeep-symbolic.svg" DESTINATION /usr/share/icons/hicolor/symbolic/apps)

foreach(page index.html index.de.html index.es.html)
    configure_file("${PROJECT_SOURCE_DIR}/resources/guide/${page}"
                   "${VEILKEEP_BUNDLE}/Contents/Resources/guide/${page}" COPYONLY)
endforeach()
install(DIRECTORY "${PROJECT_SOURCE_DIR}/resources/guide/"
        DESTINATION "${VEILKEEP_INSTALLED_BUNDLE}/Contents/Resources/guide")

# A copy of the bundle alone can install itself for a user: it carries what the desktop is to know, and the places in it
# are filled in then.
set(templates "${VEILKEEP_BUNDLE}/Contents/Resources/desktop")
foreach(file desktop/com.ostrel.Veilkeep.desktop.in desktop/com.ostrel.Veilkeep.service.in
             systemd/veilkeep-watch.service.in images/com.ostrel.Veilkeep.svg images/com.ostrel.Veilkeep-symbolic.svg)
    get_filename_component(name "${file}" NAME)
    configure_file("${PROJECT_SOURCE_DIR}/resources/${file}" "${templates}/${name}" COPYONLY)
endforeach()
foreach(manual veilkeep.1 veilkeepctl.1)
    configure_file("${PROJECT_SOURCE_DIR}/docs/${manual}" "${templates}/${manual}" COPYONLY)
    install(FILES "${PROJECT_SOURCE_DIR}/docs/${manual}" DESTINATION /usr/share/man/man1)
endforeach()
foreach(shell bash fish zsh)
    configure_file("${PROJECT_SOURCE_DIR}/resources/completions/${shell}" "${templates}/veilkeepctl.${shell}" COPYONLY)
endforeach()
install(DIRECTORY "${templates}/" DESTINATION "${VEILKEEP_INSTALLED_BUNDLE}/Contents/Resources/desktop")
