# SPDX-License-Identifier: BSD-2-Clause
# The shared library: libZorSurface.so or ZorSurface.dll, exporting CreateObject and nothing else,
# with its installation.

add_library(ZorSurface SHARED $<TARGET_OBJECTS:zor_core>)
add_library(zor::zor ALIAS ZorSurface)
zor_compile_options(ZorSurface)
target_compile_features(ZorSurface INTERFACE cxx_std_17)  # what the public headers ask of a host
target_include_directories(ZorSurface INTERFACE
  $<BUILD_INTERFACE:${CMAKE_CURRENT_SOURCE_DIR}/include>
  $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
target_link_libraries(ZorSurface PRIVATE ${CMAKE_DL_LIBS})
set_target_properties(ZorSurface PROPERTIES
  VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR} EXPORT_NAME zor LINKER_LANGUAGE CXX)

if(WIN32)
  enable_language(RC)
  configure_file(${CMAKE_CURRENT_SOURCE_DIR}/object/version.rc.in
                 ${CMAKE_CURRENT_BINARY_DIR}/version.rc @ONLY)
  target_sources(ZorSurface PRIVATE ${CMAKE_CURRENT_SOURCE_DIR}/object/exports.def
                                    ${CMAKE_CURRENT_BINARY_DIR}/version.rc)
  set_target_properties(ZorSurface PROPERTIES PREFIX "" OUTPUT_NAME ZorSurface)
  target_link_options(ZorSurface PRIVATE -static -static-libgcc -static-libstdc++)
else()
  set(exports ${CMAKE_CURRENT_SOURCE_DIR}/object/exports.map)
  target_link_options(ZorSurface PRIVATE -Wl,--version-script,${exports})
  set_property(TARGET ZorSurface APPEND PROPERTY LINK_DEPENDS ${exports})
  target_link_libraries(ZorSurface PRIVATE Threads::Threads)
  if(NOT ZOR_SANITIZE)  # a sanitizer's own symbols come from the program
    target_link_options(ZorSurface PRIVATE -Wl,--no-undefined)
  endif()
endif()

if(NOT ZOR_INSTALL)
  return()
endif()

include(CMakePackageConfigHelpers)
set(package_folder ${CMAKE_INSTALL_LIBDIR}/cmake/ZorSurface)
install(TARGETS ZorSurface EXPORT ZorSurfaceTargets
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(DIRECTORY include/zorsurface DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(EXPORT ZorSurfaceTargets NAMESPACE zor:: DESTINATION ${package_folder})
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/ZorSurfaceConfigVersion.cmake
                                 COMPATIBILITY SameMajorVersion)
install(FILES cmake/ZorSurfaceConfig.cmake
              ${CMAKE_CURRENT_BINARY_DIR}/ZorSurfaceConfigVersion.cmake
        DESTINATION ${package_folder})
# From the folder of the .pc file up to the prefix, so that the installation can be moved.
file(RELATIVE_PATH ZOR_PC_PREFIX
     ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
configure_file(cmake/ZorSurface.pc.in ${CMAKE_CURRENT_BINARY_DIR}/ZorSurface.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/ZorSurface.pc
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
install(FILES LICENSE DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/ZorSurface)
