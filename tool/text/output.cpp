#include "tool/text/output.h"

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <utility>

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

#include "tool/text/failure.h"

namespace tool {

namespace {

[[noreturn]] void FailToWrite(std::string_view what, int error)
{
    if (error == EPIPE) {
        throw ClosedPipe();
    }
    throw Failure(fmt::format("cannot write {}: {}", what, std::strerror(error)));
}

// A file beside the one that it will replace; gone again unless it has replaced it.
class TemporaryFile {
public:
    explicit TemporaryFile(const std::string& target) : target_(target), path_(target + ".XXXXXX")
    {
        descriptor_ = mkstemp(path_.data());
        if (descriptor_ < 0) {
            FailToWrite(target, errno);
        }
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    ~TemporaryFile()
    {
        if (descriptor_ >= 0) {
            close(descriptor_);
        }
        if (!isKept_) {
            unlink(path_.c_str());
        }
    }

    void Fill(std::string_view text, mode_t mode)
    {
        const int error = WriteAll(descriptor_, text);
        if (error != 0) {
            FailToWrite(target_, error);
        }
        // A full disk may show only now, and must show before the old file is replaced.
        if (fchmod(descriptor_, mode) != 0 || fsync(descriptor_) != 0 ||
            close(std::exchange(descriptor_, -1)) != 0) {
            FailToWrite(target_, errno);
        }
        if (rename(path_.c_str(), target_.c_str()) != 0) {
            FailToWrite(target_, errno);
        }
        isKept_ = true;
    }

private:
    std::string target_;
    std::string path_;
    int descriptor_ = -1;
    bool isKept_ = false;
};

mode_t ModeOfNewFiles()
{
    const mode_t mask = umask(0);
    umask(mask);
    return 0666 & ~mask;
}

// The file itself where the path is a link, so that the link stays one.
std::string Resolve(const std::string& path)
{
    char* resolved = realpath(path.c_str(), nullptr);
    std::string result = resolved == nullptr ? path : resolved;
    std::free(resolved);
    return result;
}

} // namespace

int WriteAll(int descriptor, std::string_view text)
{
    while (!text.empty()) {
        const ssize_t written = write(descriptor, text.data(), text.size());
        if (written < 0 && errno != EINTR) {
            return errno;
        }
        text.remove_prefix(written < 0 ? 0 : static_cast<std::size_t>(written));
    }
    return 0;
}

void Output::Commit()
{
    if (!path_.empty()) {
        WriteFile(Resolve(path_));
        return;
    }
    const int error = WriteAll(STDOUT_FILENO, text_);
    if (error != 0) {
        FailToWrite("standard output", error);
    }
}

void Output::WriteFile(const std::string& path) const
{
    struct stat status = {};
    const bool isThere = stat(path.c_str(), &status) == 0;
    if (isThere && S_ISDIR(status.st_mode)) {
        FailToWrite(path_, EISDIR);
    }
    if (!isThere || S_ISREG(status.st_mode)) {
        TemporaryFile(path).Fill(text_, isThere ? status.st_mode & 07777 : ModeOfNewFiles());
        return;
    }
    // A device or a pipe cannot be replaced by a file, only written to.
    const int descriptor = open(path.c_str(), O_WRONLY | O_CLOEXEC);
    int error = descriptor < 0 ? errno : WriteAll(descriptor, text_);
    if (descriptor >= 0 && close(descriptor) != 0 && error == 0) {
        error = errno;
    }
    if (error != 0) {
        FailToWrite(path_, error);
    }
}

} // namespace tool
