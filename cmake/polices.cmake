# Finds the fonts and the stb headers of the distribution and embeds the fonts in the programs.
# Sets POLICES_EMBARQUEES and POLICE_FIXE_EMBARQUEE (source files to link: what the screens need, and what tickets do) and
# STB_INCLUDE (a folder).
set(DOSSIER_POLICES /usr/share/fonts/truetype)
find_file(POLICE_NORMALE LiberationSans-Regular.ttf PATHS ${DOSSIER_POLICES}/liberation ${DOSSIER_POLICES}/liberation2
          REQUIRED NO_CMAKE_FIND_ROOT_PATH)
find_file(POLICE_GRASSE LiberationSans-Bold.ttf PATHS ${DOSSIER_POLICES}/liberation ${DOSSIER_POLICES}/liberation2
          REQUIRED NO_CMAKE_FIND_ROOT_PATH)
find_file(POLICE_IMAGES MaterialIcons-Regular.ttf PATHS ${DOSSIER_POLICES}/material-design-icons-iconfont
          REQUIRED NO_CMAKE_FIND_ROOT_PATH)
find_file(POLICE_FIXE LiberationMono-Regular.ttf PATHS ${DOSSIER_POLICES}/liberation ${DOSSIER_POLICES}/liberation2
          REQUIRED NO_CMAKE_FIND_ROOT_PATH)
# Only the two headers are taken: the whole of /usr/include would shadow those of the cross compiler.
find_path(STB_TROUVE stb/stb_truetype.h PATHS /usr/include REQUIRED NO_CMAKE_FIND_ROOT_PATH)
file(COPY ${STB_TROUVE}/stb/stb_truetype.h ${STB_TROUVE}/stb/stb_image_write.h DESTINATION ${CMAKE_BINARY_DIR}/stb)
set(STB_INCLUDE ${CMAKE_BINARY_DIR}/stb)

# embarque(SOURCE NAME FONT ...): the source file that has each font under its name.
function(embarque source)
  set(LIGNES "")
  set(fichiers "")
  while(ARGN)
    list(POP_FRONT ARGN nom fichier)
    string(APPEND LIGNES "POLICE(${nom}, \"${fichier}\")\n")
    list(APPEND fichiers ${fichier})
  endwhile()
  configure_file(${CMAKE_SOURCE_DIR}/cmake/polices.S.in ${source} @ONLY)
  set_source_files_properties(${source} PROPERTIES OBJECT_DEPENDS "${fichiers}")
endfunction()

set(POLICES_EMBARQUEES ${CMAKE_BINARY_DIR}/polices.S)
embarque(${POLICES_EMBARQUEES} police_normale ${POLICE_NORMALE} police_grasse ${POLICE_GRASSE}
         police_images ${POLICE_IMAGES})
set(POLICE_FIXE_EMBARQUEE ${CMAKE_BINARY_DIR}/police_fixe.S)
embarque(${POLICE_FIXE_EMBARQUEE} police_fixe ${POLICE_FIXE})
