# The warnings that this project's own code is built with. Linked privately and never exported.
add_library(startplan_warnings INTERFACE)
target_compile_options(startplan_warnings INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wformat=2 -Wnon-virtual-dtor
  -Woverloaded-virtual -Wcast-qual -Wundef -Wnull-dereference)
if(STARTPLAN_WARNINGS_AS_ERRORS)
  target_compile_options(startplan_warnings INTERFACE -Werror)
endif()
