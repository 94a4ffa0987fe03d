# What the applications say in other languages. Without Qt's tool for it they speak English.
#
# lupdate -locations none -no-obsolete examples qml tools/words -ts examples/translations/*.ts takes in what is new.

find_program(VORO_LRELEASE lrelease HINTS ${QT6_INSTALL_PREFIX}/${QT6_INSTALL_BINS})
if(NOT VORO_LRELEASE)
  return()
endif()
file(GLOB sources RELATIVE ${CMAKE_CURRENT_LIST_DIR} CONFIGURE_DEPENDS ${CMAKE_CURRENT_LIST_DIR}/*.ts)
set(translations)
foreach(source IN LISTS sources)
  cmake_path(REPLACE_EXTENSION source qm OUTPUT_VARIABLE translation)
  set(translation ${CMAKE_CURRENT_BINARY_DIR}/${translation})
  add_custom_command(OUTPUT ${translation}
    COMMAND ${VORO_LRELEASE} -silent ${CMAKE_CURRENT_LIST_DIR}/${source} -qm ${translation}
    DEPENDS ${CMAKE_CURRENT_LIST_DIR}/${source} VERBATIM)
  list(APPEND translations ${translation})
endforeach()
qt_add_resources(voro_application translations
  PREFIX /voro/translations BASE ${CMAKE_CURRENT_BINARY_DIR} FILES ${translations})
