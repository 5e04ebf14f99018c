# The manual as one page for a browser. Sets PAGE_MANUEL (a file, empty where the converter is missing) and makes it with "all".
set(PAGE_MANUEL "")
find_program(CMARK cmark-gfm NO_CMAKE_FIND_ROOT_PATH)
if(NOT CMARK)
  message(STATUS "cmark-gfm was not found: no manual for the browser")
  return()
endif()
set(PAGE_MANUEL ${CMAKE_BINARY_DIR}/manuel.html)
file(GLOB IMAGES_DU_MANUEL CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/docs/images/*.png)
add_custom_command(OUTPUT ${PAGE_MANUEL}
  COMMAND ${CMAKE_SOURCE_DIR}/outils/page_manuel.sh ${CMAKE_SOURCE_DIR}/docs/manuel.md ${PAGE_MANUEL}
  DEPENDS ${CMAKE_SOURCE_DIR}/outils/page_manuel.sh ${CMAKE_SOURCE_DIR}/docs/manuel.md ${IMAGES_DU_MANUEL} VERBATIM)
add_custom_target(manuel ALL DEPENDS ${PAGE_MANUEL})
