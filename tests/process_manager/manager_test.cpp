#include "tests/process_manager/manager_test.h"

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <functional>
#include <iterator>
#include <sstream>
#include <thread>

#include <fcntl.h>
#include <grp.h>
#include <sys/wait.h>
#include <unistd.h>

namespace process_manager_test {
namespace {

constexpr std::chrono::seconds kPatience(240);

std::string ReadFile(const std::string& path)
{
    std::ifstream file(path);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

bool Happens(const std::function<bool()>& condition)
{
    const auto end = std::chrono::steady_clock::now() + kPatience;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end) {
            return false;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    return true;
}

// As YAML would have it in a list in brackets.
std::string Quoted(const Texts& texts)
{
    std::string list;
    for (const std::string& text : texts) {
        list += (list.empty() ? "\"" : ", \"") + text + "\"";
    }
    return "[" + list + "]";
}

} // namespace

bool IsAlive(pid_t process)
{
    return kill(process, 0) == 0;
}

ManagerTest::ManagerTest()
{
    tree_.Write("trace", "");
}

ManagerTest::~ManagerTest()
{
    if (manager_ > 0) {
        for (const auto& [child, state] : Children()) {
            kill(child, SIGKILL);
        }
        kill(manager_, SIGKILL);
        waitpid(manager_, nullptr, 0);
    }
    CloseStandardInput();
    if (HasFailure()) {
        std::cerr << "--- trace\n" << ReadFile(tree_.Path("trace")) << "--- log\n" << Log() << "---\n";
    }
}

void ManagerTest::AddText(const std::string& entry)
{
    startup_ += entry;
}

void ManagerTest::Add(const std::string& name, const Texts& depends, const Texts& actions,
                      const std::string& keys)
{
    Texts arguments = actions;
    arguments.insert(arguments.begin(), tree_.Path("trace"));
    std::ostringstream entry;
    entry << '"' << name << "\":\n  bin_path: " << TRACED_PROGRAM << "\n  depends: " << Quoted(depends)
          << "\n  arguments: " << Quoted(arguments) << "\n";
    if (keys.find("uid:") == std::string::npos) {
        entry << "  uid: " << geteuid() << "\n  gid: " << getegid() << "\n";
    }
    std::string rest = keys;
    for (std::size_t end = 0; !rest.empty(); rest.erase(0, end == std::string::npos ? end : end + 2)) {
        end = rest.find("; ");
        entry << "  " << rest.substr(0, end) << "\n";
    }
    const bool reports = std::find(actions.begin(), actions.end(), "ready") != actions.end();
    entry << (reports ? "  is_reporting: true\n" : "");
    AddText(entry.str());
}

void ManagerTest::Run(const Texts& arguments)
{
    const std::string startup = tree_.Write("startup.yaml", startup_);
    const std::string top = tree_.Write("top.yaml", "startup_path_list: [" + startup + "]\n");
    // Another manager, and a command to run it under, for runs of these tests under a checking tool.
    const char* under = std::getenv("PROCESS_MANAGER_UNDER");
    const char* manager = std::getenv("PROCESS_MANAGER");
    std::istringstream words(under != nullptr ? under : "");
    Texts all{std::istream_iterator<std::string>(words), {}};
    all.insert(all.end(), {manager != nullptr ? manager : PROCESS_MANAGER, top});
    all.insert(all.end(), arguments.begin(), arguments.end());
    std::vector<char*> argv;
    for (std::string& argument : all) {
        argv.push_back(argument.data());
    }
    argv.push_back(nullptr);
    const std::string log = tree_.Path("log");
    int requests[2] = {-1, -1};
    ASSERT_EQ(pipe(requests), 0);
    requests_ = requests[1];
    manager_ = fork();
    if (manager_ == 0) {
        dup2(requests[0], STDIN_FILENO);
        close(requests[1]);
        const gid_t extra = 65531; // for the manager to drop
        if (geteuid() == 0 && setgroups(1, &extra) != 0) {
            _exit(96);
        }
        dup2(open(log.c_str(), O_WRONLY | O_CREAT | O_APPEND, 0666), STDERR_FILENO);
        execvp(argv[0], argv.data());
        _exit(97);
    }
    close(requests[0]);
}

void ManagerTest::Request(const std::string& line) const
{
    WaitForLog("info started: ");
    const std::string text = line + "\n";
    EXPECT_EQ(write(requests_, text.data(), text.size()), static_cast<ssize_t>(text.size()));
}

void ManagerTest::CloseStandardInput()
{
    close(requests_);
    requests_ = -1;
}

void ManagerTest::WaitForTrace(const std::string& line, int count) const
{
    EXPECT_TRUE(Happens([&] { return Count(line) >= count; })) << line << " is not in the trace";
}

void ManagerTest::WaitForLog(const std::string& text, int count) const
{
    const auto appears = [&] {
        const std::string log = Log();
        int found = 0;
        for (std::size_t at = log.find(text); at != std::string::npos; at = log.find(text, at + 1)) {
            ++found;
        }
        return found >= count;
    };
    EXPECT_TRUE(Happens(appears)) << text << " is not in the log";
}

void ManagerTest::Signal(int number) const
{
    kill(manager_, number);
}

int ManagerTest::ExitStatus()
{
    int status = 0;
    if (!Happens([&] { return waitpid(manager_, &status, WNOHANG) != 0; })) {
        ADD_FAILURE() << "the manager does not end";
        return -1;
    }
    manager_ = -1;
    EXPECT_TRUE(WIFEXITED(status));
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

int ManagerTest::End()
{
    Signal(SIGTERM);
    return ExitStatus();
}

int ManagerTest::EndOnceStarted()
{
    WaitForLog("info started: ");
    return End();
}

Texts ManagerTest::Trace() const
{
    std::istringstream text(ReadFile(tree_.Path("trace")));
    Texts lines;
    for (std::string line; std::getline(text, line);) {
        lines.push_back(line.compare(0, 6, "start ") == 0 ? line.substr(0, line.rfind(' ')) : line);
    }
    return lines;
}

std::string ManagerTest::Log() const
{
    return ReadFile(tree_.Path("log"));
}

int ManagerTest::Count(const std::string& line) const
{
    const Texts trace = Trace();
    return static_cast<int>(std::count(trace.begin(), trace.end(), line));
}

int ManagerTest::Position(const std::string& line) const
{
    const Texts trace = Trace();
    const auto found = std::find(trace.begin(), trace.end(), line);
    EXPECT_NE(found, trace.end()) << line << " is not in the trace";
    return static_cast<int>(found - trace.begin());
}

void ManagerTest::ExpectOrder(const std::string& first, const std::string& second) const
{
    EXPECT_LT(Position(first), Position(second)) << first << " does not come before " << second;
}

pid_t ManagerTest::ProcessOf(const std::string& name) const
{
    const std::string text = ReadFile(tree_.Path("trace"));
    const std::string begin = "start " + name + " ";
    const std::size_t at = text.rfind(begin);
    return at == std::string::npos ? -1 : std::stoi(text.substr(at + begin.size()));
}

std::map<pid_t, char> ManagerTest::Children() const
{
    std::map<pid_t, char> children;
    std::error_code gone;
    for (const auto& entry : std::filesystem::directory_iterator("/proc")) {
        const std::string stat = ReadFile((entry.path() / "stat").string());
        const std::size_t behindName = stat.rfind(") ");
        if (behindName == std::string::npos) {
            continue;
        }
        std::istringstream fields(stat.substr(behindName + 2));
        char state = 0;
        pid_t parent = 0;
        fields >> state >> parent;
        if (parent == manager_) {
            children[std::stoi(stat)] = state;
        }
    }
    return children;
}

} // namespace process_manager_test
