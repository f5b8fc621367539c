#ifndef STARTPLAN_BENCH_TREE_ON_DISK_H
#define STARTPLAN_BENCH_TREE_ON_DISK_H

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <system_error>

#include "bench/generate_tree.h"

namespace bench {

// A generated tree in a folder that is gone with the object.
class TreeOnDisk {
public:
    explicit TreeOnDisk(std::size_t applications, bool allMissing = false)
    {
        std::string name = (std::filesystem::temp_directory_path() / "startplan_bench_XXXXXX").string();
        if (mkdtemp(name.data()) == nullptr) {
            throw std::runtime_error("cannot make " + name);
        }
        folder_ = std::filesystem::canonical(name);
        generate::TreeShape shape;
        shape.applications = applications;
        shape.startupFiles = applications / 50;
        shape.walkedFiles = std::min<std::size_t>(shape.startupFiles, 199);
        shape.dependencies = applications * 10;
        shape.allMissing = allMissing;
        tree_ = generate::WriteTree(folder_.string(), shape);
    }
    TreeOnDisk(const TreeOnDisk&) = delete;
    TreeOnDisk& operator=(const TreeOnDisk&) = delete;
    ~TreeOnDisk()
    {
        std::error_code ignored;
        std::filesystem::remove_all(folder_, ignored);
    }

    const generate::Tree& Get() const { return tree_; }

private:
    std::filesystem::path folder_;
    generate::Tree tree_;
};

} // namespace bench

#endif
