#include "tool/library/table_lookup.h"

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <unordered_map>

#include "startplan/depend_graph.h"
#include "tool/library/log_collector.h"

namespace tool {

namespace {

using Table = ParseAndDepend::DependsMap;
using Entry = Table::value_type;

constexpr std::string_view kOutsideLine =
    "ParseAndDepend GetStartGraph  %s depend  %s is not in startAppNames";

// A table with the same keys, each of which depends on a name that tells its place. No request holds such
// a name: every other one ends at its first NUL.
Table Marked(const Table& table)
{
    Table marked = table;
    std::size_t place = 0;
    for (auto& [key, depends] : marked) {
        depends = {std::to_string(place++) + '\0'};
    }
    return marked;
}

// The look-up takes the first match in the table's order, which a copy need not keep.
bool HaveSameOrder(const Table& a, const Table& b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](const Entry& one, const Entry& other) { return one.first == other.first; });
}

std::vector<const Entry*> AskOneByOne(const ParseAndDepend& library, const std::vector<std::string>& names)
{
    const LogCollector unheard;
    std::vector<const Entry*> entries;
    for (const std::string& name : names) {
        const auto found = library.GetAppFromDependsMap(name);
        entries.push_back(found == library.GetApplicationDependsMap().end() ? nullptr : &*found);
    }
    return entries;
}

} // namespace

// One start request for all names: the library looks them up by an index, and its warnings about
// dependencies that are not requested tell which entry it has found for each.
std::vector<const Entry*> EntriesServing(const ParseAndDepend& library, const std::vector<std::string>& names)
{
    const Table& table = library.GetApplicationDependsMap();
    ParseAndDepend asked;
    asked.SetApplicationDependsMap(Marked(table));
    if (!HaveSameOrder(table, asked.GetApplicationDependsMap())) {
        return AskOneByOne(library, names);
    }
    std::vector<const Entry*> entries;
    for (const Entry& entry : table) {
        entries.push_back(&entry);
    }
    DependGraph graph;
    LogCollector log;
    asked.GetStartGraph(names, graph);
    std::unordered_map<std::string, const Entry*> serving;
    for (const LogLine& line : log.Take()) {
        if (line.format == kOutsideLine && line.arguments.size() == 2) {
            serving[line.arguments[0]] = entries.at(std::stoul(line.arguments[1]));
        }
    }
    std::vector<const Entry*> found;
    for (const std::string& name : names) {
        const auto one = serving.find(name);
        found.push_back(one == serving.end() ? nullptr : one->second);
    }
    return found;
}

} // namespace tool
