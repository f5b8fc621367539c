// Holds that the check and the library never disagree: over every tree of the cases and the sample tree, each
// thing that the library says is a finding, and no finding says what the library does not.
#include "tool/check/check.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include <fmt/format.h>
#include <gtest/gtest.h>

#include "startplan/depend_graph.h"
#include "startplan/parse_and_depend.h"
#include "startplan/result_codes.h"
#include "tool/plan/request_plan.h"
#include "tool/rules/rules.h"

namespace {

namespace fs = std::filesystem;
using tool::Configuration;
using tool::Finding;
using tool::LogLine;

struct CorpusTree {
    fs::path folder; // to be read from here
    std::string top;
    std::string replaceFile;
    std::string name;
};

std::vector<CorpusTree> Corpus()
{
    const fs::path source = STARTPLAN_SOURCE_DIR;
    std::vector<CorpusTree> corpus = {
        {source, "examples/vehicle/top.yaml", "examples/vehicle/replace.yaml", "vehicle"},
        {source, "examples/vehicle/top.yaml", "", "vehicle without replace data"}};
    for (const fs::directory_entry& one : fs::directory_iterator(source / "tests/tool/cases")) {
        if (!fs::exists(one.path() / "config/top.yaml")) {
            continue;
        }
        const std::string name = one.path().filename().string();
        corpus.push_back({one.path(), "config/top.yaml", "", name});
        if (fs::exists(one.path() / "config/replace.yaml")) {
            corpus.push_back(
                {one.path(), "config/top.yaml", "config/replace.yaml", name + " with replace data"});
        }
    }
    return corpus;
}

// What the library says by itself, without the command's own reading of the tree.
struct Verdict {
    tool::LogLines lines;
    std::uint32_t result = 0;
    std::vector<ApplicationManifest> apps;
    ParseAndDepend library;
    bool hasCycle = false;

    std::vector<const LogLine*> Lines(std::string_view format) const
    {
        std::vector<const LogLine*> found;
        for (const LogLine& line : lines) {
            if (line.format.find(format) != std::string_view::npos) {
                found.push_back(&line);
            }
        }
        return found;
    }
};

Verdict Ask(const CorpusTree& tree)
{
    Verdict verdict;
    tool::LogCollector log(true);
    std::map<std::string, std::string> replaceData;
    if (!tree.replaceFile.empty()) {
        verdict.library.ParseToReplaceData(PARAM_TYPE_YAML, tree.replaceFile, replaceData);
    }
    verdict.result = verdict.library.ParseYaml(PARAM_TYPE_YAML, tree.top, verdict.apps, replaceData);
    verdict.lines = log.Take();

    std::vector<std::string> names;
    for (const auto& [name, depends] : verdict.library.GetApplicationDependsMap()) {
        names.push_back(name);
    }
    std::map<std::string, std::set<std::string>> table;
    for (const auto& [name, depends] : verdict.library.GetApplicationDependsMap()) {
        // What is not in the table would look like a cycle or not by the order of a hash table.
        for (const std::string& dependency : depends) {
            if (verdict.library.GetApplicationDependsMap().count(dependency) != 0) {
                table[name].insert(dependency);
            }
        }
        table[name];
    }
    DependGraph graph;
    graph.Update(table);
    verdict.hasCycle = graph.HasCycle();
    return verdict;
}

// What the check says of it.
class Opinion {
public:
    explicit Opinion(std::vector<Finding> findings) : findings_(std::move(findings)) {}

    std::vector<const Finding*> Of(const std::string& rule) const
    {
        std::vector<const Finding*> found;
        for (const Finding& finding : findings_) {
            if (finding.rule->id == rule) {
                found.push_back(&finding);
            }
        }
        return found;
    }

    bool HasAnyOf(const std::vector<std::string>& rules) const
    {
        return std::any_of(rules.begin(), rules.end(),
                           [this](const std::string& rule) { return !Of(rule).empty(); });
    }

private:
    std::vector<Finding> findings_;
};

// A line of the library at LOG_WARNING or LOG_ERR, and the rules of which one must say why it is there. Without
// rules: a line that stands beside another one.
struct Explained {
    const char* format;
    std::vector<std::string> rules;
};

const std::vector<Explained>& ExplainedLines()
{
    static const std::vector<Explained> kLines = {
        {"Get sub yaml of %s, the type is not map", {"root-not-mapping", "entry-not-mapping"}},
        {"Get yaml array, the type is not map",
         {"root-not-mapping", "entry-not-mapping", "list-for-map", "no-replace-data", "empty-value"}},
        {"init yaml paser failed", {"not-yaml", "unreadable-file"}},
        {"open failed", {"unreadable-file"}},
        {"root node is nullptr", {"empty-file"}},
        {"%s is a directory.", {"unreadable-file"}},
        {"%s is invalid yaml file!", {"root-not-mapping"}},
        {"CheckApplicationsAndDepend error",
         {"missing-dependency", "dependency-is-pattern-instance", "empty-dependency", "dependency-spelling"}},
        {"CheckInputPath path=%s failed", {"path-refused", "unknown-placeholder"}},
        {"CreateVehicleData failed, %s is invalid yaml file, %s 's value", {"no-replace-data"}},
        {"first layer is not an array", {"root-not-mapping", "not-yaml", "empty-file", "unreadable-file"}},
        {"ParseToApplication error", {}},
        {"will be covered", {"duplicate-application", "file-listed-twice"}},
        {"InitYamlNode %s failed, errno", {"unreadable-file"}},
        {"init yaml node failed", {"not-yaml", "empty-file", "unreadable-file"}},
        {"Load more than %u", {"include-cycle", "include-limit"}},
        {"No startup file to load!", {"no-startup-file", "not-yaml", "empty-file", "root-not-mapping"}},
        {"GetStartupPriority=%d is not in 0-255", {"priority-range"}},
        {"arguments:%lu is beyond max", {"too-many-arguments"}},
        {"sharepool_group config is not array", {"list-for-map", "empty-value"}},
        {"sharepool_group config=%s is illegal", {"bad-permission"}},
        {"restart cfg is invalid", {"bad-restart", "empty-value", "map-for-scalar"}},
        {"node_type is null", {"empty-value", "map-for-scalar"}},
        {"no env config!", {"list-for-map", "empty-value"}},
        {"no cgroups config!", {"list-for-map", "empty-value"}},
        {"cfg isn't complete", {"incomplete-entry", "entry-not-mapping"}},
        {"getgrnam failed", {}}, // the accounts of this machine, of which no rule speaks
        {"getpwnam failed", {}},
        {"load cfg=%s failed", {"unreadable-file"}}};
    return kLines;
}

void ExpectLinesToBeExplained(const Verdict& verdict, const Opinion& opinion)
{
    for (const LogLine& line : verdict.lines) {
        if (line.priority > 4) { // below LOG_WARNING
            continue;
        }
        const auto explained =
            std::find_if(ExplainedLines().begin(), ExplainedLines().end(), [&line](const Explained& one) {
                return line.format.find(one.format) != std::string_view::npos;
            });
        if (explained == ExplainedLines().end()) {
            ADD_FAILURE() << "no rule is known to explain: " << line.text;
            continue;
        }
        EXPECT_TRUE(explained->rules.empty() || opinion.HasAnyOf(explained->rules))
            << "nothing is found that explains: " << line.text;
    }
}

// A finding of such a rule says what the library has said.
void ExpectFindingsToBeSaid(const Verdict& verdict, const Opinion& opinion)
{
    const std::map<std::string, const char*> said = {
        {"missing-dependency", "CheckApplicationsAndDepend error"},
        {"include-cycle", "Load more than"},
        {"include-limit", "Load more than"},
        {"no-startup-file", "No startup file to load!"},
        {"incomplete-entry", "cfg isn't complete"},
        {"duplicate-application", "will be covered"},
        {"bad-restart", "restart cfg is invalid"},
        {"bad-permission", "sharepool_group config=%s is illegal"},
        {"too-many-arguments", "arguments:%lu is beyond max"}};
    for (const auto& [rule, format] : said) {
        EXPECT_TRUE(opinion.Of(rule).empty() || !verdict.Lines(format).empty())
            << rule << " is found, but the library does not say: " << format;
    }
}

// Every dropped application has a finding that names it, and each finding of that rule is about one.
void ExpectSameDrops(const Verdict& verdict, const Opinion& opinion)
{
    std::vector<const Finding*> findings;
    for (const char* rule : {"missing-dependency", "dependency-is-pattern-instance", "dependency-spelling"}) {
        const auto some = opinion.Of(rule);
        findings.insert(findings.end(), some.begin(), some.end());
    }
    for (const LogLine* line : verdict.Lines("CheckApplicationsAndDepend error")) {
        const std::string dependency = line->arguments.at(1);
        const bool isFound = std::any_of(findings.begin(), findings.end(), [&](const Finding* finding) {
            return (finding->message + finding->effect).find(dependency) != std::string::npos;
        });
        EXPECT_TRUE(isFound || !opinion.Of("empty-dependency").empty())
            << "no finding names \"" << dependency << "\", which " << line->arguments.at(0) << " misses";
    }
}

// The files of the walk that the library reads as startup files, in order.
void ExpectSameFiles(const Verdict& verdict, const Configuration& configuration)
{
    std::vector<std::string> said;
    for (const LogLine* line : verdict.Lines("Load sub startup file=%s")) {
        said.push_back(line->text.substr(line->text.find('=') + 1));
    }
    std::vector<std::string> walked;
    const tool::SourceTree& tree = configuration.tree;
    for (std::size_t visit = 0; visit < tree.Visits().size(); ++visit) {
        if (tree.Visits()[visit].role == tool::FileRole::STARTUP && tree.IsLoaded(visit)) {
            walked.push_back(tree.Visits()[visit].path);
        }
    }
    EXPECT_EQ(said, walked);
}

void ExpectSameEntries(const Verdict& verdict, const Configuration& configuration)
{
    std::vector<std::string> said;
    for (const LogLine* line : verdict.Lines("Get app name when parsing Yaml file")) {
        said.push_back(line->text.substr(line->text.find('=') + 1));
    }
    std::vector<std::string> entries;
    std::vector<std::string> kept;
    for (std::size_t i = 0; i < configuration.tree.Entries().size(); ++i) {
        const tool::SourceEntry& entry = configuration.tree.Entries()[i];
        entries.emplace_back(configuration.tree.FileOf(entry).Text(entry.key));
        if (configuration.entryStates[i] == tool::EntryState::KEPT) {
            kept.push_back(entries.back());
        }
    }
    EXPECT_EQ(said, entries);
    std::vector<std::string> records;
    for (const ApplicationManifest& app : verdict.apps) {
        records.push_back(app.GetAppName());
    }
    EXPECT_EQ(records, kept);
}

// Of an entry that is the user's own, "x-NAME", the library has something to say and the check has not.
bool HasUsersOwn(const Configuration& configuration)
{
    const std::vector<tool::SourceEntry>& entries = configuration.tree.Entries();
    return std::any_of(entries.begin(), entries.end(), [&configuration](const tool::SourceEntry& entry) {
        return configuration.tree.FileOf(entry).Text(entry.key).substr(0, 2) == "x-";
    });
}

// A cycle with a member that the library drops is told, too, since it shows once that one is mended.
bool HasCycleOfKept(const Opinion& opinion)
{
    for (const char* rule : {"cycle", "self-dependency"}) {
        for (const Finding* finding : opinion.Of(rule)) {
            if (finding->effect.rfind("hidden as long as", 0) != 0) {
                return true;
            }
        }
    }
    return false;
}

TEST(AgreementTest, TheCheckAndTheLibrarySayTheSameOfEveryTree)
{
    std::size_t called = 0;
    for (const CorpusTree& tree : Corpus()) {
        SCOPED_TRACE(tree.name);
        fs::current_path(tree.folder);
        const Configuration configuration = tool::LoadConfiguration({tree.top, tree.replaceFile, {}});
        if (!configuration.WasRead()) {
            continue; // the library must not be asked either
        }
        ++called;
        const Verdict verdict = Ask(tree);
        const Opinion opinion(tool::Check(configuration, {}, tool::RuleLevels()).findings);

        EXPECT_EQ(verdict.result, configuration.result);
        ExpectSameFiles(verdict, configuration);
        ExpectSameEntries(verdict, configuration);
        if (!HasUsersOwn(configuration)) {
            ExpectLinesToBeExplained(verdict, opinion);
        }
        ExpectFindingsToBeSaid(verdict, opinion);
        ExpectSameDrops(verdict, opinion);
        EXPECT_EQ(verdict.hasCycle, HasCycleOfKept(opinion));
    }
    EXPECT_GT(called, 50U);
}

// A rule that is renamed must be renamed above as well.
TEST(AgreementTest, TheRulesThatExplainAreThere)
{
    for (const Explained& one : ExplainedLines()) {
        for (const std::string& rule : one.rules) {
            EXPECT_NE(nullptr, tool::FindRule(rule)) << rule;
        }
    }
}

} // namespace
