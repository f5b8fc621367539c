# The same sources give the same bytes, in whatever folder they are built. Optimised builds name their sources
# from the project's folder; debug builds keep whole paths, so that a debugger finds the sources from anywhere.
# The target is linked privately and never exported.
include(CheckCXXCompilerFlag)
check_cxx_compiler_flag(-ffile-prefix-map=/from=to STARTPLAN_HAS_FILE_PREFIX_MAP)

add_library(startplan_reproducible INTERFACE)
if(STARTPLAN_HAS_FILE_PREFIX_MAP)
  # The last one that fits is taken: a build folder may be a part of the source folder.
  target_compile_options(startplan_reproducible INTERFACE $<$<NOT:$<CONFIG:Debug>>:
    -ffile-prefix-map=${PROJECT_SOURCE_DIR}=. -ffile-prefix-map=${PROJECT_BINARY_DIR}=build>)
endif()
# A program's path to the library would leave its length in the program, even after `cmake --install` took it out.
set(CMAKE_BUILD_RPATH_USE_ORIGIN ON)
