# What lets other projects find the installed library: a CMake package and a pkg-config file.
include(CMakePackageConfigHelpers)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/CppTools)
configure_package_config_file(cmake/CppToolsConfig.cmake.in CppToolsConfig.cmake
                              INSTALL_DESTINATION ${package_dir})
write_basic_package_version_file(CppToolsConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/CppToolsConfig.cmake
              ${CMAKE_CURRENT_BINARY_DIR}/CppToolsConfigVersion.cmake DESTINATION ${package_dir})
install(
  EXPORT CppToolsTargets
  NAMESPACE CppTools::
  DESTINATION ${package_dir})

# Absolute directories may be given for the library and the headers.
cmake_path(ABSOLUTE_PATH CMAKE_INSTALL_LIBDIR BASE_DIRECTORY ${CMAKE_INSTALL_PREFIX} NORMALIZE
           OUTPUT_VARIABLE pc_libdir)
cmake_path(ABSOLUTE_PATH CMAKE_INSTALL_INCLUDEDIR BASE_DIRECTORY ${CMAKE_INSTALL_PREFIX} NORMALIZE
           OUTPUT_VARIABLE pc_includedir)
configure_file(cmake/CppTools.pc.in CppTools.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/CppTools.pc
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
