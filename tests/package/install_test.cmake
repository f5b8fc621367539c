# Builds the library with the options of a packager (KIND: shared or static), installs it, moves the prefix,
# and builds and runs a client there by find_package and by pkg-config; then installs it below $DESTDIR and
# uninstalls it. Of the shared library it also holds the exported symbols against exported_symbols.txt, and that it
# calls plain syslog().
cmake_minimum_required(VERSION 3.20)
if(NOT PKG_CONFIG)
  message(FATAL_ERROR "pkg-config is needed for this test")
endif()
set(here ${CMAKE_CURRENT_LIST_DIR})
include(${here}/steps.cmake)

function(expect_client_output)
  if(NOT output STREQUAL "1 net\n2 web\n")
    message(FATAL_ERROR "the client printed:\n${output}")
  endif()
endfunction()

if(KIND STREQUAL "shared")
  set(shared ON)
else()
  set(shared OFF)
endif()
file(REMOVE_RECURSE ${WORK_DIR})
# The sizes hold for the flags of the build type alone. Debug information, which the test of the ABI reads, leaves
# the code as it is.
unset(ENV{CXXFLAGS})
unset(ENV{LDFLAGS})
run(${CMAKE_COMMAND} -S ${SOURCE_DIR} -B ${WORK_DIR}/build -G Ninja -DCMAKE_CXX_COMPILER=${COMPILER}
  -DCMAKE_BUILD_TYPE=MinSizeRel -DCMAKE_CXX_FLAGS=-g -DBUILD_SHARED_LIBS=${shared} -DBUILD_TESTING=OFF
  -DSTARTPLAN_BUILD_TOOLS=OFF -DSTARTPLAN_BUILD_EXAMPLES=OFF -DSTARTPLAN_WARNINGS_AS_ERRORS=ON)
run(${CMAKE_COMMAND} --build ${WORK_DIR}/build)
run(${CMAKE_COMMAND} --install ${WORK_DIR}/build --prefix ${WORK_DIR}/installed)
file(RENAME ${WORK_DIR}/installed ${WORK_DIR}/moved)
file(GLOB_RECURSE pc_file ${WORK_DIR}/moved/*/startplan.pc)
get_filename_component(pkgconfig_dir ${pc_file} DIRECTORY)
get_filename_component(library_dir ${pkgconfig_dir} DIRECTORY)

run(${CMAKE_COMMAND} -S ${here}/client -B ${WORK_DIR}/client -G Ninja -DCMAKE_CXX_COMPILER=${COMPILER}
  -DCMAKE_PREFIX_PATH=${WORK_DIR}/moved)
run(${CMAKE_COMMAND} --build ${WORK_DIR}/client)
run(${WORK_DIR}/client/client)
expect_client_output()

set(ENV{PKG_CONFIG_PATH} ${pkgconfig_dir})
set(ENV{LD_LIBRARY_PATH} ${library_dir})
run(${PKG_CONFIG} --cflags --libs startplan)
separate_arguments(flags UNIX_COMMAND "${output}")
run(${COMPILER} -std=c++17 ${here}/client/main.cpp -o ${WORK_DIR}/client_by_pkg_config ${flags})
run(${WORK_DIR}/client_by_pkg_config)
expect_client_output()
run(${PKG_CONFIG} --modversion startplan)
string(STRIP "${output}" version)
file(STRINGS ${SOURCE_DIR}/CMakeLists.txt project REGEX "^project\\(")
if(NOT project MATCHES "VERSION ${version} ")
  message(FATAL_ERROR "startplan.pc has version ${version}; ${project}")
endif()

# Installed once more, below $DESTDIR and beside somebody else's file; what is uninstalled is all but that.
set(ENV{DESTDIR} ${WORK_DIR}/root)
run(${CMAKE_COMMAND} --install ${WORK_DIR}/build --prefix /opt/startplan)
file(MAKE_DIRECTORY ${WORK_DIR}/root/opt/startplan/include/other)
file(WRITE ${WORK_DIR}/root/opt/startplan/include/other/other.h "")
expect_files(${WORK_DIR}/root/opt/startplan MATCHING "/libstartplan\\." "/include/startplan/parser\\.h$"
  "/cmake/startplan/FindLibYaml\\.cmake$" "/pkgconfig/startplan\\.pc$" "/man3/libstartplan\\.3$")
run(${CMAKE_COMMAND} --build ${WORK_DIR}/build --target uninstall)
expect_left(${WORK_DIR}/root/opt/startplan include/other/other.h)
unset(ENV{DESTDIR})

if(KIND STREQUAL "static")
  return()
endif()

run(nm -D --defined-only ${library_dir}/libstartplan.so)
string(REGEX MATCHALL "[^ \n]+\n" names "${output}")
string(REGEX REPLACE "@@STARTPLAN_[0-9]+" "" names "${names}")
string(REGEX REPLACE "[\n;]+" ";" names "${names}")
list(REMOVE_ITEM names "")
list(SORT names)
file(STRINGS ${here}/exported_symbols.txt expected)
list(SORT expected)
if(NOT names STREQUAL expected)
  set(missing ${expected})
  list(REMOVE_ITEM missing ${names})
  set(added ${names})
  list(REMOVE_ITEM added ${expected})
  message(FATAL_ERROR "exported symbols differ from exported_symbols.txt\nmissing: ${missing}\nadded: ${added}")
endif()

# With _FORTIFY_SOURCE these would be other symbols, which a client that replaces syslog() never sees.
run(nm -D --undefined-only ${library_dir}/libstartplan.so)
if(NOT output MATCHES " syslog@" OR output MATCHES "_chk@")
  message(FATAL_ERROR "the library does not call plain syslog():\n${output}")
endif()
