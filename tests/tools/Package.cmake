# Installs the build into a folder of its own and builds a project outside the tree against it, by find_package() and by
# pkg-config.
# cmake -D BUILD=DIR -D SOURCE=DIR -D WORK=DIR -D QML=DIR -D COMPILER=FILE -D FLAGS=TEXT -P Package.cmake
# QML is the folder of the module under the prefix, empty when it is not built.

function(run)
  execute_process(COMMAND ${ARGV} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

file(REMOVE_RECURSE ${WORK})
set(prefix "${WORK}/a prefix")
run(${CMAKE_COMMAND} --install ${BUILD} --prefix ${prefix})
if(QML)
  set(applications ${QML}/voro/multimedia/qmldir)
  foreach(name voro-player voro-recorder voro-remote)
    list(APPEND applications bin/${name} share/applications/${name}.desktop
      share/icons/hicolor/scalable/apps/${name}.svg)
  endforeach()
endif()
foreach(file ${applications} bin/voro bin/vorod bin/voro-renderer share/voro/sample.ogg
        share/voro/sounds/input_keypress.wav lib/voro/sound.so include/voro/PpsObject.h
        include/multimedia/MediaPlayer.h lib/systemd/user/vorod.socket lib/systemd/user/vorod.service)
  if(NOT EXISTS ${prefix}/${file})
    message(FATAL_ERROR "${file} was not installed")
  endif()
endforeach()

# An application that does not find the module ends at once; one that does is ended.
if(QML)
  execute_process(COMMAND ${CMAKE_COMMAND} -E env QT_QPA_PLATFORM=offscreen VORO_AUTOSPAWN=0 VORO_RUNTIME_DIR=${WORK}/runtime
    ${prefix}/bin/voro-remote TIMEOUT 5 RESULT_VARIABLE result ERROR_VARIABLE said)
  if(result MATCHES "^[0-9]+$" OR said MATCHES "not installed")
    message(FATAL_ERROR "the installed voro-remote ended with ${result}: ${said}")
  endif()
endif()

run(${CMAKE_COMMAND} -S ${SOURCE}/examples/minimal -B ${WORK}/player -G Ninja -DCMAKE_PREFIX_PATH=${prefix}
    -DCMAKE_CXX_COMPILER=${COMPILER} -DCMAKE_CXX_FLAGS=${FLAGS})
run(${CMAKE_COMMAND} --build ${WORK}/player)

set(ENV{PKG_CONFIG_PATH} "${prefix}/lib/pkgconfig")
execute_process(COMMAND pkg-config --cflags --libs voromultimedia
  OUTPUT_VARIABLE flags OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
separate_arguments(flags UNIX_COMMAND "${flags}")
separate_arguments(own_flags UNIX_COMMAND "${FLAGS}")
run(${COMPILER} -std=c++20 -fPIC ${own_flags} ${SOURCE}/examples/minimal/main.cpp ${flags} -o ${WORK}/player/by-pkg-config)

# The programs find the libraries beside them.
execute_process(COMMAND ${prefix}/bin/voro --version OUTPUT_VARIABLE version COMMAND_ERROR_IS_FATAL ANY)
if(NOT version MATCHES "^voro [0-9]+\\.[0-9]+\\.[0-9]+\n$")
  message(FATAL_ERROR "the installed voro says: ${version}")
endif()
