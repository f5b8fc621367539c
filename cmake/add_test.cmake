# startplan_add_test(SOURCE [LABELS label...] [LIBRARIES target...])
#
# One test program from one source file, named after it: depend/depend_graph_test.cpp becomes the program
# and the test depend_graph_test. Linked with GoogleTest and tests/support. The target thread_tests builds those
# with the label threads.
add_custom_target(thread_tests)
function(startplan_add_test source)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "LABELS;LIBRARIES")
  get_filename_component(name ${source} NAME_WE)
  add_executable(${name} ${source})
  target_link_libraries(${name} PRIVATE startplan_test_support ${arg_LIBRARIES})
  add_test(NAME ${name} COMMAND ${name})
  set_tests_properties(${name} PROPERTIES LABELS "${arg_LABELS}" TIMEOUT 600)
  if("threads" IN_LIST arg_LABELS)
    add_dependencies(thread_tests ${name})
  endif()
endfunction()
