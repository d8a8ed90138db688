# The installed tree, and the packages made of it. It has four parts: Runtime, the library; FFmpegReader, the media
# reader, which brings FFmpeg with it; Development, what one needs to link them; Tools, the program.
include(CMakePackageConfigHelpers)

set(ORL_HEADER_DIR "${CMAKE_INSTALL_INCLUDEDIR}/orlCore_0_81")
set(ORL_PACKAGE_DIR "${CMAKE_INSTALL_LIBDIR}/cmake/orlCore")
set(ORL_PKGCONFIG_DIR "${CMAKE_INSTALL_LIBDIR}/pkgconfig")

# The package files find the rest from where they stand, so that an installed tree can be moved; not so where its
# folders were given by absolute paths.
file(RELATIVE_PATH up "/${ORL_PKGCONFIG_DIR}" "/")
set(ORL_PC_PREFIX "\${pcfiledir}/${up}")
set(ORL_PC_LIBDIR "\${prefix}${CMAKE_INSTALL_LIBDIR}")
set(ORL_PC_INCLUDEDIR "\${prefix}${ORL_HEADER_DIR}")
if(IS_ABSOLUTE "${CMAKE_INSTALL_LIBDIR}" OR IS_ABSOLUTE "${CMAKE_INSTALL_INCLUDEDIR}")
  set(ORL_PC_PREFIX "${CMAKE_INSTALL_PREFIX}/")
  set(ORL_PC_LIBDIR "${CMAKE_INSTALL_FULL_LIBDIR}")
  set(ORL_PC_INCLUDEDIR "${CMAKE_INSTALL_FULL_INCLUDEDIR}/orlCore_0_81")
endif()

# orl_install_library(TARGET COMPONENT HEADER ...): a library with its headers and the files that help to find it.
function(orl_install_library target component)
  install(TARGETS ${target}
    EXPORT ${target}Targets
    LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT ${component}
    INCLUDES DESTINATION "${ORL_HEADER_DIR}")
  install(FILES ${ARGN} DESTINATION "${ORL_HEADER_DIR}" COMPONENT Development)
  install(EXPORT ${target}Targets NAMESPACE orlCore:: DESTINATION "${ORL_PACKAGE_DIR}" COMPONENT Development)
  configure_file(
    "${PROJECT_SOURCE_DIR}/cmake/${target}_0_81.pc.in" "${PROJECT_BINARY_DIR}/${target}_0_81.pc" @ONLY)
  install(FILES "${PROJECT_BINARY_DIR}/${target}_0_81.pc"
    DESTINATION "${ORL_PKGCONFIG_DIR}" COMPONENT Development)
endfunction()

orl_install_library(orlCore Runtime ${ORL_CORE_PUBLIC_HEADERS})
if(TARGET orlFFmpegReader)
  orl_install_library(orlFFmpegReader FFmpegReader ${ORL_FFMPEG_PUBLIC_HEADERS})
endif()

configure_package_config_file(
  "${PROJECT_SOURCE_DIR}/cmake/orlCoreConfig.cmake.in"
  "${PROJECT_BINARY_DIR}/orlCoreConfig.cmake"
  INSTALL_DESTINATION "${ORL_PACKAGE_DIR}")
write_basic_package_version_file(
  "${PROJECT_BINARY_DIR}/orlCoreConfigVersion.cmake"
  COMPATIBILITY SameMinorVersion)
install(FILES
  "${PROJECT_BINARY_DIR}/orlCoreConfig.cmake"
  "${PROJECT_BINARY_DIR}/orlCoreConfigVersion.cmake"
  DESTINATION "${ORL_PACKAGE_DIR}" COMPONENT Development)

if(TARGET orl)
  install(TARGETS orl RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}" COMPONENT Tools)
  set(orl_tool_dir "${PROJECT_SOURCE_DIR}/tools/orl")
  install(FILES "${orl_tool_dir}/man/orl.1" DESTINATION "${CMAKE_INSTALL_MANDIR}/man1" COMPONENT Tools)
  install(FILES "${orl_tool_dir}/completions/orl.bash"
    DESTINATION "${CMAKE_INSTALL_DATADIR}/bash-completion/completions" RENAME orl COMPONENT Tools)
  install(FILES "${orl_tool_dir}/completions/_orl"
    DESTINATION "${CMAKE_INSTALL_DATADIR}/zsh/site-functions" COMPONENT Tools)
endif()

include(OrlPackages)
