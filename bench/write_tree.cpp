// Writes a generated tree for programs that are measured from outside:
//
//     write_tree FOLDER APPLICATIONS DEPENDENCIES
//
// in a startup file for each 50 applications, below 199 walked files at the most. Prints the top-level file.

#include <algorithm>
#include <cstdio>
#include <exception>
#include <string>

#include "bench/generate_tree.h"

int main(int argc, char** argv)
{
    if (argc != 4) {
        std::fputs("usage: write_tree FOLDER APPLICATIONS DEPENDENCIES\n", stderr);
        return 2;
    }
    try {
        generate::TreeShape shape;
        shape.applications = std::stoul(argv[2]);
        shape.dependencies = std::stoul(argv[3]);
        shape.startupFiles = std::max<std::size_t>(1, shape.applications / 50);
        shape.walkedFiles = std::min<std::size_t>(shape.startupFiles, 199);
        std::puts(generate::WriteTree(argv[1], shape).topLevel.c_str());
    } catch (const std::exception& error) {
        std::fprintf(stderr, "write_tree: %s\n", error.what());
        return 1;
    }
    return 0;
}
