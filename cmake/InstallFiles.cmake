# What `cmake --install` puts where, and the Debian package that cpack makes of it (scripts/build-package).

set(made ${PROJECT_BINARY_DIR}/packaging)
execute_process(COMMAND date --utc --rfc-email --date ${TARNWICK_RELEASE_DATE}
    OUTPUT_VARIABLE TARNWICK_RELEASE_TIME OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)

install(TARGETS tarnwick-launcher tarnwick-level tarnwick-sim tarnwick-solve RUNTIME DESTINATION ${TARNWICK_INSTALL_GAMES})
install(TARGETS tarnwick tarnwick-crash-box RUNTIME DESTINATION ${TARNWICK_INSTALL_GAME})
install(DIRECTORY data/ DESTINATION ${TARNWICK_INSTALL_DATA}
    PATTERN sav EXCLUDE
    PATTERN ConsoleLog.txt EXCLUDE)
install(DIRECTORY packaging/icons/ DESTINATION ${CMAKE_INSTALL_DATADIR}/icons)
install(FILES packaging/tarnwick.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES packaging/tarnwick-mime.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/mime/packages RENAME tarnwick.xml)
configure_file(packaging/org.tarnwick.tarnwick.metainfo.xml.in ${made}/org.tarnwick.tarnwick.metainfo.xml @ONLY)
install(FILES ${made}/org.tarnwick.tarnwick.metainfo.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)

# tarnwick_packed(SOURCE FOLDER [DEPENDENCIES ...])
#
# Installs SOURCE into FOLDER as gzip, without a time in it, so that two builds give the same bytes.
function(tarnwick_packed source folder)
    add_custom_command(OUTPUT ${source}.gz
        COMMAND gzip --best --no-name --keep --force ${source}
        DEPENDS ${source}
        VERBATIM)
    get_filename_component(name ${source} NAME)
    add_custom_target(packed-${name} ALL DEPENDS ${source}.gz)
    install(FILES ${source}.gz DESTINATION ${folder})
endfunction()

# tarnwick_man_page(NAME TARGET)
#
# Installs a page whose options are those that the program TARGET tells.
function(tarnwick_man_page name target)
    set(page ${made}/${name}.6)
    set(OPTIONS "@OPTIONS@") # is filled in when the program is there
    configure_file(packaging/man/${name}.6.in ${page}.in @ONLY)
    add_custom_command(OUTPUT ${page}
        COMMAND ${PROJECT_SOURCE_DIR}/packaging/man/make-page ${page}.in $<TARGET_FILE:${target}> > ${page}
        DEPENDS ${target} ${page}.in ${PROJECT_SOURCE_DIR}/packaging/man/make-page
        VERBATIM)
    tarnwick_packed(${page} ${CMAKE_INSTALL_MANDIR}/man6)
endfunction()

tarnwick_man_page(tarnwick tarnwick-launcher)
tarnwick_man_page(tarnwick-level tarnwick-level)
tarnwick_man_page(tarnwick-sim tarnwick-sim)
tarnwick_man_page(tarnwick-solve tarnwick-solve)

# The text of a licence that Debian does not have by itself, as Debian's file of copyrights has them: indented, a dot for an empty line.
foreach(licence CC-BY-SA-4.0)
    file(READ LICENSES/${licence}.txt text)
    string(REGEX REPLACE "\n$" "" text "${text}")
    string(REGEX REPLACE "\n\n" "\n.\n" text "${text}")
    string(REGEX REPLACE "\n\n" "\n.\n" text "${text}")
    string(REGEX REPLACE "\n" "\n " text "${text}")
    string(MAKE_C_IDENTIFIER ${licence} name)
    set(TEXT_${name} " ${text}")
endforeach()
configure_file(packaging/debian/copyright.in ${made}/copyright @ONLY)
install(FILES ${made}/copyright DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/tarnwick)
install(FILES packaging/debian/lintian-overrides DESTINATION ${CMAKE_INSTALL_DATADIR}/lintian/overrides RENAME tarnwick)
configure_file(packaging/debian/changelog.in ${made}/changelog @ONLY)
tarnwick_packed(${made}/changelog ${CMAKE_INSTALL_DATADIR}/doc/tarnwick)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME tarnwick)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_CONTACT "The Tarnwick team <support@tarnwick.example>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "water-physics puzzle game")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
"A mountain village's waterworks have run dry, and you lead the water home. You
do not steer a figure: you turn the world, and a body of water falls, flows,
freezes, boils and scatters through a level of slopes, lifts, gates and winds.
.
Levels and level packs of one's own can be dropped into a folder; the tools
that make, check and measure levels are here, too.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION games)
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE https://tarnwick.example/)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "libegl1, libgl1-mesa-dri")
set(CPACK_DEBIAN_PACKAGE_SUGGESTS zenity)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
include(CPack)
