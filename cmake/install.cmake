# Components to cut packages along: "runtime" is what a linked program needs, "development" what building one
# needs, "tools" the command and all that belongs to it.
include(CMakePackageConfigHelpers)

install(TARGETS startplan EXPORT startplan_targets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime NAMELINK_COMPONENT development
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development)
install(DIRECTORY include/startplan DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development
  FILES_MATCHING PATTERN "*.h")

set(startplan_package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/startplan)
install(EXPORT startplan_targets NAMESPACE startplan:: DESTINATION ${startplan_package_dir}
  COMPONENT development)
configure_package_config_file(cmake/startplanConfig.cmake.in startplanConfig.cmake
  INSTALL_DESTINATION ${startplan_package_dir})
write_basic_package_version_file(startplanConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES
  ${CMAKE_CURRENT_BINARY_DIR}/startplanConfig.cmake
  ${CMAKE_CURRENT_BINARY_DIR}/startplanConfigVersion.cmake
  cmake/FindLibYaml.cmake
  DESTINATION ${startplan_package_dir} COMPONENT development)

# The prefix is reckoned from the file's own place, so the package can be moved as a whole.
file(RELATIVE_PATH startplan_prefix_from_pc
  ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
string(REGEX REPLACE "/$" "" startplan_prefix_from_pc "${startplan_prefix_from_pc}")
# A shared library brings libyaml along by itself; a static one needs it named.
if(BUILD_SHARED_LIBS)
  set(startplan_pc_libs "-lstartplan")
else()
  set(startplan_pc_libs "-lstartplan -lyaml")
endif()
configure_file(cmake/startplan.pc.in startplan.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/startplan.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig
  COMPONENT development)

configure_file(docs/man/libstartplan.3.in share/man/man3/libstartplan.3 @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/share/man/man3/libstartplan.3 DESTINATION ${CMAKE_INSTALL_MANDIR}/man3
  COMPONENT development)

if(STARTPLAN_BUILD_TOOLS)
  include(install_tools)
endif()

if(startplan_top_level)
  configure_file(cmake/uninstall.cmake.in uninstall.cmake @ONLY)
  add_custom_target(uninstall COMMAND ${CMAKE_COMMAND} -P ${CMAKE_CURRENT_BINARY_DIR}/uninstall.cmake VERBATIM)
endif()
