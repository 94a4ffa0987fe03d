# Compiles for a Debian system of another architecture, with Debian's compilers for it:
# cmake --toolchain cmake/cross.cmake -DVORO_ARCHITECTURE=arm64 -DVORO_ROOT=FOLDER, where FOLDER has that system (packaging/arm64).

list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES VORO_ARCHITECTURE VORO_ROOT)
set(CMAKE_SYSTEM_NAME Linux)
if(VORO_ARCHITECTURE STREQUAL arm64)
  set(CMAKE_SYSTEM_PROCESSOR aarch64)
  set(CMAKE_LIBRARY_ARCHITECTURE aarch64-linux-gnu)
elseif(VORO_ARCHITECTURE STREQUAL armhf)
  set(CMAKE_SYSTEM_PROCESSOR arm)
  set(CMAKE_LIBRARY_ARCHITECTURE arm-linux-gnueabihf)
else()
  message(FATAL_ERROR "VORO_ARCHITECTURE is neither arm64 nor armhf: ${VORO_ARCHITECTURE}")
endif()
set(CMAKE_C_COMPILER ${CMAKE_LIBRARY_ARCHITECTURE}-gcc)
set(CMAKE_CXX_COMPILER ${CMAKE_LIBRARY_ARCHITECTURE}-g++)

set(CMAKE_SYSROOT ${VORO_ROOT})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
set(ENV{PKG_CONFIG_SYSROOT_DIR} ${VORO_ROOT})
set(ENV{PKG_CONFIG_LIBDIR} ${VORO_ROOT}/usr/lib/${CMAKE_LIBRARY_ARCHITECTURE}/pkgconfig:${VORO_ROOT}/usr/share/pkgconfig)
# moc and its like run here.
foreach(tools Qt6CoreTools Qt6DBusTools)
  file(GLOB ${tools}_DIR /usr/lib/*/cmake/${tools})
  set(${tools}_DIR ${${tools}_DIR} CACHE PATH "")
endforeach()

# What was built runs in the other system, in which the folders of source and build have the same places.
set(CMAKE_CROSSCOMPILING_EMULATOR chroot ${VORO_ROOT})
