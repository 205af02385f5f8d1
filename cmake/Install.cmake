# `cmake --install`: the programs, the libraries, their public headers under include/kelvar, and
# what find_package(Kelvar) and pkg-config need.

# A header is public if it contains KELVAR_EXPORT or KELVAR_PIXELS_EXPORT. These have no code to
# export.
set(public_headers
    src/analytics/Properties.h src/mockup/DocumentChoice.h
    src/platform/QtError.h
    src/platform/network/URLRequest.h src/runtime/Conversion.h
    src/runtime/DelegateFunction.h src/runtime/Sentence.h src/runtime/ValueType.h
    src/sketch/document/ImageReference.h
    src/util/shuffle.h)
function(add_public_headers target)
  file(GLOB headers CONFIGURE_DEPENDS ${ARGN})
  foreach(header IN LISTS headers)
    file(STRINGS ${header} mark REGEX "KELVAR(_PIXELS)?_EXPORT" LIMIT_COUNT 1)
    if(mark)
      target_sources(${target} PUBLIC FILE_SET HEADERS BASE_DIRS ${PROJECT_SOURCE_DIR}/src
                     FILES ${header})
    endif()
  endforeach()
endfunction()
add_public_headers(kelvar-pixels src/pixels/*.h src/pixels/*/*.h src/scene/*.h)
target_sources(kelvar-pixels PUBLIC FILE_SET HEADERS FILES
               src/pixels/PixelFormat.h src/pixels/PixelView.h src/pixels/Result.h
               src/pixels/codec/ByteSink.h src/pixels/codec/DecodedImage.h)
add_public_headers(kelvar src/platform/*.h
                   src/platform/*/*.h
                   src/util/*.h
                   src/runtime/*.h
                   src/geometry/*.h
                   src/archive/*.h
                   src/analytics/*.h
                   src/actions/*.h
                   src/core/*.h
                   src/sketch/*/*.h
                   src/mockup/*.h)
target_sources(kelvar PUBLIC FILE_SET HEADERS FILES ${public_headers})
add_public_headers(kelvar-ui src/ui/*.h)
target_sources(kelvar-ui PUBLIC FILE_SET HEADERS FILES src/ui/ControlBox.h)
add_public_headers(kelvar-scripting src/scripting/*.h src/scripting/*/*.h)
target_sources(kelvar-scripting PUBLIC FILE_SET HEADERS FILES
               src/scripting/runtime/ScriptError.h)

install(TARGETS kelvar-pixels EXPORT KelvarPixelsTargets
        FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/kelvar)
install(TARGETS kelvar EXPORT KelvarTargets
        FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/kelvar)
install(TARGETS kelvar-ui EXPORT KelvarUiTargets
        FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/kelvar)
install(TARGETS kelvar-scripting EXPORT KelvarScriptingTargets
        FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/kelvar)
install(TARGETS kelvar-program kelvar-panel kelvar-run)
install(TARGETS kelvar-pdf kelvar-svg RUNTIME DESTINATION ${CMAKE_INSTALL_LIBEXECDIR})
install(TARGETS kelvar-network kelvar-zip LIBRARY NAMELINK_SKIP)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/Kelvar)
include(CMakePackageConfigHelpers)
configure_package_config_file(cmake/KelvarConfig.cmake.in KelvarConfig.cmake
                              INSTALL_DESTINATION ${package_dir})
write_basic_package_version_file(KelvarConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/KelvarConfig.cmake
              ${PROJECT_BINARY_DIR}/KelvarConfigVersion.cmake DESTINATION ${package_dir})
install(EXPORT KelvarPixelsTargets NAMESPACE Kelvar:: DESTINATION ${package_dir})
install(EXPORT KelvarTargets NAMESPACE Kelvar:: DESTINATION ${package_dir})
install(EXPORT KelvarUiTargets NAMESPACE Kelvar:: DESTINATION ${package_dir})
install(EXPORT KelvarScriptingTargets NAMESPACE Kelvar:: DESTINATION ${package_dir})

# The prefix is relative to the file, so that `cmake --install --prefix` can change it.
file(RELATIVE_PATH prefix_from_pc
     ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
foreach(package IN ITEMS kelvar kelvar-pixels)
  configure_file(cmake/${package}.pc.in ${package}.pc @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/${package}.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
endforeach()
