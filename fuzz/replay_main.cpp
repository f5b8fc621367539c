// The entry point of a fuzzer that is built without libFuzzer: runs every file named on the command line,
// and every file below every folder named there, in the order of their names.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

namespace fs = std::filesystem;

void Collect(const fs::path& path, std::vector<fs::path>& files)
{
    if (!fs::is_directory(path)) {
        files.push_back(path);
        return;
    }
    for (const auto& entry : fs::recursive_directory_iterator(path)) {
        if (entry.is_regular_file()) {
            files.push_back(entry.path());
        }
    }
}

std::string Read(const fs::path& path)
{
    std::ifstream file(path, std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

} // namespace

int main(int argc, char** argv)
{
    std::vector<fs::path> files;
    for (int i = 1; i < argc; ++i) {
        if (!fs::exists(argv[i])) {
            std::fprintf(stderr, "%s: not found\n", argv[i]);
            return 2;
        }
        Collect(fs::absolute(argv[i]), files); // a fuzzer may change the current folder
    }
    std::sort(files.begin(), files.end());
    for (const fs::path& file : files) {
        // Before it runs, so that the last line names the one that ended the program.
        std::printf("%s\n", file.c_str());
        std::fflush(stdout);
        const std::string input = Read(file);
        LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(input.data()), input.size());
    }
    std::printf("%zu inputs replayed\n", files.size());
    return files.empty() ? 1 : 0;
}
