# Runs qmllint over the QML files of the project and the QML examples of the documents; any warning is a failure.
# cmake -D QMLLINT=FILE -D SOURCE=DIR -D MODULES=DIR -D IMPORTS=DIR,DIR -D WORK=DIR -P Lint.cmake
file(GLOB_RECURSE files ${SOURCE}/tests/qml/*.qml)

# The applications' files are seen where their modules are described.
file(GLOB examples RELATIVE ${SOURCE}/examples ${SOURCE}/examples/application/*.qml ${SOURCE}/examples/player/*.qml
  ${SOURCE}/examples/recorder/*.qml ${SOURCE}/examples/remote/*.qml)
list(TRANSFORM examples PREPEND ${MODULES}/voro/)
list(APPEND files ${examples} ${SOURCE}/examples/lock-screen/Main.qml ${SOURCE}/examples/qml-player/Main.qml)

file(REMOVE_RECURSE ${WORK})
include(${CMAKE_CURRENT_LIST_DIR}/../Examples.cmake)
foreach(document README docs/guide docs/qml)
  read_examples(${SOURCE}/${document}.md qml)
  cmake_path(GET document FILENAME name)
  foreach(number RANGE 1 ${examples})
    file(WRITE ${WORK}/The_${name}${number}.qml "${example_${number}}\n")
    list(APPEND files ${WORK}/The_${name}${number}.qml)
  endforeach()
endforeach()

string(REPLACE "," ";-I;" imports "${IMPORTS}")
execute_process(COMMAND ${QMLLINT} -I ${imports} --unused-imports warning ${files}
  RESULT_VARIABLE result OUTPUT_VARIABLE said ERROR_VARIABLE said)
if(NOT result EQUAL 0 OR said MATCHES "Warning:")
  message(FATAL_ERROR "${said}")
endif()
