# What Windows adds to the program (version, icon, manifest), and its installer.
# Needs the target orvalune, ORVALUNE_EDITION, and PROJECT_VERSION of the form 2.01.
enable_language(RC)
set(CMAKE_RC_FLAGS "-c 65001")
configure_file(${CMAKE_SOURCE_DIR}/livraison/windows/orvalune.rc.in ${CMAKE_BINARY_DIR}/orvalune.rc @ONLY)
set_source_files_properties(${CMAKE_BINARY_DIR}/orvalune.rc PROPERTIES
  OBJECT_DEPENDS "${CMAKE_SOURCE_DIR}/assets/orvalune.ico;${CMAKE_SOURCE_DIR}/livraison/windows/orvalune.manifest")
target_sources(orvalune PRIVATE ${CMAKE_BINARY_DIR}/orvalune.rc)

# No console window beside the screen; without symbols, what is built is what is shipped.
set_target_properties(orvalune PROPERTIES WIN32_EXECUTABLE ON)
target_link_options(orvalune PRIVATE -municode $<$<CONFIG:Release>:-s>)
