# What is installed on Linux, and the Debian package of it: "cpack" in the build directory.
include(GNUInstallDirs)
install(TARGETS orvalune RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
set(LIVRAISON ${CMAKE_SOURCE_DIR}/livraison/linux)
install(FILES ${LIVRAISON}/orvalune.desktop ${LIVRAISON}/orvalune-manuel.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES ${CMAKE_SOURCE_DIR}/assets/orvalune.png DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/256x256/apps)
install(FILES ${PAGE_MANUEL} ${CMAKE_SOURCE_DIR}/CHANGELOG.md DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(FILES ${LICENCES} DESTINATION ${CMAKE_INSTALL_DOCDIR} RENAME copyright)
install(FILES ${LIVRAISON}/orvalune-kiosk.service DESTINATION lib/systemd/system)

set(MANUEL ${CMAKE_BINARY_DIR}/orvalune.1.gz)
add_custom_command(OUTPUT ${MANUEL} COMMAND gzip -9nc ${LIVRAISON}/orvalune.1 > ${MANUEL}
  DEPENDS ${LIVRAISON}/orvalune.1 VERBATIM)
add_custom_target(page_de_manuel ALL DEPENDS ${MANUEL})
install(FILES ${MANUEL} DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_PACKAGE_CONTACT "Orvalune <technique@orvalune.invalid>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "Order-taking terminal of a restaurant's waiter")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION 
"Full screen on a touch tablet, in French: tables, families, articles, remarks,
menus. Orders go as files to the restaurant's order router, and wait on the
tablet while the network is away.")
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION misc)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# What a dead key makes of the next one is told by a file of libx11-data.
set(CPACK_DEBIAN_PACKAGE_DEPENDS "adduser, libx11-data")
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "cage, xwayland, xdg-utils")
set(CPACK_DEBIAN_PACKAGE_CONTROL_EXTRA ${LIVRAISON}/postinst ${LIVRAISON}/prerm ${LIVRAISON}/postrm)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
include(CPack)
