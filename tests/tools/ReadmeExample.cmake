# Writes the first C++ example of the README into a file, so that it is compiled as it stands there.
# cmake -D README=FILE -D OUTPUT=FILE -P ReadmeExample.cmake
file(READ ${README} text)
set(opening "```cpp\n")
string(FIND "${text}" "${opening}" start)
if(start EQUAL -1)
  message(FATAL_ERROR "${README} has no C++ example")
endif()
string(LENGTH "${opening}" length)
math(EXPR start "${start} + ${length}")
string(SUBSTRING "${text}" ${start} -1 text)
string(FIND "${text}" "\n```" end)
string(SUBSTRING "${text}" 0 ${end} text)
file(WRITE ${OUTPUT} "${text}\n")
