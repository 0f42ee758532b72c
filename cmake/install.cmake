# What `cmake --install` puts where: the library, its headers under a folder of
# their own, and the files by which CMake and pkg-config find both.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

set(CMAKE_INSTALL_DEFAULT_COMPONENT_NAME dev)
set(header_dir ${CMAKE_INSTALL_INCLUDEDIR})
set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/sepa)

install(TARGETS sepa_core EXPORT sepa
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
  FILE_SET HEADERS DESTINATION ${header_dir})

set(files ${PROJECT_BINARY_DIR}/generated)
install(EXPORT sepa NAMESPACE sepa:: FILE sepaTargets.cmake DESTINATION ${package_dir})
configure_package_config_file(cmake/sepaConfig.cmake.in ${files}/sepaConfig.cmake INSTALL_DESTINATION ${package_dir})
write_basic_package_version_file(${files}/sepaConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${files}/sepaConfig.cmake ${files}/sepaConfigVersion.cmake DESTINATION ${package_dir})

# From the file's own folder, so that the installed tree can be moved.
file(RELATIVE_PATH pc_prefix ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
configure_file(cmake/sepa.pc.in ${files}/sepa.pc @ONLY)
install(FILES ${files}/sepa.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
