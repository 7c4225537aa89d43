# tarno_windows_resources(<program>)
# Adds the icon, the version information and the manifest to the program.
enable_language(RC)

function(tarno_windows_resources program)
    set(from "${PROJECT_SOURCE_DIR}/packaging/windows")
    configure_file("${from}/tarno.manifest.in" "${PROJECT_BINARY_DIR}/tarno.manifest" @ONLY)
    configure_file("${from}/tarno.rc.in" "${PROJECT_BINARY_DIR}/tarno.rc" @ONLY)
    target_sources(${program} PRIVATE "${PROJECT_BINARY_DIR}/tarno.rc")
    set_property(SOURCE "${PROJECT_BINARY_DIR}/tarno.rc" PROPERTY OBJECT_DEPENDS
        "${from}/tarno.ico" "${PROJECT_BINARY_DIR}/tarno.manifest")
    set_target_properties(${program} PROPERTIES OUTPUT_NAME Tarno)
endfunction()
