# The programs are laid out as one relocatable directory, in the build tree as when installed.
set(VEILKEEP_BUNDLE "${PROJECT_BINARY_DIR}/Veilkeep.app")
set(VEILKEEP_PROGRAMS "${VEILKEEP_BUNDLE}/Contents/MacOS")
# Where polkit knows the worker; DESTDIR puts it in front.
set(VEILKEEP_INSTALLED_BUNDLE "/usr/lib/veilkeep/Veilkeep.app")
set(VEILKEEP_INSTALLED_PROGRAMS "${VEILKEEP_INSTALLED_BUNDLE}/Contents/MacOS")
# Whatever the umask: the worker gets no rights from a folder that a group may change.
set(CMAKE_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE
                                                WORLD_READ WORLD_EXECUTE)

# Everything that running needs.
add_custom_target(bundle)

# Puts the program TARGET into the bundle.
function(veilkeep_bundle_program target)
    set_target_properties(${target} PROPERTIES RUNTIME_OUTPUT_DIRECTORY "${VEILKEEP_PROGRAMS}")
    add_dependencies(bundle ${target})
    install(TARGETS ${target} DESTINATION "${VEILKEEP_INSTALLED_PROGRAMS}")
endfunction()

configure_file("${PROJECT_SOURCE_DIR}/resources/Info.plist.in" "${VEILKEEP_BUNDLE}/Contents/Info.plist" @ONLY)
install(FILES "${VEILKEEP_BUNDLE}/Contents/Info.plist" DESTINATION "${VEILKEEP_INSTALLED_BUNDLE}/Contents")

foreach(sound autohide drop hideUnhide panel)
    configure_file("${PROJECT_SOURCE_DIR}/resources/sounds/${sound}.aif"
                   "${VEILKEEP_BUNDLE}/Contents/Resources/${sound}.aif" COPYONLY)
endforeach()
install(DIRECTORY "${PROJECT_SOURCE_DIR}/resources/sounds/" DESTINATION "${VEILKEEP_INSTALLED_BUNDLE}/Contents/Resources")

# Entries for the menus of file managers, of which the program installs copies for its user.
foreach(entry dolphin.desktop hide.nemo_action script.sh show.nemo_action thunar.xml)
    configure_file("${PROJECT_SOURCE_DIR}/resources/filemanagers/${entry}"
                   "${VEILKEEP_BUNDLE}/Contents/Resources/filemanagers/${entry}" COPYONLY)
endforeach()
install(DIRECTORY "${PROJECT_SOURCE_DIR}/resources/filemanagers/"
        DESTINATION "${VEILKEEP_INSTALLED_BUNDLE}/Contents/Resources/filemanagers")

# Two of them take such files for all users as well (docs/file-managers.md).
function(veilkeep_entries_for_everybody)
    set(MARK "Entries for all users; the preferences make no others beside them.")
    set(PROGRAM "${VEILKEEP_INSTALLED_PROGRAMS}/Veilkeep")
    set(entries "${PROJECT_BINARY_DIR}/filemanagers")
    set(names dolphin.desktop com.ostrel.Veilkeep.desktop hide.nemo_action com.ostrel.Veilkeep.hide.nemo_action
              show.nemo_action com.ostrel.Veilkeep.show.nemo_action)
    while(names)
        list(POP_FRONT names template entry)
        configure_file("${PROJECT_SOURCE_DIR}/resources/filemanagers/${template}" "${entries}/${entry}" @ONLY)
    endwhile()
    install(FILES "${entries}/com.ostrel.Veilkeep.desktop" DESTINATION /usr/share/kio/servicemenus)
    install(FILES "${entries}/com.ostrel.Veilkeep.hide.nemo_action" "${entries}/com.ostrel.Veilkeep.show.nemo_action"
            DESTINATION /usr/share/nemo/actions)
endfunction()
veilkeep_entries_for_everybody()

set(VEILKEEP_POLICY "${PROJECT_BINARY_DIR}/com.ostrel.Veilkeep.policy")
configure_file("${PROJECT_SOURCE_DIR}/resources/com.ostrel.Veilkeep.policy.in" "${VEILKEEP_POLICY}" @ONLY)
install(FILES "${VEILKEEP_POLICY}" DESTINATION /usr/share/polkit-1/actions)
