# What the tests of an installation are made of.

# Runs a command; its output is in `output`.
function(run)
  execute_process(COMMAND ${ARGV} RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
  if(NOT result EQUAL 0)
    string(JOIN " " command ${ARGV})
    message(FATAL_ERROR "${command}\nexit status ${result}\n${output}")
  endif()
  set(output "${output}" PARENT_SCOPE)
endfunction()

# expect_files(FOLDER MATCHING regex...): below the folder there is a file for each of them.
function(expect_files folder)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "MATCHING")
  file(GLOB_RECURSE files ${folder}/*)
  foreach(pattern ${arg_MATCHING})
    set(matching ${files})
    list(FILTER matching INCLUDE REGEX "${pattern}")
    if(NOT matching)
      list(JOIN files "\n" files)
      message(FATAL_ERROR "nothing below ${folder} matches ${pattern}; there is\n${files}")
    endif()
  endforeach()
endfunction()

# expect_left(FOLDER file...): these files, relative to the folder, are all that is left below it, and no folder is
# there that only we would have made.
function(expect_left folder)
  file(GLOB_RECURSE left LIST_DIRECTORIES true RELATIVE ${folder} ${folder}/*)
  set(files "")
  foreach(path ${left})
    if(NOT IS_DIRECTORY ${folder}/${path})
      list(APPEND files ${path})
    elseif(path MATCHES "startplan")
      message(FATAL_ERROR "the folder ${folder}/${path} is left")
    endif()
  endforeach()
  if(NOT files STREQUAL "${ARGN}")
    message(FATAL_ERROR "below ${folder} there is left: ${files}; expected: ${ARGN}")
  endif()
endfunction()
