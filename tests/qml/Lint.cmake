# Runs qmllint over the QML files of the project and the QML examples of the README; any warning is a failure.
# cmake -D QMLLINT=FILE -D SOURCE=DIR -D MODULES=DIR -D IMPORTS=DIR,DIR -D WORK=DIR -P Lint.cmake
file(GLOB_RECURSE files ${SOURCE}/tests/qml/*.qml)

# The applications' files are seen where their modules are described.
file(GLOB examples RELATIVE ${SOURCE}/examples ${SOURCE}/examples/*/*.qml)
list(TRANSFORM examples PREPEND ${MODULES}/voro/)
list(APPEND files ${examples})

file(REMOVE_RECURSE ${WORK})
include(${CMAKE_CURRENT_LIST_DIR}/../Examples.cmake)
read_examples(${SOURCE}/README.md qml)
foreach(number RANGE 1 ${examples})
  file(WRITE ${WORK}/Readme${number}.qml "${example_${number}}\n")
  list(APPEND files ${WORK}/Readme${number}.qml)
endforeach()

string(REPLACE "," ";-I;" imports "${IMPORTS}")
execute_process(COMMAND ${QMLLINT} -I ${imports} --unused-imports warning ${files}
  RESULT_VARIABLE result OUTPUT_VARIABLE said ERROR_VARIABLE said)
if(NOT result EQUAL 0 OR said MATCHES "Warning:")
  message(FATAL_ERROR "${said}")
endif()
