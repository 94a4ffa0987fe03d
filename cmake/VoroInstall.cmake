# What an installation has beside the programs, libraries and headers, which the folders install themselves.

include(CMakePackageConfigHelpers)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/VoroMultimedia)
configure_package_config_file(cmake/VoroMultimediaConfig.cmake.in VoroMultimediaConfig.cmake
  INSTALL_DESTINATION ${package_dir})
write_basic_package_version_file(VoroMultimediaConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/VoroMultimediaConfig.cmake ${PROJECT_BINARY_DIR}/VoroMultimediaConfigVersion.cmake
  DESTINATION ${package_dir})
install(EXPORT VoroMultimediaTargets NAMESPACE Voro:: DESTINATION ${package_dir})

configure_file(cmake/voromultimedia.pc.in voromultimedia.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/voromultimedia.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

configure_file(packaging/systemd/vorod.service.in vorod.service @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/vorod.service packaging/systemd/vorod.socket DESTINATION lib/systemd/user)
