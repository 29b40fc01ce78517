# What `cmake --install` gives: libEDA, its headers, the shared files, a CMake package and a pkg-config file.
include(CMakePackageConfigHelpers)

install(TARGETS EDA EXPORT EDATargets
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(DIRECTORY "${PROJECT_SOURCE_DIR}/src/" DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/EDA
  FILES_MATCHING PATTERN "*.h" PATTERN "*.def" PATTERN "*Detail.h" EXCLUDE)

# The programs of the build tree find the files as those of an installation do: in share/eda above them.
file(GLOB shared_files CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/share/eda/*")
foreach(file IN LISTS shared_files)
  cmake_path(GET file FILENAME name)
  configure_file("${file}" "${PROJECT_BINARY_DIR}/share/eda/${name}" COPYONLY)
endforeach()
install(FILES ${shared_files} DESTINATION "${CMAKE_INSTALL_DATADIR}/eda")

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/EDA)
install(EXPORT EDATargets NAMESPACE EDA:: DESTINATION ${package_dir})
configure_package_config_file("${PROJECT_SOURCE_DIR}/cmake/EDAConfig.cmake.in"
  "${PROJECT_BINARY_DIR}/EDAConfig.cmake" INSTALL_DESTINATION ${package_dir})
write_basic_package_version_file("${PROJECT_BINARY_DIR}/EDAConfigVersion.cmake" COMPATIBILITY SameMinorVersion)
install(FILES "${PROJECT_BINARY_DIR}/EDAConfig.cmake" "${PROJECT_BINARY_DIR}/EDAConfigVersion.cmake"
  DESTINATION ${package_dir})

# Absolute install directories are legal; a plain prefix in front of them would not be.
cmake_path(ABSOLUTE_PATH CMAKE_INSTALL_LIBDIR BASE_DIRECTORY "${CMAKE_INSTALL_PREFIX}" OUTPUT_VARIABLE PC_LIBDIR)
cmake_path(ABSOLUTE_PATH CMAKE_INSTALL_INCLUDEDIR BASE_DIRECTORY "${CMAKE_INSTALL_PREFIX}"
  OUTPUT_VARIABLE PC_INCLUDEDIR)
configure_file("${PROJECT_SOURCE_DIR}/cmake/eda.pc.in" "${PROJECT_BINARY_DIR}/eda.pc" @ONLY)
install(FILES "${PROJECT_BINARY_DIR}/eda.pc" DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
