# An example of a toolchain file: builds on this machine for a device with a 64-bit ARM processor.
#
#     cmake --preset minimal -B build/device --toolchain cmake/toolchains/aarch64-linux-gnu.cmake \
#       -DCMAKE_FIND_ROOT_PATH=FOLDER
#     cmake --build build/device
#     cmake --install build/device --prefix IMAGE/usr --strip
#
# The name of this file names the compiler: aarch64-linux-gnu-g++ is what Debian's g++-aarch64-linux-gnu has. For
# another compiler copy the file: aarch64-poky-linux.cmake takes aarch64-poky-linux-g++. Its folder is in PATH.
#
# What differs from device to device is given on the command line:
#
#   CMAKE_FIND_ROOT_PATH=FOLDER   where libyaml for the device is: FOLDER/usr/include/yaml.h and the library
#                                 below FOLDER/usr/lib. The compiler brings the C and C++ libraries.
#   CMAKE_SYSROOT=FOLDER          instead of it: the device's whole system, or an SDK's copy of it, from which the
#                                 compiler takes the C and C++ libraries, too.
#   CMAKE_CROSSCOMPILING_EMULATOR='qemu-aarch64;-L;FOLDER'
#                                 optional: starts programs made for the device, such as the tests, on this
#                                 machine. FOLDER holds the C library's /lib: /usr/aarch64-linux-gnu on Debian,
#                                 else the sysroot.

get_filename_component(triplet ${CMAKE_CURRENT_LIST_FILE} NAME_WE)
string(REGEX MATCH "^[^-]+" processor ${triplet})

set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR ${processor})

set(CMAKE_C_COMPILER ${triplet}-gcc)
set(CMAKE_CXX_COMPILER ${triplet}-g++)

# Debian keeps libraries in /usr/lib/TRIPLET, which CMake does not know of from a cross compiler. Where there is
# no such folder, usr/lib is searched as ever.
set(CMAKE_LIBRARY_ARCHITECTURE ${triplet})

# Programs that run during the build are this machine's; headers and libraries are the device's, and none of
# this machine's is taken in their place.
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
