# What is installed on Linux, and the Debian package of it: "cpack" in the build directory.
include(GNUInstallDirs)
install(TARGETS orvalune orvalune-carte orvalune-cuisine RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
set(LIVRAISON ${CMAKE_SOURCE_DIR}/livraison/linux)
install(FILES ${LIVRAISON}/orvalune.desktop ${LIVRAISON}/orvalune-manuel.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES ${CMAKE_SOURCE_DIR}/assets/orvalune.png DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/256x256/apps)
install(FILES ${PAGE_MANUEL} ${CMAKE_SOURCE_DIR}/CHANGELOG.md DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(FILES ${LICENCES} DESTINATION ${CMAKE_INSTALL_DOCDIR} RENAME copyright)
install(FILES ${LIVRAISON}/orvalune-kiosk.service ${LIVRAISON}/orvalune-cuisine.service DESTINATION lib/systemd/system)

foreach(page orvalune orvalune-carte orvalune-cuisine)
  add_custom_command(OUTPUT ${page}.1.gz COMMAND gzip -9nc ${LIVRAISON}/${page}.1 > ${page}.1.gz
    DEPENDS ${LIVRAISON}/${page}.1 VERBATIM)
  list(APPEND PAGES_DE_MANUEL ${CMAKE_BINARY_DIR}/${page}.1.gz)
endforeach()
add_custom_target(page_de_manuel ALL DEPENDS ${PAGES_DE_MANUEL})
install(FILES ${PAGES_DE_MANUEL} DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_PACKAGE_CONTACT "Orvalune <technique@orvalune.invalid>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "Order-taking terminal of a restaurant's waiter")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION 
"Full screen on a touch tablet, in French: tables, families, articles, remarks,
menus. Orders go as files to the restaurant's order router, and wait on the
tablet while the network is away.
.
orvalune-carte makes the restaurant's files from spreadsheets, and goes back.")
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION misc)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# What a dead key makes of the next one is told by a file of libx11-data.
set(CPACK_DEBIAN_PACKAGE_DEPENDS "adduser, libx11-data")
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "cage, xwayland, xdg-utils")
set(CPACK_DEBIAN_PACKAGE_CONTROL_EXTRA ${LIVRAISON}/postinst ${LIVRAISON}/prerm ${LIVRAISON}/postrm)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
include(CPack)
