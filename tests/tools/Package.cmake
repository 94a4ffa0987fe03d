# Installs the project in one layout, moves the installation and uses it there: its programs find each other, and a project
# outside the tree builds against it, by find_package() and by pkg-config.
# cmake -D BUILD=DIR -D SOURCE=DIR -D WORK=DIR -D PREFIX=DIR -D LIB=DIR -D LIBEXEC=DIR -D QML=DIR -D UNIT=TEXT
#       -D COMPILER=FILE -D FLAGS=TEXT [-D OPTIONS=OPTION|...] -P Package.cmake
# LIB, LIBEXEC and QML are what the layout has below the prefix; QML is empty when the module is not built. With OPTIONS the
# project is configured and built anew in BUILD; UNIT is the daemon that the systemd unit starts then.

function(run)
  execute_process(COMMAND ${ARGV} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

file(REMOVE_RECURSE ${WORK})
if(OPTIONS)
  string(REPLACE "|" ";" OPTIONS "${OPTIONS}")
  run(${CMAKE_COMMAND} -S ${SOURCE} -B ${BUILD} -G Ninja ${OPTIONS})
  run(${CMAKE_COMMAND} --build ${BUILD})
  run(${CMAKE_COMMAND} -E env DESTDIR=${WORK}/stage ${CMAKE_COMMAND} --install ${BUILD})
  set(installed ${WORK}/stage${PREFIX})
else()
  set(installed ${WORK}/installed)
  run(${CMAKE_COMMAND} --install ${BUILD} --prefix ${installed})
  set(UNIT ${installed}/${LIBEXEC}/vorod)
endif()
set(prefix "${WORK}/a prefix")
file(RENAME ${installed} ${prefix})

set(files bin/voro ${LIBEXEC}/voro-info ${LIBEXEC}/vorod ${LIBEXEC}/voro-renderer ${LIB}/voro/playlist.so ${LIB}/voro/libav.so ${LIB}/voro/screen.so ${LIB}/voro/desktop.so ${LIB}/voro/sound.so ${LIB}/voro/devices.so
  share/voro/sample.ogg share/voro/sounds/input_keypress.wav include/voro/PpsObject.h include/multimedia/MediaPlayer.h
  lib/systemd/user/vorod.socket lib/systemd/user/vorod.service)
if(QML)
  list(APPEND files ${QML}/voro/multimedia/qmldir)
  foreach(name Player Recorder Remote)
    string(TOLOWER bin/voro-${name} program)
    list(APPEND files ${program} share/applications/org.voro.${name}.desktop share/metainfo/org.voro.${name}.metainfo.xml
      share/dbus-1/services/org.voro.${name}.service share/icons/hicolor/scalable/apps/org.voro.${name}.svg)
  endforeach()
endif()
foreach(file IN LISTS files)
  if(NOT EXISTS ${prefix}/${file})
    message(FATAL_ERROR "${file} was not installed")
  endif()
endforeach()
file(STRINGS ${prefix}/lib/systemd/user/vorod.service start REGEX "^ExecStart=")
if(NOT start STREQUAL "ExecStart=${UNIT} --idle-exit 30")
  message(FATAL_ERROR "the unit starts: ${start}")
endif()
# What the stage has beside the prefix was installed into a wrong folder.
file(GLOB_RECURSE strays ${WORK}/stage/*)
if(strays)
  message(FATAL_ERROR "installed outside the prefix: ${strays}")
endif()

# The program plays a list, for which library, daemon, renderer and module find each other.
set(ENV{VORO_RUNTIME_DIR} ${WORK}/runtime)
set(ENV{VORO_AUDIO_SINK} fakesink)
file(WRITE ${WORK}/list.m3u "${prefix}/share/voro/sample.ogg\n")
execute_process(COMMAND ${prefix}/bin/voro play --no-publish --json ${WORK}/list.m3u
  OUTPUT_VARIABLE said ERROR_VARIABLE said RESULT_VARIABLE status)
if(NOT status EQUAL 0 OR NOT said MATCHES "playbackCompleted")
  message(FATAL_ERROR "the installed voro plays with ${status}: ${said}")
endif()

# An application that does not find the module ends at once; one that does is ended.
if(QML)
  execute_process(COMMAND ${CMAKE_COMMAND} -E env QT_QPA_PLATFORM=offscreen ${prefix}/bin/voro-remote
    TIMEOUT 5 RESULT_VARIABLE result ERROR_VARIABLE said)
  if(result MATCHES "^[0-9]+$" OR said MATCHES "not installed")
    message(FATAL_ERROR "the installed voro-remote ended with ${result}: ${said}")
  endif()
endif()

# Debian's CMake does not look into lib64 by itself.
if(LIB STREQUAL lib64)
  set(package -DVoroMultimedia_DIR=${prefix}/${LIB}/cmake/VoroMultimedia)
endif()
run(${CMAKE_COMMAND} -S ${SOURCE}/tests/tools/consumer -B ${WORK}/consumer -G Ninja -DCMAKE_PREFIX_PATH=${prefix} ${package}
    -DCMAKE_CXX_COMPILER=${COMPILER} -DCMAKE_CXX_FLAGS=${FLAGS} -DQML=${QML})
run(${CMAKE_COMMAND} --build ${WORK}/consumer)
run(${WORK}/consumer/minimal/player ${prefix}/share/voro/sample.ogg)

set(ENV{PKG_CONFIG_PATH} "${prefix}/${LIB}/pkgconfig")
execute_process(COMMAND pkg-config --cflags --libs voromultimedia
  OUTPUT_VARIABLE flags OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
separate_arguments(flags UNIX_COMMAND "${flags}")
separate_arguments(own_flags UNIX_COMMAND "${FLAGS}")
run(${COMPILER} -std=c++20 -fPIC ${own_flags} ${SOURCE}/examples/minimal/main.cpp ${flags} -o ${WORK}/consumer/by-pkg-config)
