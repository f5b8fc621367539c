#include "bench/generate_tree.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <random>
#include <sstream>
#include <stdexcept>
#include <utility>

namespace generate {

namespace {

constexpr std::array<const char*, 8> kRoles = {
    "cam", "radar", "lidar_fusion", "localisation_map", "plan", "can_gateway", "hmi_display", "log",
};
constexpr std::array<const char*, 4> kPolicies = {"no", "on-failure", "on-forever", "on-until-succeed"};
constexpr std::array<const char*, 3> kPermissions = {"ro", "rw", "alloc"};
// Accounts that every system has.
constexpr std::array<const char*, 2> kUsers = {"root", "daemon"};
constexpr std::array<const char*, 2> kGroups = {"root", "daemon"};
constexpr std::size_t kOneInSoManyByName = 16;
constexpr std::size_t kChildrenOfAWalkedFile = 4;

// The standard's distributions differ from library to library; this does not.
std::size_t Below(std::mt19937& random, std::size_t limit)
{
    return random() % limit;
}

const char* Flag(std::mt19937& random)
{
    return Below(random, 2) == 0 ? "false" : "true";
}

// `count` different numbers below `limit`, ascending.
std::set<std::size_t> Pick(std::mt19937& random, std::size_t count, std::size_t limit)
{
    std::set<std::size_t> picked;
    while (picked.size() < std::min(count, limit)) {
        picked.insert(Below(random, limit));
    }
    return picked;
}

void WriteFile(const std::string& path, const std::string& content)
{
    std::ofstream file(path, std::ios::binary);
    file << content;
    if (!file.flush()) {
        throw std::runtime_error("cannot write " + path);
    }
}

std::string WalkedPath(const std::string& folder, std::size_t number)
{
    return folder + (number == 0 ? "/top.yaml" : "/walked_" + std::to_string(number) + ".yaml");
}

std::string StartupPath(const std::string& folder, std::size_t number)
{
    return folder + "/startup_" + std::to_string(number) + ".yaml";
}

// Writes a walked file and all below it, in the order in which the walk reads them. Startup files are
// handed to the walked files in turn.
void WriteWalked(const std::string& folder, const TreeShape& shape, std::size_t number, Tree& tree)
{
    const std::string path = WalkedPath(folder, number);
    tree.walkedFiles.push_back(path);
    std::ostringstream content;
    content << "version: 1\n";
    if (number < shape.startupFiles) {
        content << "startup_path_list:\n";
    }
    for (std::size_t i = number; i < shape.startupFiles; i += shape.walkedFiles) {
        tree.startupFiles.push_back(StartupPath(folder, i));
        content << "  - " << tree.startupFiles.back() << "\n";
    }
    const std::size_t first = number * kChildrenOfAWalkedFile + 1;
    const std::size_t end = std::min(first + kChildrenOfAWalkedFile, shape.walkedFiles);
    if (first < end) {
        content << "sub_startup:\n";
    }
    for (std::size_t i = first; i < end; ++i) {
        content << "  - " << WalkedPath(folder, i) << "\n";
    }
    WriteFile(path, content.str());
    for (std::size_t i = first; i < end; ++i) { // as deep as the logarithm of the number of files
        WriteWalked(folder, shape, i, tree);
    }
}

void WriteOwner(std::ostream& out, std::size_t number, std::mt19937& random, Tree& tree)
{
    if (number % kOneInSoManyByName != 0) {
        out << "  uid: " << 1000 + Below(random, 100) << "\n";
        out << "  gid: " << 1000 + Below(random, 100) << "\n";
        return;
    }
    tree.userNames.emplace_back(kUsers[Below(random, kUsers.size())]);
    tree.groupNames.emplace_back(kGroups[Below(random, kGroups.size())]);
    out << "  user_name: " << tree.userNames.back() << "\n";
    out << "  group_name: " << tree.groupNames.back() << "\n";
}

void WriteDepends(std::ostream& out, std::size_t number, std::size_t count, bool missing,
                  std::mt19937& random)
{
    out << "  depends: [";
    const char* separator = "";
    for (const std::size_t dependency : Pick(random, count, number)) {
        out << separator << (missing ? "absent_" : "") << ApplicationName(dependency);
        separator = ", ";
    }
    out << "]\n";
}

void WriteEntry(std::ostream& out, std::size_t number, std::size_t depends, const TreeShape& shape,
                std::mt19937& random, Tree& tree)
{
    const std::string name = ApplicationName(number);
    tree.names.push_back(name);
    out << name << ":\n";
    out << "  bin_path: /usr/bin/" << name << "\n";
    WriteOwner(out, number, random, tree);
    out << "  restart: " << kPolicies[Below(random, kPolicies.size())] << "\n";
    out << "  term_time_out: " << 1000 + Below(random, 60) * 1000 << "\n";
    out << "  is_force_term: " << Flag(random) << "\n";
    out << "  is_ros_node: " << Flag(random) << "\n";
    out << "  is_reporting: " << Flag(random) << "\n";
    out << "  is_auto_boot: " << Flag(random) << "\n";
    out << "  set_rt_prio: " << Flag(random) << "\n";
    WriteDepends(out, number, depends, shape.allMissing, random);
    out << "  arguments:\n    - --config=/etc/" << name << ".conf\n    - --level\n    - \""
        << Below(random, 5) << "\"\n";
    out << "  env:\n    LD_LIBRARY_PATH: /usr/lib/" << name << "\n    LOG_LEVEL: info\n";
    out << "  sharepool_groups: {frames: " << kPermissions[Below(random, kPermissions.size())]
        << ", objects: ro}\n";
    out << "  security_con: system_u:system_r:app_t\n";
    out << "  nice: " << static_cast<int>(Below(random, 40)) - 20 << "\n";
    out << "  cpuset: group" << Below(random, 4) << "\n";
    out << "  heart_beat: " << Flag(random) << "\n";
    out << "  heart_beat_interval: " << 500 + Below(random, 10) * 500 << "\n";
    out << "  startup_priority: " << Below(random, 256) << "\n";
    out << "  cgroup_path: {cpu: /sys/fs/cgroup/cpu/" << name << ", memory: /sys/fs/cgroup/memory/app}\n";
}

} // namespace

std::string ApplicationName(std::size_t number)
{
    std::string digits = std::to_string(number);
    digits.insert(0, digits.size() < 6 ? 6 - digits.size() : 0, '0');
    return std::string(kRoles[number % kRoles.size()]) + "_" + digits;
}

Tree WriteTree(const std::string& folder, const TreeShape& shape)
{
    Tree tree;
    tree.topLevel = WalkedPath(folder, 0);
    WriteWalked(folder, shape, 0, tree);

    std::mt19937 random(shape.seed);
    std::size_t number = 0;
    std::size_t dependencies = shape.dependencies;
    for (std::size_t file = 0; file < tree.startupFiles.size(); ++file) {
        const std::size_t end = shape.applications * (file + 1) / tree.startupFiles.size();
        std::ostringstream content;
        for (; number < end; ++number) {
            const std::size_t left = shape.applications - number;
            const std::size_t depends = std::min(number, (dependencies + left - 1) / left);
            WriteEntry(content, number, depends, shape, random, tree);
            dependencies -= depends;
        }
        WriteFile(tree.startupFiles[file], content.str());
    }
    return tree;
}

Table RandomTable(std::size_t applications, std::size_t each, std::uint32_t seed)
{
    std::mt19937 random(seed);
    Table table;
    for (std::size_t number = 0; number < applications; ++number) {
        std::set<std::string>& depends = table[ApplicationName(number)];
        for (const std::size_t dependency : Pick(random, each, number)) {
            depends.insert(ApplicationName(dependency));
        }
    }
    return table;
}

Table Chain(std::size_t applications)
{
    Table table;
    for (std::size_t number = 0; number < applications; ++number) {
        std::set<std::string>& depends = table[ApplicationName(number)];
        if (number > 0) {
            depends.insert(ApplicationName(number - 1));
        }
    }
    return table;
}

Table Wide(std::size_t applications)
{
    Table table;
    std::set<std::string> others;
    for (std::size_t number = 0; number + 1 < applications; ++number) {
        const std::string name = ApplicationName(number);
        others.insert(name);
        if (number == 0) {
            table[name];
        } else {
            table[name].insert(ApplicationName(0));
        }
    }
    table[ApplicationName(applications - 1)] = std::move(others);
    return table;
}

Table TableWithMissingNames(std::size_t applications, std::size_t each, std::uint32_t seed)
{
    Table table = RandomTable(applications, each, seed);
    for (auto& [name, depends] : table) {
        depends.insert("absent_" + name);
    }
    return table;
}

Table TableWithCycle(std::size_t applications, std::size_t each, std::uint32_t seed)
{
    Table table = RandomTable(applications, each, seed);
    table[ApplicationName(0)].insert(ApplicationName(applications - 1));
    return table;
}

} // namespace generate
