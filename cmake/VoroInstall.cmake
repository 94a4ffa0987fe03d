# What an installation has beside the programs, libraries and headers, which the folders install themselves.

include(CMakePackageConfigHelpers)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/VoroMultimedia)
set(module_dir "")
if(VORO_QML)
  set(module_dir ${VORO_QML_DIR})
endif()
configure_package_config_file(cmake/VoroMultimediaConfig.cmake.in VoroMultimediaConfig.cmake
  INSTALL_DESTINATION ${package_dir} PATH_VARS module_dir)
write_basic_package_version_file(VoroMultimediaConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/VoroMultimediaConfig.cmake ${PROJECT_BINARY_DIR}/VoroMultimediaConfigVersion.cmake
  DESTINATION ${package_dir})
install(EXPORT VoroMultimediaTargets NAMESPACE Voro:: DESTINATION ${package_dir})

# The files for pkg-config find everything from where they are, so that an installation may be moved.
set(VORO_PLACE_PKGCONFIG ${VORO_PLACE_LIB}/pkgconfig)
voro_way(way_to_prefix PKGCONFIG PREFIX)
foreach(place LIB INCLUDE QML)
  voro_way(way_to_${place} PREFIX ${place})
endforeach()
foreach(name voromultimedia voroplatform)
  configure_file(cmake/${name}.pc.in ${name}.pc @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/${name}.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
endforeach()

# The unit names the daemon's place as it is when it is installed: the prefix may be another one by then.
cmake_path(IS_RELATIVE CMAKE_INSTALL_LIBEXECDIR helpers_are_below)
if(helpers_are_below)
  set(helpers "\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_LIBEXECDIR}")
else()
  set(helpers ${CMAKE_INSTALL_LIBEXECDIR})
endif()
install(CODE "set(VORO_HELPERS \"${helpers}\")
configure_file(\"${PROJECT_SOURCE_DIR}/packaging/systemd/vorod.service.in\" \"${PROJECT_BINARY_DIR}/vorod.service\" @ONLY)")
install(FILES ${PROJECT_BINARY_DIR}/vorod.service packaging/systemd/vorod.socket DESTINATION ${VORO_SYSTEMD_USER_DIR})

# Made of what the program says, which has to run for it, as the manual.
if(NOT CMAKE_CROSSCOMPILING OR CMAKE_CROSSCOMPILING_EMULATOR)
  # voro_add_completion(SHELL FOLDER FILE)
  function(voro_add_completion shell folder file)
    set(made ${PROJECT_BINARY_DIR}/completion/${file})
    add_custom_command(OUTPUT ${made}
      COMMAND sh -c "\"$@\" >${made}" - ${CMAKE_CROSSCOMPILING_EMULATOR} $<TARGET_FILE:voro> completion ${shell}
      DEPENDS voro COMMENT "Making the completion of ${shell}" VERBATIM)
    add_custom_target(voro-completion-${shell} ALL DEPENDS ${made})
    install(FILES ${made} DESTINATION ${CMAKE_INSTALL_DATADIR}/${folder})
  endfunction()
  file(MAKE_DIRECTORY ${PROJECT_BINARY_DIR}/completion)
  voro_add_completion(bash bash-completion/completions voro)
  voro_add_completion(zsh zsh/site-functions _voro)
  voro_add_completion(fish fish/vendor_completions.d voro.fish)
endif()

# The manual: made of what the programs say, which have to run for it.
if(NOT CMAKE_CROSSCOMPILING OR CMAKE_CROSSCOMPILING_EMULATOR)
  set(programs voro vorod voro-renderer)
  if(VORO_QML)
    list(APPEND programs voro-player voro-recorder voro-remote)
  endif()
  list(TRANSFORM programs REPLACE "(.+)" "$<TARGET_FILE:\\1>" OUTPUT_VARIABLE files)
  set(manual ${PROJECT_BINARY_DIR}/manual)
  set(readme ${PROJECT_SOURCE_DIR}/README.md)
  add_custom_command(OUTPUT ${manual}.made
    COMMAND ${CMAKE_COMMAND} -E rm -rf ${manual}
    COMMAND ${CMAKE_COMMAND} -E env "CROSS=${CMAKE_CROSSCOMPILING_EMULATOR}"
      ${PROJECT_SOURCE_DIR}/packaging/manual.sh ${manual} ${PROJECT_VERSION} ${readme} ${files}
    COMMAND ${CMAKE_COMMAND} -E touch ${manual}.made
    DEPENDS ${programs} ${readme} packaging/manual.sh packaging/manual.awk
    COMMENT "Making the manual"
    VERBATIM)
  add_custom_target(voro-manual ALL DEPENDS ${manual}.made)
  install(DIRECTORY ${manual}/ DESTINATION ${CMAKE_INSTALL_MANDIR})
endif()
