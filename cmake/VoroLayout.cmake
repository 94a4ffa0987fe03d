# Where an installation has everything, and the ways on which its programs and libraries find each other.
#
# Every CMAKE_INSTALL_* may be relative to the prefix or absolute. The build tree is laid out like the installation, so
# one way leads in both, and in an installation that was moved, from one place to the other.

include(GNUInstallDirs)

set(VORO_SYSTEMD_USER_DIR lib/systemd/user CACHE STRING "Folder of the systemd user units")
# The engine looks in Qt's own folder by itself, so the module goes there when the prefix is Qt's.
set(qml_default ${CMAKE_INSTALL_LIBDIR}/qml)
if(DEFINED QT6_INSTALL_QML AND CMAKE_INSTALL_PREFIX STREQUAL QT6_INSTALL_PREFIX)
  set(qml_default ${QT6_INSTALL_QML})
endif()
set(VORO_QML_DIR ${qml_default} CACHE STRING "Folder of QML modules in which the module is installed")

# The places that have ways between them: absolute and normal in VORO_PLACE_<name>.
set(places BIN LIB LIBEXEC DATA INCLUDE QML)
set(VORO_PLACE_PREFIX ${CMAKE_INSTALL_PREFIX})
set(folders PREFIX)
set(dir_QML VORO_QML_DIR)
foreach(place IN LISTS places)
  if(NOT dir_${place})
    set(dir_${place} CMAKE_INSTALL_${place}DIR)
  endif()
  cmake_path(ABSOLUTE_PATH ${dir_${place}} BASE_DIRECTORY ${CMAKE_INSTALL_PREFIX} NORMALIZE OUTPUT_VARIABLE VORO_PLACE_${place})
endforeach()

# voro_way(RESULT FROM TO): the relative path from one place to another.
function(voro_way result from to)
  file(RELATIVE_PATH way ${VORO_PLACE_${from}} ${VORO_PLACE_${to}})
  if(NOT way)
    set(way .)
  endif()
  string(REGEX REPLACE "/$" "" way ${way})
  set(${result} ${way} PARENT_SCOPE)
endfunction()

# What lies below the prefix moves with it.
foreach(place IN LISTS places)
  cmake_path(IS_PREFIX CMAKE_INSTALL_PREFIX ${VORO_PLACE_${place}} NORMALIZE is_below)
  if(is_below)
    voro_way(${dir_${place}} PREFIX ${place})
  endif()
endforeach()

# The build tree stands for the innermost folder that has all places.
set(root ${CMAKE_INSTALL_PREFIX})
foreach(place IN LISTS places)
  cmake_path(IS_PREFIX root ${VORO_PLACE_${place}} is_below)
  while(NOT is_below)
    cmake_path(GET root PARENT_PATH root)
    cmake_path(IS_PREFIX root ${VORO_PLACE_${place}} is_below)
  endwhile()
endforeach()
foreach(place IN LISTS places)
  cmake_path(RELATIVE_PATH VORO_PLACE_${place} BASE_DIRECTORY ${root} OUTPUT_VARIABLE tree)
  cmake_path(SET VORO_TREE_${place} NORMALIZE ${PROJECT_BINARY_DIR}/${tree})
endforeach()

set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${VORO_TREE_BIN})
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${VORO_TREE_LIB})
set(CMAKE_ARCHIVE_OUTPUT_DIRECTORY ${VORO_TREE_LIB})
# Tests have platform code linked in, which looks around as if it were in the library.
cmake_path(GET VORO_TREE_LIB PARENT_PATH VORO_TREE_TESTS)
string(APPEND VORO_TREE_TESTS /tests)

# Relative as well, so that the name of the build's folder leaves no trace in what is installed.
set(CMAKE_BUILD_RPATH_USE_ORIGIN ON)
voro_way(way BIN LIB)
set(CMAKE_INSTALL_RPATH "$ORIGIN/${way}")
voro_way(VORO_DAEMON_WAY LIB LIBEXEC)
voro_way(VORO_MODULES_WAY LIBEXEC LIB)
voro_way(VORO_SOUNDS_WAY LIBEXEC DATA)
voro_way(VORO_SAMPLE_WAY BIN DATA)
voro_way(VORO_QML_WAY BIN QML)

# voro_add_helper(TARGET...): programs that others start.
function(voro_add_helper)
  foreach(target IN LISTS ARGN)
    set_target_properties(${target} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${VORO_TREE_LIBEXEC} INSTALL_RPATH "")
    install(TARGETS ${target} RUNTIME DESTINATION ${CMAKE_INSTALL_LIBEXECDIR})
  endforeach()
endfunction()

# voro_add_platform_module(TARGET NAME): NAME.so, which a helper loads when it needs it.
function(voro_add_platform_module target name)
  set_target_properties(${target} PROPERTIES PREFIX "" OUTPUT_NAME ${name} CXX_VISIBILITY_PRESET hidden INSTALL_RPATH ""
    LIBRARY_OUTPUT_DIRECTORY ${VORO_TREE_LIB}/voro)
  install(TARGETS ${target} LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}/voro)
endfunction()
