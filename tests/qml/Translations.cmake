# Says which texts of the applications a language lacks, and which translations nobody uses any more; either is a failure.
# cmake -D LUPDATE=FILE -D SOURCE=DIR -D WORK=DIR -P Translations.cmake
file(REMOVE_RECURSE ${WORK})
file(GLOB translations ${SOURCE}/examples/translations/*.ts)
file(COPY ${translations} DESTINATION ${WORK})
set(problems "")
foreach(source IN LISTS translations)
  cmake_path(GET source FILENAME name)
  execute_process(COMMAND ${LUPDATE} -silent -locations none -disable-heuristic sametext -disable-heuristic similartext
    ${SOURCE}/examples/application ${SOURCE}/examples/player ${SOURCE}/examples/recorder ${SOURCE}/examples/remote
    ${SOURCE}/qml ${SOURCE}/tools/words
    -ts ${WORK}/${name} COMMAND_ERROR_IS_FATAL ANY)
  file(READ ${WORK}/${name} text)
  string(REGEX MATCHALL "<source>[^<]*</source>[ \n]*<translation type=[^>]*>" found "${text}")
  foreach(message IN LISTS found)
    string(APPEND problems "${name}: ${message}\n")
  endforeach()
endforeach()
if(problems OR NOT translations)
  message(FATAL_ERROR "${problems}")
endif()
