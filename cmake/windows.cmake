# What Windows adds to the programs (version, icon, manifest), and their installer.
# Needs the targets of the programs, ORVALUNE_EDITION, and PROJECT_VERSION of the form 2.01.
enable_language(RC)
set(CMAKE_RC_FLAGS "-c 65001")
string(REGEX REPLACE "^0+(.)" "\\1" MINEUR "${PROJECT_VERSION_MINOR}")  # "01" is 1 where a number is wanted
# presente(PROGRAM DESCRIPTION): what Windows shows of it; without symbols, what is built is what is shipped.
function(presente NOM DESCRIPTION)
  configure_file(${CMAKE_SOURCE_DIR}/livraison/windows/orvalune.rc.in ${CMAKE_BINARY_DIR}/${NOM}.rc @ONLY)
  set_source_files_properties(${CMAKE_BINARY_DIR}/${NOM}.rc TARGET_DIRECTORY ${NOM} PROPERTIES
    OBJECT_DEPENDS "${CMAKE_SOURCE_DIR}/assets/orvalune.ico;${CMAKE_SOURCE_DIR}/livraison/windows/orvalune.manifest")
  target_sources(${NOM} PRIVATE ${CMAKE_BINARY_DIR}/${NOM}.rc)
  target_link_options(${NOM} PRIVATE -municode $<$<CONFIG:Release>:-s>)
endfunction()
presente(orvalune "Orvalune, prise de commande à table")
presente(orvalune-carte "Orvalune, la carte du restaurant")
presente(orvalune-cuisine "Orvalune, tickets de cuisine")
# No console window beside the screen.
set_target_properties(orvalune PROPERTIES WIN32_EXECUTABLE ON)

find_program(MAKENSIS makensis NO_CMAKE_FIND_ROOT_PATH)
if(NOT MAKENSIS OR NOT PAGE_MANUEL)
  message(STATUS "makensis or the manual was not found: no installer")
  return()
endif()
if(CMAKE_SIZEOF_VOID_P EQUAL 8)
  set(CIBLE amd64-unicode)
  set(INSTALLEUR ${CMAKE_BINARY_DIR}/orvalune-${PROJECT_VERSION}-windows64.exe)
else()
  set(CIBLE x86-unicode)
  set(INSTALLEUR ${CMAKE_BINARY_DIR}/orvalune-${PROJECT_VERSION}-windows32.exe)
endif()
add_custom_command(OUTPUT ${INSTALLEUR}
  COMMAND ${MAKENSIS} -V2 -WX -INPUTCHARSET UTF8 -DCIBLE=${CIBLE} -DVERSION=${PROJECT_VERSION}
    -DVERSION_W=${PROJECT_VERSION_MAJOR}.${MINEUR}.0.0 -DPROGRAMME=$<TARGET_FILE:orvalune>
    -DCARTE=$<TARGET_FILE:orvalune-carte> -DCUISINE=$<TARGET_FILE:orvalune-cuisine> -DSORTIE=${INSTALLEUR}
    -DLICENCES=${LICENCES} -DMANUEL=${PAGE_MANUEL}
    -DICONE=${CMAKE_SOURCE_DIR}/assets/orvalune.ico ${CMAKE_SOURCE_DIR}/livraison/windows/installe.nsi
  DEPENDS orvalune orvalune-carte orvalune-cuisine ${LICENCES} ${PAGE_MANUEL}
    ${CMAKE_SOURCE_DIR}/livraison/windows/installe.nsi ${CMAKE_SOURCE_DIR}/livraison/windows/options.nsh
    ${CMAKE_SOURCE_DIR}/livraison/windows/copies.nsh
    ${CMAKE_SOURCE_DIR}/assets/orvalune.ico
  VERBATIM)
add_custom_target(installeur ALL DEPENDS ${INSTALLEUR})
