# What "cmake --install" installs on Linux: the program, the shipped data files, and the files for desktop
# integration.

include(GNUInstallDirs)

set(packaging "${PROJECT_SOURCE_DIR}/packaging/linux")
set(shared "${CMAKE_INSTALL_DATADIR}/tarno")

install(TARGETS tarno)

# the files of an empty log, and a complete folder with the sample log
file(GLOB shipped CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/data/*.xml" "${PROJECT_SOURCE_DIR}/data/*.txt")
file(GLOB sample CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/data/sample/*.xml")
install(FILES ${shipped} DESTINATION "${shared}")
foreach(file IN LISTS shipped)
    cmake_path(GET file FILENAME name)
    # Skips files of which the sample has its own version. If both were installed, install() might keep the wrong one,
    # because it skips a file whose time stamp equals that of the installed one.
    if(NOT EXISTS "${PROJECT_SOURCE_DIR}/data/sample/${name}")
        install(FILES "${file}" DESTINATION "${shared}/sample")
    endif()
endforeach()
install(FILES ${sample} DESTINATION "${shared}/sample")
install(DIRECTORY "${PROJECT_SOURCE_DIR}/data/sample/pictures" DESTINATION "${shared}/sample"
    FILES_MATCHING PATTERN "*.png")

# the icon; also in fixed sizes if rsvg-convert is installed
set(icon "${PROJECT_SOURCE_DIR}/data/icons/tarno.svg")
set(icons "${CMAKE_INSTALL_DATADIR}/icons/hicolor")
install(FILES "${icon}" DESTINATION "${icons}/scalable/apps")
find_program(TARNO_RSVG_CONVERT rsvg-convert)
if(TARNO_RSVG_CONVERT)
    foreach(size 16 24 32 48 64 128 256)
        set(drawn "${PROJECT_BINARY_DIR}/icons/${size}.png")
        add_custom_command(OUTPUT "${drawn}" DEPENDS "${icon}" VERBATIM
            COMMAND "${CMAKE_COMMAND}" -E make_directory "${PROJECT_BINARY_DIR}/icons"
            COMMAND "${TARNO_RSVG_CONVERT}" --width ${size} --height ${size} --output "${drawn}" "${icon}")
        list(APPEND all_drawn "${drawn}")
        install(FILES "${drawn}" DESTINATION "${icons}/${size}x${size}/apps" RENAME tarno.png)
    endforeach()
    add_custom_target(icons ALL DEPENDS ${all_drawn})
endif()

install(FILES "${packaging}/tarno.desktop" DESTINATION "${CMAKE_INSTALL_DATADIR}/applications")
install(FILES "${packaging}/org.tarno.tarno.metainfo.xml" DESTINATION "${CMAKE_INSTALL_DATADIR}/metainfo")
install(FILES "${packaging}/tarno.1" DESTINATION "${CMAKE_INSTALL_MANDIR}/man1")
