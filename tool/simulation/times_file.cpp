#include "tool/simulation/times_file.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <utility>

#include <fmt/format.h>

#include "startplan/parse_and_depend.h"
#include "tool/library/log_collector.h"
#include "tool/text/failure.h"
#include "tool/text/printable.h"

namespace tool {

namespace {

[[noreturn]] void FailAt(const Position& position, const std::string& reason)
{
    throw Failure(fmt::format("{}: {}", Printable(ToText(position)), Printable(reason)));
}

TimesFile::Entry ReadEntry(const SourceFile& file, const NodeUse& key, const NodeUse& value)
{
    TimesFile::Entry entry;
    entry.name = file.Text(key);
    entry.position = {file.Path(), key.mark};
    entry.isPattern = ParseAndDepend().IsDynamicPara(entry.name);
    const auto time = ReadMilliseconds(file.Text(value));
    if (!time) {
        const Position position{file.Path(), value.mark};
        FailAt(position, file.Kind(value) == NodeKind::SCALAR
                             ? fmt::format("\"{}\" is no time in whole milliseconds up to {}",
                                           file.Text(value), std::numeric_limits<std::uint32_t>::max())
                             : "a list or mapping where a time in milliseconds is expected");
    }
    entry.time = *time;
    return entry;
}

} // namespace

TimesFile TimesFile::Read(const std::string& path)
{
    const SourceFile file = SourceFile::Read(path);
    if (!file.IsLoaded() && file.State() != FileState::EMPTY) {
        FailAt({path, file.ErrorMark()}, fmt::format("{}; the times cannot be read", file.Error()));
    }
    if (!file.IsLoaded() || file.Kind(file.Root()) != NodeKind::MAPPING) {
        FailAt({path, {}}, "no mapping from names to milliseconds");
    }
    TimesFile times;
    const NodeUses pairs = file.Pairs(file.Root());
    for (std::size_t i = 0; i < pairs.size; i += 2) {
        Entry entry = ReadEntry(file, pairs[i], pairs[i + 1]);
        const auto [same, isNew] = times.exact_.emplace(entry.name, times.entries_.size());
        if (!isNew) {
            FailAt(entry.position, fmt::format("\"{}\" has a time already, in line {}", entry.name,
                                               times.entries_[same->second].position.mark.line));
        }
        if (entry.isPattern) {
            times.patterns_.push_back(times.entries_.size());
        }
        times.entries_.push_back(std::move(entry));
    }
    return times;
}

std::optional<Milliseconds> TimesFile::Find(const std::string& name) const
{
    const auto exact = exact_.find(name);
    if (exact != exact_.end()) {
        return entries_[exact->second].time;
    }
    const LogCollector unheard;
    const ParseAndDepend library;
    for (const std::size_t pattern : patterns_) {
        if (library.IsDynamicParaMatch(entries_[pattern].name, name)) {
            return entries_[pattern].time;
        }
    }
    return std::nullopt;
}

std::optional<Milliseconds> ReadMilliseconds(std::string_view text)
{
    constexpr Milliseconds kMost = std::numeric_limits<std::uint32_t>::max();
    if (text.empty() || text.find_first_not_of("0123456789") != std::string_view::npos) {
        return std::nullopt;
    }
    Milliseconds value = 0;
    for (const char digit : text) {
        value = std::min(value * 10 + static_cast<Milliseconds>(digit - '0'), kMost + 1);
    }
    return value > kMost ? std::nullopt : std::optional<Milliseconds>(value);
}

} // namespace tool
