# The reference: HTML, and a .qch for Qt's tools, of what the headers and the guides say. Whatever is not documented is an error.

find_program(VORO_DOXYGEN doxygen)
find_program(VORO_QHELPGENERATOR qhelpgenerator PATHS ${QT6_INSTALL_PREFIX}/${QT6_INSTALL_LIBEXECS})
option(VORO_REFERENCE "Build and install the reference (needs doxygen, and qhelpgenerator for the .qch)" OFF)

if(VORO_DOXYGEN)
  set(VORO_REFERENCE_DIR ${PROJECT_BINARY_DIR}/reference)
  configure_file(docs/reference/Doxyfile.in Doxyfile @ONLY)
  if(VORO_QHELPGENERATOR)
    set(make_qch COMMAND ${VORO_QHELPGENERATOR} ${VORO_REFERENCE_DIR}/html/index.qhp -o ${VORO_REFERENCE_DIR}/voromultimedia.qch)
  endif()
  add_custom_target(voro-reference
    COMMAND ${CMAKE_COMMAND} -E rm -rf ${VORO_REFERENCE_DIR}
    COMMAND ${CMAKE_COMMAND} -E make_directory ${VORO_REFERENCE_DIR}
    COMMAND ${VORO_DOXYGEN} ${PROJECT_BINARY_DIR}/Doxyfile
    ${make_qch}
    COMMENT "Making the reference"
    VERBATIM)
endif()

if(VORO_REFERENCE)
  if(NOT VORO_DOXYGEN)
    message(FATAL_ERROR "VORO_REFERENCE needs doxygen")
  endif()
  set_target_properties(voro-reference PROPERTIES EXCLUDE_FROM_ALL OFF)
  install(DIRECTORY ${VORO_REFERENCE_DIR}/html DESTINATION ${CMAKE_INSTALL_DOCDIR})
  if(VORO_QHELPGENERATOR)
    install(FILES ${VORO_REFERENCE_DIR}/voromultimedia.qch DESTINATION ${CMAKE_INSTALL_DOCDIR})
  endif()
endif()
