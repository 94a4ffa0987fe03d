# Writes the C++ examples of a document into a file, so that they are compiled as they stand there: whole programs and
# functions, and every piece as a function with the piece's includes before it.
# cmake -D README=FILE -D OUTPUT=FILE -P ReadmeExample.cmake
include(${CMAKE_CURRENT_LIST_DIR}/../Examples.cmake)
read_examples(${README} cpp)
set(program "")
foreach(number RANGE 1 ${examples})
  set(example "${example_${number}}")
  if(NOT example MATCHES "int main|\nvoid ")
    string(REGEX REPLACE "(#include [^\n]*\n)" "" body "${example}")
    string(REGEX MATCHALL "#include [^\n]*\n" includes "${example}")
    list(JOIN includes "" includes)
    set(example "${includes}[[maybe_unused]] static void example${number}()\n{\n${body}\n}")
  endif()
  string(APPEND program "${example}\n")
endforeach()
file(WRITE ${OUTPUT} "${program}")
