# The programs are laid out as one relocatable directory, in the build tree as when installed.
set(VEILKEEP_BUNDLE "${PROJECT_BINARY_DIR}/Veilkeep.app")
set(VEILKEEP_PROGRAMS "${VEILKEEP_BUNDLE}/Contents/MacOS")

# Everything that running needs.
add_custom_target(bundle)

# Puts the program TARGET into the bundle.
function(veilkeep_bundle_program target)
    set_target_properties(${target} PROPERTIES RUNTIME_OUTPUT_DIRECTORY "${VEILKEEP_PROGRAMS}")
    add_dependencies(bundle ${target})
endfunction()

configure_file("${PROJECT_SOURCE_DIR}/resources/Info.plist.in" "${VEILKEEP_BUNDLE}/Contents/Info.plist" @ONLY)
