# What a cross build makes by running what it has built: all of it by an emulator, none of it without one. It is only
# configured here, for this machine and its compiler under another name; what ninja would run is read from its plan.
cmake_minimum_required(VERSION 3.20)
include(${CMAKE_CURRENT_LIST_DIR}/steps.cmake)

# configure(FOLDER option...): the configuration's messages are in `output`, what ninja would run in `commands`.
macro(configure folder)
  run(${CMAKE_COMMAND} -S ${SOURCE_DIR} -B ${WORK_DIR}/${folder} -G Ninja -DCMAKE_CXX_COMPILER=${COMPILER}
    -DCMAKE_SYSTEM_NAME=Linux -DCMAKE_SYSTEM_PROCESSOR=other -DBUILD_TESTING=OFF ${ARGN})
  set(messages "${output}")
  run(ninja -C ${WORK_DIR}/${folder} -t commands all)
  set(commands "${output}")
endmacro()

file(REMOVE_RECURSE ${WORK_DIR})
configure(without)
if(NOT messages MATCHES "CMAKE_CROSSCOMPILING_EMULATOR is not set")
  message(FATAL_ERROR "nothing tells that pages are left out:\n${messages}")
endif()
if(NOT commands MATCHES "libstartplan\\.so" OR commands MATCHES "startplan_manual|schema startup")
  message(FATAL_ERROR "without an emulator these would run:\n${commands}")
endif()

configure(with -DCMAKE_CROSSCOMPILING_EMULATOR=/usr/bin/env)
foreach(program "startplan_manual " "startplan completion bash" "startplan schema startup")
  if(NOT commands MATCHES "/usr/bin/env [^ ]*/${program}")
    message(FATAL_ERROR "the emulator would not run ${program}:\n${commands}")
  endif()
endforeach()
