#ifndef STARTPLAN_TESTS_SUPPORT_TEMPORARY_TREE_H
#define STARTPLAN_TESTS_SUPPORT_TEMPORARY_TREE_H

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>

namespace test_support {

// A folder of its own for one test, gone with the object. Its path is absolute and resolved, begins with
// "/" and holds no "..", so that startup files in it pass the path check.
class TemporaryTree {
public:
    TemporaryTree()
    {
        std::string name = (std::filesystem::temp_directory_path() / "startplan_test_XXXXXX").string();
        if (mkdtemp(name.data()) == nullptr) {
            throw std::runtime_error("cannot make " + name);
        }
        root_ = std::filesystem::canonical(name);
    }
    TemporaryTree(const TemporaryTree&) = delete;
    TemporaryTree& operator=(const TemporaryTree&) = delete;
    ~TemporaryTree()
    {
        std::error_code ignored;
        std::filesystem::remove_all(root_, ignored);
    }

    std::string Path(const std::string& name) const { return (root_ / name).string(); }

    // Writes a file, with the folders on its way, and gives its path.
    std::string Write(const std::string& name, const std::string& content) const
    {
        const std::filesystem::path path = root_ / name;
        std::filesystem::create_directories(path.parent_path());
        std::ofstream file(path, std::ios::binary);
        file << content;
        if (!file.flush()) {
            throw std::runtime_error("cannot write " + path.string());
        }
        return path.string();
    }

private:
    std::filesystem::path root_;
};

} // namespace test_support

#endif
