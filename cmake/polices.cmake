# Finds the fonts and the stb headers of the distribution and embeds the fonts in the program.
# Sets POLICES_EMBARQUEES (a source file to link) and STB_INCLUDE (a folder).
set(DOSSIER_POLICES /usr/share/fonts/truetype)
find_file(POLICE_NORMALE LiberationSans-Regular.ttf PATHS ${DOSSIER_POLICES}/liberation ${DOSSIER_POLICES}/liberation2
          REQUIRED NO_CMAKE_FIND_ROOT_PATH)
find_file(POLICE_GRASSE LiberationSans-Bold.ttf PATHS ${DOSSIER_POLICES}/liberation ${DOSSIER_POLICES}/liberation2
          REQUIRED NO_CMAKE_FIND_ROOT_PATH)
find_file(POLICE_IMAGES MaterialIcons-Regular.ttf PATHS ${DOSSIER_POLICES}/material-design-icons-iconfont
          REQUIRED NO_CMAKE_FIND_ROOT_PATH)
# Only the two headers are taken: the whole of /usr/include would shadow those of the cross compiler.
find_path(STB_TROUVE stb/stb_truetype.h PATHS /usr/include REQUIRED NO_CMAKE_FIND_ROOT_PATH)
file(COPY ${STB_TROUVE}/stb/stb_truetype.h ${STB_TROUVE}/stb/stb_image_write.h DESTINATION ${CMAKE_BINARY_DIR}/stb)
set(STB_INCLUDE ${CMAKE_BINARY_DIR}/stb)

set(POLICES_EMBARQUEES ${CMAKE_BINARY_DIR}/polices.S)
configure_file(${CMAKE_SOURCE_DIR}/cmake/polices.S.in ${POLICES_EMBARQUEES} @ONLY)
set_source_files_properties(${POLICES_EMBARQUEES} PROPERTIES
  OBJECT_DEPENDS "${POLICE_NORMALE};${POLICE_GRASSE};${POLICE_IMAGES}")
