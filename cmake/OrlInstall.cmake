# The installed tree: headers, the library, and the files by which CMake and pkg-config find them.
include(CMakePackageConfigHelpers)

install(TARGETS orlCore
  EXPORT orlCoreTargets
  LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}"
  ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}"
  RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}"
  INCLUDES DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/orlCore_0_81")

install(FILES ${ORL_CORE_PUBLIC_HEADERS}
  DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/orlCore_0_81")

# The media reader is a component of the package, FFmpegReader, since it is not always there.
if(TARGET orlFFmpegReader)
  install(TARGETS orlFFmpegReader
    EXPORT orlFFmpegReaderTargets
    LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}"
    ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}"
    RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}"
    INCLUDES DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/orlCore_0_81")
  install(FILES ${ORL_FFMPEG_PUBLIC_HEADERS}
    DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/orlCore_0_81")
endif()

set(ORL_PACKAGE_DIR "${CMAKE_INSTALL_LIBDIR}/cmake/orlCore")

install(EXPORT orlCoreTargets NAMESPACE orlCore:: DESTINATION "${ORL_PACKAGE_DIR}")
if(TARGET orlFFmpegReader)
  install(EXPORT orlFFmpegReaderTargets NAMESPACE orlCore:: DESTINATION "${ORL_PACKAGE_DIR}")
endif()

configure_package_config_file(
  "${PROJECT_SOURCE_DIR}/cmake/orlCoreConfig.cmake.in"
  "${PROJECT_BINARY_DIR}/orlCoreConfig.cmake"
  INSTALL_DESTINATION "${ORL_PACKAGE_DIR}")
write_basic_package_version_file(
  "${PROJECT_BINARY_DIR}/orlCoreConfigVersion.cmake"
  COMPATIBILITY SameMinorVersion)
configure_file(
  "${PROJECT_SOURCE_DIR}/cmake/orlCore_0_81.pc.in"
  "${PROJECT_BINARY_DIR}/orlCore_0_81.pc" @ONLY)

install(FILES
  "${PROJECT_BINARY_DIR}/orlCoreConfig.cmake"
  "${PROJECT_BINARY_DIR}/orlCoreConfigVersion.cmake"
  DESTINATION "${ORL_PACKAGE_DIR}")
install(FILES "${PROJECT_BINARY_DIR}/orlCore_0_81.pc"
  DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig")

if(TARGET orl)
  install(TARGETS orl RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}")
  set(orl_tool_dir "${PROJECT_SOURCE_DIR}/tools/orl")
  install(FILES "${orl_tool_dir}/man/orl.1" DESTINATION "${CMAKE_INSTALL_MANDIR}/man1")
  install(FILES "${orl_tool_dir}/completions/orl.bash"
    DESTINATION "${CMAKE_INSTALL_DATADIR}/bash-completion/completions" RENAME orl)
  install(FILES "${orl_tool_dir}/completions/_orl" DESTINATION "${CMAKE_INSTALL_DATADIR}/zsh/site-functions")
endif()
