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

# Only the installation knows the prefix for certain; the directories may be absolute.
install(
  CODE "
    cmake_path(ABSOLUTE_PATH CMAKE_INSTALL_PREFIX NORMALIZE OUTPUT_VARIABLE pc_prefix)
    set(pc_libdir \"${CMAKE_INSTALL_LIBDIR}\")
    set(pc_includedir \"${CMAKE_INSTALL_INCLUDEDIR}\")
    cmake_path(ABSOLUTE_PATH pc_libdir BASE_DIRECTORY \"\${pc_prefix}\" NORMALIZE)
    cmake_path(ABSOLUTE_PATH pc_includedir BASE_DIRECTORY \"\${pc_prefix}\" NORMALIZE)
    set(PROJECT_DESCRIPTION \"${PROJECT_DESCRIPTION}\")
    set(PROJECT_VERSION \"${PROJECT_VERSION}\")
    configure_file(\"${CMAKE_CURRENT_SOURCE_DIR}/cmake/CppTools.pc.in\"
                   \"${CMAKE_CURRENT_BINARY_DIR}/CppTools.pc\" @ONLY)")
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/CppTools.pc
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

# The grammars of descriptors and of result documents, for editors and checks.
install(
  DIRECTORY schemas/
  DESTINATION ${CMAKE_INSTALL_DATADIR}/tandril/schemas
  FILES_MATCHING
  PATTERN "*.rnc"
  PATTERN "*.rng"
  PATTERN "*.xsd")
