# orvalune-carte, spreadsheets to the restaurant's files and back: its rooms as a library, and the program.
if(CMAKE_CROSSCOMPILING)
  # The distribution has no library for the cross compiler, but its source (outils/sources.sh).
  set(SOURCE_CSV ${CMAKE_SOURCE_DIR}/build/paquets-sources/libcsv)
  execute_process(COMMAND ${CMAKE_SOURCE_DIR}/outils/sources.sh libcsv COMMAND_ERROR_IS_FATAL ANY)
  enable_language(C)
  add_library(csv STATIC ${SOURCE_CSV}/libcsv.c)
  target_include_directories(csv SYSTEM PUBLIC ${SOURCE_CSV})
else()
  find_path(CSV_INCLUDE csv.h REQUIRED)
  find_library(CSV_ARCHIVE libcsv.a REQUIRED)
  add_library(csv STATIC IMPORTED)
  set_target_properties(csv PROPERTIES IMPORTED_LOCATION ${CSV_ARCHIVE} INTERFACE_INCLUDE_DIRECTORIES ${CSV_INCLUDE})
endif()

file(GLOB SOURCES_CARTE CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/src/carte/*.cpp ${CMAKE_SOURCE_DIR}/src/platform/tableur/*.cpp)
list(REMOVE_ITEM SOURCES_CARTE ${CMAKE_SOURCE_DIR}/src/carte/main.cpp)
add_library(carte STATIC ${SOURCES_CARTE})
target_link_libraries(carte PUBLIC socle PRIVATE csv)

add_executable(orvalune-carte src/carte/main.cpp)
target_link_libraries(orvalune-carte PRIVATE carte)
target_compile_definitions(orvalune-carte PRIVATE
  ORVALUNE_VERSION="${PROJECT_VERSION}" ORVALUNE_EDITION="${ORVALUNE_EDITION}")
