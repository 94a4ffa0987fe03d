# How everything here is compiled: language, warnings, sanitizers.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_AUTOMOC ON)

find_program(VORO_CCACHE ccache)
if(VORO_CCACHE)
  # Clones in other folders share what was compiled.
  set(launcher ${CMAKE_COMMAND} -E env CCACHE_BASEDIR=${PROJECT_SOURCE_DIR} CCACHE_NOHASHDIR=1 ${VORO_CCACHE})
  set(CMAKE_C_COMPILER_LAUNCHER ${launcher})
  set(CMAKE_CXX_COMPILER_LAUNCHER ${launcher})
endif()

# voro_limit_exports(TARGET FILE): a library shows what a linker's version script says.
function(voro_limit_exports target file)
  target_link_options(${target} PRIVATE -Wl,--version-script=${CMAKE_CURRENT_SOURCE_DIR}/${file})
  set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/${file})
endfunction()

add_compile_options(-Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Wimplicit-fallthrough)
if(CMAKE_UNITY_BUILD)
  # Files that are compiled as one see each other's names; a build of every file by itself tells what is really hidden.
  add_compile_options(-Wno-shadow -Wno-unused-function $<$<CXX_COMPILER_ID:GNU>:-Wno-subobject-linkage>)
endif()
if(VORO_WERROR)
  add_compile_options(-Werror)
endif()
add_compile_definitions(QT_NO_KEYWORDS QT_NO_CAST_TO_ASCII QT_DISABLE_DEPRECATED_BEFORE=0x060400)

if(CMAKE_SIZEOF_VOID_P EQUAL 4)
  # Files of more than 2 GiB.
  add_compile_definitions(_FILE_OFFSET_BITS=64)
endif()

if(VORO_SANITIZE)
  add_compile_options(-fsanitize=${VORO_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${VORO_SANITIZE})
endif()
