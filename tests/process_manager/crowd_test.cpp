// A thousand programs in a random graph start and stop in a correct order.
#include <algorithm>
#include <map>
#include <random>

#include "tests/process_manager/manager_test.h"

namespace process_manager_test {
namespace {

#ifdef __SANITIZE_THREAD__
constexpr int kPrograms = 200; // a fork costs many times as much there
#else
constexpr int kPrograms = 1000;
#endif

using CrowdTest = ManagerTest;

TEST_F(CrowdTest, AThousandProgramsStartAndStopInACorrectOrder)
{
    const unsigned seed = std::random_device()();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    std::vector<std::string> names;
    for (int i = 0; i < kPrograms; ++i) {
        names.push_back("p" + std::to_string(i) + "_"); // no name is the beginning of another one
    }
    std::shuffle(names.begin(), names.end(), random);
    std::map<std::string, std::vector<std::string>> depends;
    for (std::size_t i = 0; i < names.size(); ++i) {
        const std::size_t count = std::min<std::size_t>(i, random() % 4);
        for (std::size_t k = 0; k < count; ++k) {
            depends[names[i]].push_back(names[random() % i]);
        }
        Add(names[i], depends[names[i]], {"ready"});
    }
    Run({"--all"});
    WaitForLog("info started: ");

    EXPECT_EQ(EndOnceStarted(), 0);

    std::map<std::string, std::size_t> position;
    const Texts trace = Trace();
    EXPECT_EQ(trace.size(), 3U * kPrograms);
    for (std::size_t i = 0; i < trace.size(); ++i) {
        EXPECT_TRUE(position.emplace(trace[i], i).second) << trace[i] << " twice";
    }
    for (const auto& [name, needed] : depends) {
        for (const std::string& below : needed) {
            EXPECT_LT(position.at("ready " + below), position.at("start " + name));
            EXPECT_LT(position.at("stop " + name), position.at("stop " + below));
        }
    }
}

} // namespace
} // namespace process_manager_test
