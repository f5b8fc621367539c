# The command, and what is made by it.

# It looks for the library beside its own place, so that a prefix can be moved as a whole; not where programs find
# theirs anyway, as distributions want it.
set(startplan_system_folders ${CMAKE_CXX_IMPLICIT_LINK_DIRECTORIES}
  /lib /usr/lib /lib/${CMAKE_LIBRARY_ARCHITECTURE} /usr/lib/${CMAKE_LIBRARY_ARCHITECTURE})
if(BUILD_SHARED_LIBS AND NOT DEFINED CMAKE_INSTALL_RPATH
   AND NOT CMAKE_INSTALL_FULL_LIBDIR IN_LIST startplan_system_folders)
  file(RELATIVE_PATH startplan_lib_from_bin ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_LIBDIR})
  set_target_properties(startplan_tool PROPERTIES INSTALL_RPATH "$ORIGIN/${startplan_lib_from_bin}")
endif()
install(TARGETS startplan_tool RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT tools)
