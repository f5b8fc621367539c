# Runs PROGRAM, the code of a page, at the root of the source tree and compares what it prints.
cmake_minimum_required(VERSION 3.20)
execute_process(COMMAND ${PROGRAM} WORKING_DIRECTORY ${SOURCE_DIR}
  RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE errors)
file(READ ${EXPECTED} expected)
if(NOT status EQUAL 0 OR NOT output STREQUAL expected)
  message(FATAL_ERROR "exit status ${status}, output:\n${output}expected:\n${expected}${errors}")
endif()
