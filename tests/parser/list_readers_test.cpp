// Arguments, environment and dependencies of an entry.

#include <map>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "startplan/kvs_type_yaml.h"
#include "startplan/parser.h"
#include "tests/support/log_capture.h"
#include "tests/support/yaml_lines.h"
#include "tests/support/yaml_nodes.h"
#include "tests/support/yaml_snippet.h"

using test_support::Lines;
using test_support::Load;
using test_support::MissingNodes;

namespace {

using Texts = std::vector<std::string>;
using Environment = std::map<std::string, std::string>;
using Names = std::set<std::string>;

class ListReadersTest : public testing::Test {
protected:
    static std::string EntryWithArguments(int count)
    {
        std::string entry = "arguments:\n";
        for (int i = 0; i < count; ++i) {
            entry += "  - a" + std::to_string(i) + "\n";
        }
        return entry;
    }

    const ProcMgr::YamlParser parser_{};
    test_support::LogCapture log_;
};

TEST_F(ListReadersTest, ArgumentsReplaceTheListWhateverTheEntryHas)
{
    struct Case {
        const char* entry;
        Texts arguments;
    };
    for (const Case& c :
         {Case{"{arguments: [-a, '', b]}", {"-a", "", "b"}}, Case{"{arguments: [b, a, b]}", {"b", "a", "b"}},
          Case{"{arguments: [[x], {y: z}, 1]}", {"", "", "1"}}, Case{"{arguments: []}", {}},
          Case{"{arguments: -v}", {}}, Case{"{arguments: }", {}}, Case{"{arguments: {a: b}}", {}},
          Case{"{other: [x]}", {}}}) {
        SCOPED_TRACE(c.entry);
        Texts arguments = {"old"};

        parser_.GetArguments(arguments, Load(c.entry));

        EXPECT_EQ(arguments, c.arguments);
    }
    EXPECT_EQ(log_.Take(), Lines());
}

TEST_F(ListReadersTest, UpTo256ArgumentsAreKept)
{
    Texts arguments;

    parser_.GetArguments(arguments, Load(EntryWithArguments(256)));

    ASSERT_EQ(arguments.size(), 256U);
    EXPECT_EQ(arguments.front(), "a0");
    EXPECT_EQ(arguments.back(), "a255");
    EXPECT_EQ(log_.Take(), Lines());
}

TEST_F(ListReadersTest, MoreThan256ArgumentsAreDroppedWholeAndTheOldNumberIsPrinted)
{
    Texts arguments;
    parser_.GetArguments(arguments, Load(EntryWithArguments(257)));
    EXPECT_TRUE(arguments.empty());

    arguments = {"kept", "too"};
    parser_.GetArguments(arguments, Load(EntryWithArguments(1000)));
    EXPECT_EQ(arguments, Texts({"kept", "too"}));

    const Lines lines = log_.Take();
    ASSERT_EQ(lines, Lines({{LOG_WARNING, "ParseYamlToApplicationManifest arguments:0 is beyond max nums"},
                            {LOG_WARNING, "ParseYamlToApplicationManifest arguments:2 is beyond max nums"}}));
    EXPECT_EQ(lines[0].format, "ParseYamlToApplicationManifest arguments:%lu is beyond max nums");
}

TEST_F(ListReadersTest, AMissingArgumentOrKeyEmptiesTheArguments)
{
    const MissingNodes missing("GONE");
    for (const char* entry : {"{arguments: [a, GONE]}", "{GONE: 1, arguments: [a]}", "[arguments]"}) {
        Texts arguments = {"old"};
        parser_.GetArguments(arguments, Load(entry));
        EXPECT_EQ(arguments, Texts()) << entry;
    }
    EXPECT_EQ(log_.Take(),
              Lines({test_support::MissingStringItem(), test_support::MissingNodeBefore("arguments"),
                     test_support::NoMappingFor("arguments")}));
}

TEST_F(ListReadersTest, TheEnvironmentIsOrderedByNameAndTheFirstOfANameWins)
{
    struct Case {
        const char* entry;
        Environment environment;
    };
    for (const Case& c :
         {Case{"{env: {B: 2, A: 1}}", {{"A", "1"}, {"B", "2"}}}, Case{"{env: {A: 1, A: 2}}", {{"A", "1"}}},
          Case{"{env: {A: [1, 2], B: {c: d}, C: }}", {{"A", ""}, {"B", ""}, {"C", ""}}},
          Case{"{env: {'': x, ' a ': ' b '}}", {{"", "x"}, {" a ", " b "}}},
          Case{"{env: {? [k] : 1, '': 2}}", {{"", "1"}}}, Case{"{env: {}}", {}},
          Case{"{other: {A: 1}}", {}}}) {
        SCOPED_TRACE(c.entry);
        Environment environment;

        parser_.GetEnvArgv(environment, Load(c.entry));

        EXPECT_EQ(environment, c.environment);
    }
    EXPECT_EQ(log_.Take(), Lines());
}

TEST_F(ListReadersTest, AVariableThatTheCallerHasKeepsItsValue)
{
    Environment environment = {{"A", "old"}, {"Z", "last"}};

    parser_.GetEnvArgv(environment, Load("{env: {A: new, B: 2}}"));

    EXPECT_EQ(environment, Environment({{"A", "old"}, {"B", "2"}, {"Z", "last"}}));
}

TEST_F(ListReadersTest, AnEnvironmentThatIsNoMappingIsWarnedOfAndInsertsNothing)
{
    for (const char* entry : {"{env: [A=1]}", "{env: A=1}", "{env: }", "{env: ''}"}) {
        SCOPED_TRACE(entry);
        Environment environment = {{"A", "old"}};

        parser_.GetEnvArgv(environment, Load(entry));

        EXPECT_EQ(environment, Environment({{"A", "old"}}));
        EXPECT_EQ(log_.Take(), Lines({test_support::ArrayIsNoMapping(), {LOG_WARNING, "no env config!"}}));
    }
}

TEST_F(ListReadersTest, AMissingVariableInsertsNothingNotEvenTheOnesBeforeIt)
{
    const MissingNodes missing("GONE");
    Environment environment;

    parser_.GetEnvArgv(environment, Load("{env: {A: 1, B: GONE}}"));
    parser_.GetEnvArgv(environment, Load("{env: {A: 1, GONE: 2, C: 3}}"));
    parser_.GetEnvArgv(environment, Load("{GONE: 1, env: {A: 1}}"));
    parser_.GetEnvArgv(environment, Load("text"));

    EXPECT_EQ(environment, Environment());
    EXPECT_EQ(log_.Take(), Lines({test_support::MissingNodeInArray(),
                                  {LOG_WARNING, "no env config!"},
                                  test_support::MissingNodeInArray(),
                                  {LOG_WARNING, "no env config!"},
                                  test_support::MissingNodeBefore("env"),
                                  test_support::NoMappingFor("env")}));
}

TEST_F(ListReadersTest, DependenciesAreInsertedAsWrittenAndCollapse)
{
    struct Case {
        const char* entry;
        Names names;
    };
    for (const Case& c : {Case{"{depends: [b, a, b]}", {"a", "b"}}, Case{"{depends: [a, '']}", {"", "a"}},
                          Case{"{depends: [' a ', 'app_<1-3>', B]}", {" a ", "B", "app_<1-3>"}},
                          Case{"{depends: [[x]]}", {""}}, Case{"{depends: a}", {}}, Case{"{depends: }", {}},
                          Case{"{depends: {a: b}}", {}}, Case{"{depends: []}", {}}, Case{"{}", {}}}) {
        SCOPED_TRACE(c.entry);
        Names names = {"old"};

        parser_.GetDependApps(names, Load(c.entry));

        Names expected = c.names;
        expected.insert("old");
        EXPECT_EQ(names, expected);
    }
    EXPECT_EQ(log_.Take(), Lines());
}

TEST_F(ListReadersTest, AMissingDependencyInsertsNone)
{
    const MissingNodes missing("GONE");
    Names names = {"old"};

    parser_.GetDependApps(names, Load("{depends: [a, GONE, b]}"));
    parser_.GetDependApps(names, Load("{GONE: 1, depends: [a]}"));
    parser_.GetDependApps(names, Load("[depends]"));

    EXPECT_EQ(names, Names({"old"}));
    EXPECT_EQ(log_.Take(),
              Lines({test_support::MissingStringItem(), test_support::MissingNodeBefore("depends"),
                     test_support::NoMappingFor("depends")}));
}

} // namespace
