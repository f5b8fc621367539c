#include "tool/check/check_requests.h"

#include <algorithm>
#include <set>
#include <utility>

#include <fmt/format.h>

#include "startplan/result_codes.h"
#include "tool/rules/rules_requests.h"
#include "tool/text/name_list.h"
#include "tool/text/printable.h"
#include "tool/text/suggest.h"

namespace tool {

namespace {

std::string QuotedList(const std::vector<std::string>& names)
{
    std::string text;
    for (std::size_t i = 0; i < names.size(); ++i) {
        const char* between = i == 0 ? "" : i + 1 == names.size() ? " and " : ", ";
        text += between + Quote(names[i]);
    }
    return text;
}

class RequestCheck {
public:
    RequestCheck(const Configuration& configuration, const RequestToCheck& request, Findings& findings)
        : configuration_(configuration), findings_(findings),
          plan_(MakePlan(configuration, request.kind, request.names)),
          isStart_(request.kind == RequestKind::START)
    {}

    void Run()
    {
        for (const std::string& name : plan_.notFound) {
            AddUnknown(name);
        }
        for (const PulledIn& one : plan_.pulledIn) {
            if (configuration_.library.GetApplicationDependsMap().count(one.name) == 0) {
                AddPulledInUnknown(one);
            } else if (!one.notAwaited.empty()) {
                AddPulledIn(one);
            }
        }
        for (const LeftRunning& one : plan_.leftRunning) {
            AddLeftRunning(one);
        }
        if (plan_.result != PARSE_ERR_GRAPH_CYCLE) {
            AddStalls();
        } else if (plan_.cycles.empty()) {
            AddMistakenCycles();
        } else {
            AddCycles();
        }
    }

private:
    const char* Started() const { return isStart_ ? "started" : "stopped"; }

    // The entry by which the library serves the name; null for none.
    const SourceEntry* EntryServing(const std::string& name) const
    {
        const LogCollector unheard;
        const auto found = configuration_.library.GetAppFromDependsMap(name);
        if (found == configuration_.library.GetApplicationDependsMap().end()) {
            return nullptr;
        }
        const std::vector<std::size_t>& entries = configuration_.tree.EntriesNamed(found->first);
        return entries.empty() ? nullptr : &configuration_.tree.Entries()[entries.back()];
    }

    // At the name `dependency` in the "depends" of the entry that serves `name`; empty for the entry itself.
    Finding At(const Rule& rule, const std::string& name, const std::string& dependency) const
    {
        Finding finding;
        finding.rule = &rule;
        finding.position = {configuration_.tree.Visits()[0].path, {}};
        if (const SourceEntry* entry = EntryServing(name)) {
            finding.position = dependency.empty()
                                   ? configuration_.tree.PositionOf(*entry)
                                   : configuration_.tree.PositionOfDependency(*entry, dependency);
            finding.visit = entry->visit;
        }
        return finding;
    }

    void AddUnknown(const std::string& name)
    {
        Finding finding = At(kUnknownName, name, "");
        finding.effect = fmt::format("the library leaves it out of the request: it is not {}", Started());
        const std::vector<std::size_t>& entries = configuration_.tree.EntriesNamed(name);
        if (!entries.empty()) {
            const SourceEntry& entry = configuration_.tree.Entries()[entries.back()];
            finding.position = configuration_.tree.PositionOf(entry);
            finding.length = LengthOf(configuration_.tree.FileOf(entry), entry.key);
            finding.visit = entry.visit;
            finding.message = fmt::format("{} is to be {}, but the library does not keep this entry",
                                          Quote(name), Started());
            finding.help = "mend the entry";
            findings_.Add(std::move(finding));
            return;
        }
        std::vector<std::string> names;
        for (const auto& [known, app] : configuration_.appByName) {
            names.push_back(known);
        }
        const std::string nearest = Nearest(name, names);
        finding.message =
            fmt::format("{} is to be {}, but no application has that name", Quote(name), Started());
        finding.help = nearest.empty() ? "correct the name, or configure the application"
                                       : fmt::format("did you mean {}?", Quote(nearest));
        findings_.Add(std::move(finding));
    }

    void AddPulledIn(const PulledIn& one)
    {
        Finding finding = At(kOneLevelClosure, one.neededBy.front(), one.name);
        finding.length = Width(Printable(one.name));
        finding.message =
            fmt::format("starting {} pulls in {}, which does not wait for {}", Quote(one.neededBy.front()),
                        Quote(one.name), QuotedList(one.notAwaited));
        finding.effect =
            fmt::format("{} is started at once, and what it depends on later or not at all", Quote(one.name));
        finding.help = fmt::format("start {} as well, and all that it depends on", Quote(one.name));
        findings_.Add(std::move(finding));
    }

    // Its entry was there when the library looked for missing dependencies, and was dropped then.
    void AddPulledInUnknown(const PulledIn& one)
    {
        Finding finding = At(kUnknownName, one.neededBy.front(), one.name);
        finding.length = Width(Printable(one.name));
        finding.message = fmt::format("starting {} pulls in {}, which is not configured",
                                      Quote(one.neededBy.front()), Quote(one.name));
        finding.effect = fmt::format(
            "the library hands {} out to be started though nothing is known about it", Quote(one.name));
        finding.help = fmt::format("configure {}, or do not depend on it", Quote(one.name));
        findings_.Add(std::move(finding));
    }

    void AddLeftRunning(const LeftRunning& one)
    {
        const std::string needed = one.dependsOn.empty() ? std::string() : one.dependsOn.front();
        Finding finding = At(kDependantLeftRunning, one.name, needed);
        finding.message = fmt::format("{} is left running though {}, which it depends on, is stopped",
                                      Quote(one.name), Quote(needed));
        finding.effect = fmt::format("{} runs on without what it needs", Quote(one.name));
        finding.help = fmt::format("stop {} as well", Quote(one.name));
        findings_.Add(std::move(finding));
    }

    void AddCycles()
    {
        const std::string effect = fmt::format("nothing of the whole request is {}", Started());
        for (const Cycle& cycle : plan_.cycles) {
            std::vector<std::string> way = cycle.shortest;
            // Of a stop the members wait the other way round; "depends" is what stands in the files.
            if (!isStart_) {
                std::reverse(way.begin() + 1, way.end());
            }
            way.push_back(way.front());
            Finding finding = At(kRequestCycle, way[0], way[1]);
            finding.message =
                fmt::format("the {} request cannot be served: {}", isStart_ ? "start" : "stop", Chain(way));
            finding.effect = effect;
            finding.help = "break the cycle";
            for (std::size_t i = 1; i + 1 < way.size(); ++i) {
                finding.related.push_back(
                    {At(kRequestCycle, way[i], way[i + 1]).position,
                     fmt::format("{} depends on {}", Quote(way[i]), Quote(way[i + 1]))});
            }
            findings_.Add(std::move(finding));
        }
    }

    static std::string Chain(const std::vector<std::string>& way)
    {
        std::string text;
        for (const std::string& name : way) {
            text += fmt::format("{}{}", text.empty() ? "" : " -> ", Printable(name));
        }
        return text;
    }

    void AddStalls()
    {
        std::set<std::string> done;
        for (const std::vector<std::string>& round : plan_.rounds) {
            done.insert(round.begin(), round.end());
        }
        for (const std::string& name : plan_.neverHandedOut) {
            const std::string blocker =
                FirstOf(name, [&done](const std::string& needed) { return done.count(needed) == 0; });
            Finding finding = StallOf(name, blocker);
            finding.effect = "the process manager waits for ever";
            findings_.Add(std::move(finding));
        }
    }

    // Whether a request for a name that is not configured looks like a cycle to the library or only stalls
    // depends on the order of a hash table.
    void AddMistakenCycles()
    {
        const std::set<std::string> missing(plan_.notFound.begin(), plan_.notFound.end());
        for (const std::string& name : std::set<std::string>(plan_.names.begin(), plan_.names.end())) {
            const std::string blocker =
                FirstOf(name, [&missing](const std::string& needed) { return missing.count(needed) != 0; });
            if (blocker.empty()) {
                continue;
            }
            Finding finding = StallOf(name, blocker);
            finding.effect = "the library takes this for a cycle: nothing of the whole request is started";
            findings_.Add(std::move(finding));
        }
    }

    Finding StallOf(const std::string& name, const std::string& blocker) const
    {
        Finding finding = At(kStall, name, blocker);
        finding.length = Width(Printable(blocker));
        finding.message =
            fmt::format("{} is never {}: it waits for {}", Quote(name), Started(), Quote(blocker));
        finding.help = fmt::format("configure {}, or do not depend on it", Quote(blocker));
        return finding;
    }

    // The first dependency of that name for which the condition holds; empty for none.
    template <class Condition>
    std::string FirstOf(const std::string& name, Condition condition) const
    {
        const LogCollector unheard;
        const auto found = configuration_.library.GetAppFromDependsMap(name);
        if (found == configuration_.library.GetApplicationDependsMap().end()) {
            return "";
        }
        const auto first = std::find_if(found->second.begin(), found->second.end(), condition);
        return first == found->second.end() ? "" : *first;
    }

    const Configuration& configuration_;
    Findings& findings_;
    RequestPlan plan_;
    bool isStart_;
};

} // namespace

void CheckRequests(const Configuration& configuration, const std::vector<RequestToCheck>& requests,
                   Findings& findings)
{
    for (const RequestToCheck& request : requests) {
        RequestCheck(configuration, request, findings).Run();
    }
}

} // namespace tool
