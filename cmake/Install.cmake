# `cmake --install`: the program, the library, its public headers under include/kelvar, and what
# find_package(Kelvar) and pkg-config need.

# A header is public when it marks something KELVAR_EXPORT. These have no code to export.
set(public_headers
    src/analytics/Properties.h src/geometry/warp/PixelView.h
    src/platform/URLRequest.h src/runtime/Conversion.h src/runtime/ValueType.h src/util/shuffle.h)
function(add_public_headers target)
  file(GLOB headers CONFIGURE_DEPENDS ${ARGN})
  foreach(header IN LISTS headers)
    file(STRINGS ${header} mark REGEX KELVAR_EXPORT LIMIT_COUNT 1)
    if(mark)
      target_sources(${target} PUBLIC FILE_SET HEADERS BASE_DIRS ${PROJECT_SOURCE_DIR}/src
                     FILES ${header})
    endif()
  endforeach()
endfunction()
add_public_headers(kelvar src/platform/*.h
                   src/util/*.h
                   src/runtime/*.h
                   src/geometry/*.h
                   src/geometry/warp/*.h
                   src/archive/*.h
                   src/analytics/*.h
                   src/actions/*.h
                   src/core/*.h
                   src/host/*.h)
target_sources(kelvar PUBLIC FILE_SET HEADERS FILES ${public_headers})
add_public_headers(kelvar-ui src/ui/*.h)
add_public_headers(kelvar-scripting src/scripting/*.h)

install(TARGETS kelvar EXPORT KelvarTargets
        FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/kelvar)
install(TARGETS kelvar-ui EXPORT KelvarUiTargets
        FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/kelvar)
install(TARGETS kelvar-scripting EXPORT KelvarScriptingTargets
        FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/kelvar)
install(TARGETS kelvar-program kelvar-panel kelvar-run)
install(TARGETS kelvar-svg RUNTIME DESTINATION ${CMAKE_INSTALL_LIBEXECDIR})
install(TARGETS kelvar-network kelvar-zip LIBRARY NAMELINK_SKIP)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/Kelvar)
include(CMakePackageConfigHelpers)
configure_package_config_file(cmake/KelvarConfig.cmake.in KelvarConfig.cmake
                              INSTALL_DESTINATION ${package_dir})
write_basic_package_version_file(KelvarConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/KelvarConfig.cmake
              ${PROJECT_BINARY_DIR}/KelvarConfigVersion.cmake DESTINATION ${package_dir})
install(EXPORT KelvarTargets NAMESPACE Kelvar:: DESTINATION ${package_dir})
install(EXPORT KelvarUiTargets NAMESPACE Kelvar:: DESTINATION ${package_dir})
install(EXPORT KelvarScriptingTargets NAMESPACE Kelvar:: DESTINATION ${package_dir})

# The prefix is found from where the file lies, so that `cmake --install --prefix` can move it.
file(RELATIVE_PATH prefix_from_pc
     ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
configure_file(cmake/kelvar.pc.in kelvar.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/kelvar.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
