#include "tool/simulation/simulation.h"

#include <algorithm>
#include <map>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/random_seed.h"
#include "tool/library/log_collector.h"

namespace {

using tool::Milliseconds;
using tool::RequestKind;
using tool::Step;
using tool::TimeLine;
using tool::Waits;

using Names = std::vector<std::string>;
using Times = std::map<std::string, Milliseconds>;

tool::SimulationSettings WithTimes(const Times& times)
{
    tool::SimulationSettings settings;
    settings.duration = [times](const std::string& name) { return times.at(name); };
    return settings;
}

TimeLine RunWaits(const Waits& waits, const tool::SimulationSettings& settings)
{
    DependGraph graph;
    graph.Update(waits);
    return tool::RunTimeLine(graph, tool::ViewOf(waits), settings);
}

// "net 0-10 +5": start, end, slack; "*" behind a critical one, "!" behind a failed one.
Names Lines(const TimeLine& line)
{
    Names lines;
    for (const Step& step : line.steps) {
        lines.push_back(step.name + " " + std::to_string(step.start) + "-" + std::to_string(step.end) + " +" +
                        std::to_string(step.slack) + (step.isCritical ? " *" : "") +
                        (step.isFailed ? " !" : ""));
    }
    return lines;
}

Names CriticalNames(const TimeLine& line)
{
    Names names;
    for (const std::size_t step : line.critical) {
        names.push_back(line.steps[step].name);
    }
    return names;
}

const Waits kDiamond = {
    {"disk", {}}, {"net", {"disk"}}, {"db", {"disk"}}, {"web", {"net", "db"}}, {"log", {}}};
const Times kDiamondTimes = {{"disk", 10}, {"net", 20}, {"db", 50}, {"web", 5}, {"log", 7}};

TEST(SimulationTest, EachStartsWhenTheLastOfItsDependenciesIsDone)
{
    const TimeLine line = RunWaits(kDiamond, WithTimes(kDiamondTimes));

    EXPECT_EQ(Lines(line),
              (Names{"disk 0-10 +0 *", "log 0-7 +58", "db 10-60 +0 *", "net 10-30 +30", "web 60-65 +0 *"}));
    EXPECT_EQ(line.makespan, 65U);
    EXPECT_EQ(CriticalNames(line), (Names{"disk", "db", "web"}));
    EXPECT_EQ(line.mostAtATime, 2U);
    EXPECT_TRUE(line.neverHandedOut.empty());
}

TEST(SimulationTest, WithOneJobTheyRunOneAfterTheOther)
{
    tool::SimulationSettings settings = WithTimes(kDiamondTimes);
    settings.jobs = 1;

    const TimeLine line = RunWaits(kDiamond, settings);

    EXPECT_EQ(Lines(line), (Names{"disk 0-10 +0 *", "log 10-17 +0 *", "db 17-67 +0 *", "net 67-87 +0 *",
                                  "web 87-92 +0 *"}));
    EXPECT_EQ(line.mostAtATime, 1U);
    EXPECT_TRUE(line.steps[1].isHeldByJob);
    EXPECT_EQ(line.steps[1].ready, 0U);
    EXPECT_FALSE(line.steps[4].isHeldByJob);
}

TEST(SimulationTest, WithTwoJobsTheFirstFreeOneIsTaken)
{
    tool::SimulationSettings settings = WithTimes({{"a", 4}, {"b", 6}, {"c", 10}, {"d", 3}});
    settings.jobs = 2;

    const TimeLine line = RunWaits({{"a", {}}, {"b", {}}, {"c", {}}, {"d", {"a"}}}, settings);

    EXPECT_EQ(Lines(line), (Names{"a 0-4 +0 *", "b 0-6 +5", "c 4-14 +0 *", "d 6-9 +5"}));
    EXPECT_EQ(line.steps[2].heldBy, 0U);
    EXPECT_EQ(line.steps[3].heldBy, 1U);
    EXPECT_EQ(line.steps[3].ready, 4U);
}

TEST(SimulationTest, WhoWaitsForAFailedOneNeverStarts)
{
    tool::SimulationSettings settings = WithTimes(kDiamondTimes);
    settings.failing = {"db"};

    const TimeLine line = RunWaits(kDiamond, settings);

    EXPECT_EQ(Lines(line), (Names{"disk 0-10 +0 *", "log 0-7 +53", "db 10-60 +0 * !", "net 10-30 +30"}));
    EXPECT_EQ(line.neverHandedOut, Names{"web"});
}

TEST(SimulationTest, AFailedOneFreesItsJob)
{
    tool::SimulationSettings settings = WithTimes({{"a", 4}, {"b", 6}, {"c", 1}});
    settings.jobs = 1;
    settings.failing = {"a"};

    const TimeLine line = RunWaits({{"a", {}}, {"b", {}}, {"c", {"a"}}}, settings);

    EXPECT_EQ(Lines(line), (Names{"a 0-4 +0 * !", "b 4-10 +0 *"}));
    EXPECT_EQ(line.neverHandedOut, Names{"c"});
}

TEST(SimulationTest, StartsThatTakeNoTimeAreAllOverAtOnce)
{
    const TimeLine line =
        RunWaits({{"a", {}}, {"b", {"a"}}, {"c", {"b"}}}, WithTimes({{"a", 0}, {"b", 0}, {"c", 0}}));

    EXPECT_EQ(Lines(line), (Names{"a 0-0 +0 *", "b 0-0 +0", "c 0-0 +0"}));
    EXPECT_EQ(line.makespan, 0U);
}

TEST(SimulationTest, AnEmptyRequestTakesNoTime)
{
    const TimeLine line = RunWaits({}, WithTimes({}));

    EXPECT_TRUE(line.steps.empty());
    EXPECT_EQ(line.makespan, 0U);
    EXPECT_TRUE(line.critical.empty());
}

TEST(SimulationTest, TimesAreAddedWithoutOverflow)
{
    const Milliseconds most = 4294967295U;
    const TimeLine line = RunWaits({{"a", {}}, {"b", {"a"}}}, WithTimes({{"a", most}, {"b", most}}));

    EXPECT_EQ(line.makespan, 8589934590U);
}

// Plain: time goes on by single milliseconds, and what is ready is asked of a graph of its own each time.
struct PlainTimes {
    Times start;
    Times end;
    Milliseconds makespan = 0;
};

PlainTimes PlainRun(const Waits& waits, const Times& times, std::size_t jobs, const std::string& failing)
{
    PlainTimes plain;
    Names queue;
    std::set<std::string> queued;
    std::set<std::string> done;
    const auto isReady = [&](const std::string& name) {
        const std::set<std::string>& needs = waits.at(name);
        return std::all_of(needs.begin(), needs.end(),
                           [&](const auto& need) { return done.count(need) != 0; });
    };
    std::size_t isOver = 0;
    for (Milliseconds now = 0; isOver < plain.start.size() || now == 0 || !queue.empty(); ++now) {
        isOver = 0;
        for (const auto& [name, end] : plain.end) {
            isOver += end <= now ? 1U : 0U;
            if (end == now && name != failing) {
                done.insert(name);
            }
        }
        for (const auto& [name, needs] : waits) {
            if (queued.count(name) == 0 && isReady(name)) {
                queued.insert(name);
                queue.push_back(name);
            }
        }
        std::size_t underWay = plain.start.size() - isOver;
        while (!queue.empty() && (jobs == 0 || underWay < jobs)) {
            plain.start[queue.front()] = now;
            plain.end[queue.front()] = now + times.at(queue.front());
            plain.makespan = std::max(plain.makespan, plain.end[queue.front()]);
            queue.erase(queue.begin());
            ++underWay;
        }
    }
    return plain;
}

// Plain: how much longer one may take without a later end, by trying.
Milliseconds PlainSlack(const Waits& waits, Times times, const std::string& name, Milliseconds makespan)
{
    Milliseconds slack = 0;
    do {
        ++slack;
        ++times[name];
    } while (PlainRun(waits, times, 0, "").makespan == makespan);
    return slack - 1;
}

struct Case {
    Waits waits;
    Times times;
    std::size_t jobs = 0;
    std::string failing;
};

// No times of zero: the plain model does one thing in a millisecond.
Case RandomCase(test_support::Random& random)
{
    Case made;
    const std::size_t size = 1 + random.Below(9);
    for (std::size_t i = 0; i < size; ++i) {
        const std::string name(1, static_cast<char>('a' + (i * 7) % 26));
        std::set<std::string> needs;
        for (const auto& [other, others] : made.waits) {
            if (random.OneIn(3)) {
                needs.insert(other);
            }
        }
        made.waits[name] = needs;
        made.times[name] = 1 + random.Below(6);
    }
    made.jobs = random.Below(4);
    made.failing = random.OneIn(3) ? made.waits.begin()->first : "";
    return made;
}

void ExpectCriticalChain(const TimeLine& line, const Waits& waits)
{
    ASSERT_FALSE(line.critical.empty());
    EXPECT_EQ(line.steps[line.critical.front()].start, 0U);
    EXPECT_EQ(line.steps[line.critical.back()].end, line.makespan);
    for (std::size_t i = 0; i + 1 < line.critical.size(); ++i) {
        const Step& before = line.steps[line.critical[i]];
        const Step& step = line.steps[line.critical[i + 1]];
        EXPECT_EQ(before.end, step.start);
        EXPECT_EQ(step.heldBy, line.critical[i]);
        EXPECT_EQ(step.slack, 0U);
        EXPECT_TRUE(step.isHeldByJob || waits.at(step.name).count(before.name) != 0);
    }
}

TEST(SimulationTest, RandomGraphsAgreeWithThePlainModel)
{
    test_support::Random random;
    for (int round = 0; round < 500; ++round) {
        SCOPED_TRACE(round);
        const Case one = RandomCase(random);
        tool::SimulationSettings settings = WithTimes(one.times);
        settings.jobs = one.jobs;
        settings.failing = {one.failing};

        const TimeLine line = RunWaits(one.waits, settings);

        const PlainTimes plain = PlainRun(one.waits, one.times, one.jobs, one.failing);
        EXPECT_EQ(line.steps.size(), plain.start.size());
        EXPECT_EQ(line.steps.size() + line.neverHandedOut.size(), one.waits.size());
        EXPECT_EQ(line.makespan, plain.makespan);
        for (const Step& step : line.steps) {
            EXPECT_EQ(step.start, plain.start.at(step.name)) << step.name;
            EXPECT_EQ(step.end, plain.end.at(step.name)) << step.name;
            if (one.jobs == 0 && one.failing.empty()) {
                EXPECT_EQ(step.slack, PlainSlack(one.waits, one.times, step.name, plain.makespan))
                    << step.name;
            }
        }
        ExpectCriticalChain(line, one.waits);
    }
}

// What the device's loop does, without any foresight: the graph is asked after the pops of each moment.
Times AskedAtEveryMoment(const Waits& waits, const Times& times)
{
    const tool::LogCollector unheard;
    DependGraph graph;
    graph.Update(waits);
    Times ends;
    std::multimap<Milliseconds, std::string> running;
    Milliseconds now = 0;
    while (!graph.IsEmpty()) {
        for (const std::string& name : graph.GetNoDependVertices()) {
            running.emplace(now + times.at(name), name);
        }
        if (running.empty()) {
            break;
        }
        now = running.begin()->first;
        const auto over = running.equal_range(now);
        for (auto one = over.first; one != over.second; ++one) {
            EXPECT_TRUE(graph.Pop(one->second));
            ends[one->second] = now;
        }
        running.erase(over.first, over.second);
    }
    return ends;
}

TEST(SimulationTest, RandomGraphsAgreeWithALoopThatAsksTheGraphAtEveryMoment)
{
    test_support::Random random;
    for (int round = 0; round < 300; ++round) {
        SCOPED_TRACE(round);
        Case one = RandomCase(random);
        for (auto& [name, time] : one.times) {
            time = random.Below(4); // zeros, too
        }
        if (random.OneIn(3)) {
            one.waits.begin()->second.insert("missing"); // is no key: nothing can be foreseen
            one.times["missing"] = 2;
        }

        const TimeLine line = RunWaits(one.waits, WithTimes(one.times));

        const Times ends = AskedAtEveryMoment(one.waits, one.times);
        for (const auto& [name, end] : ends) {
            const auto step =
                std::find_if(line.steps.begin(), line.steps.end(),
                             [name = name](const Step& candidate) { return candidate.name == name; });
            ASSERT_NE(step, line.steps.end()) << name;
            EXPECT_EQ(step->end, end) << name;
        }
    }
}

ParseAndDepend WithTable(const ParseAndDepend::DependsMap& table)
{
    ParseAndDepend library;
    library.SetApplicationDependsMap(table);
    return library;
}

TEST(SimulationTest, ARequestRunsWithTheLibrarysOwnEdges)
{
    const ParseAndDepend library =
        WithTable({{"web", {"net", "cam_<0-3>"}}, {"net", {"disk"}}, {"disk", {}}, {"cam_<0-3>", {"net"}}});
    tool::SimulationSettings settings;
    settings.duration = [](const std::string&) { return Milliseconds{10}; };

    // Only what stands in a dependency list of a requested one is pulled in, and waits for nothing.
    const TimeLine start = tool::Simulate(library, RequestKind::START, {"web", "cam_2"}, settings);
    EXPECT_EQ(Lines(start),
              (Names{"cam_<0-3> 0-10 +0", "net 0-10 +0 *", "cam_2 10-20 +0 *", "web 10-20 +0"}));

    const TimeLine stop = tool::Simulate(library, RequestKind::STOP, {"disk", "web", "net"}, settings);
    EXPECT_EQ(Lines(stop), (Names{"web 0-10 +0 *", "net 10-20 +0 *", "disk 20-30 +0 *"}));
}

TEST(SimulationTest, ACycleHasNoTimeLine)
{
    const ParseAndDepend library = WithTable({{"a", {"b"}}, {"b", {"a"}}});
    tool::SimulationSettings settings;
    settings.duration = [](const std::string&) { return Milliseconds{10}; };

    EXPECT_TRUE(tool::Simulate(library, RequestKind::START, {"a", "b"}, settings).steps.empty());
}

} // namespace
