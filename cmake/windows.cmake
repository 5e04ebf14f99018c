# What Windows adds to the program (version, icon, manifest), and its installer.
# Needs the target orvalune, ORVALUNE_EDITION, and PROJECT_VERSION of the form 2.01.
enable_language(RC)
set(CMAKE_RC_FLAGS "-c 65001")
string(REGEX REPLACE "^0+(.)" "\\1" MINEUR "${PROJECT_VERSION_MINOR}")  # "01" is 1 where a number is wanted
configure_file(${CMAKE_SOURCE_DIR}/livraison/windows/orvalune.rc.in ${CMAKE_BINARY_DIR}/orvalune.rc @ONLY)
set_source_files_properties(${CMAKE_BINARY_DIR}/orvalune.rc PROPERTIES
  OBJECT_DEPENDS "${CMAKE_SOURCE_DIR}/assets/orvalune.ico;${CMAKE_SOURCE_DIR}/livraison/windows/orvalune.manifest")
target_sources(orvalune PRIVATE ${CMAKE_BINARY_DIR}/orvalune.rc)

# No console window beside the screen; without symbols, what is built is what is shipped.
set_target_properties(orvalune PROPERTIES WIN32_EXECUTABLE ON)
target_link_options(orvalune PRIVATE -municode $<$<CONFIG:Release>:-s>)

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
    -DVERSION_W=${PROJECT_VERSION_MAJOR}.${MINEUR}.0.0 -DPROGRAMME=$<TARGET_FILE:orvalune> -DSORTIE=${INSTALLEUR}
    -DLICENCES=${LICENCES} -DMANUEL=${PAGE_MANUEL}
    -DICONE=${CMAKE_SOURCE_DIR}/assets/orvalune.ico ${CMAKE_SOURCE_DIR}/livraison/windows/installe.nsi
  DEPENDS orvalune ${LICENCES} ${PAGE_MANUEL} ${CMAKE_SOURCE_DIR}/livraison/windows/installe.nsi ${CMAKE_SOURCE_DIR}/assets/orvalune.ico
  VERBATIM)
add_custom_target(installeur ALL DEPENDS ${INSTALLEUR})
