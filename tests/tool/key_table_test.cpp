// The table of keys says what the library makes of every value; here the library is asked.

#include "tool/keys/key_table.h"

#include <algorithm>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <syslog.h>

#include "startplan/result_codes.h"
#include "tests/support/temporary_tree.h"
#include "tool/configuration/configuration.h"
#include "tool/keys/key_page.h"
#include "tool/keys/settings.h"

namespace {

using test_support::TemporaryTree;
using tool::FileKind;
using tool::Json;
using tool::Key;
using tool::KeyKind;
using tool::KeysOf;

// One entry as the library reads it.
struct ReadEntry {
    std::vector<ApplicationManifest> apps; // one or none
    tool::LogLines lines;
    std::uint32_t result = 0;

    bool HasLine(int priority) const
    {
        for (const tool::LogLine& line : lines) {
            if (line.priority == priority) {
                return true;
            }
        }
        return false;
    }
};

class KeyTableTest : public testing::Test {
protected:
    // The entry "app" with these lines, and with a program unless the key under test is the program.
    ReadEntry Read(const Key* key, const std::string& lines)
    {
        const bool hasProgram = key != nullptr && key->isNeeded;
        return ReadValue(std::string("\n") + (hasProgram ? "  x-none: 0\n" : "  bin_path: /bin/app\n") +
                         lines);
    }

    ReadEntry ReadValue(const std::string& value)
    {
        const std::string file = tree_.Write("app.yaml", "app: " + value);
        const std::string top = tree_.Write("top.yaml", "startup_path_list: [" + file + "]\n");
        tool::Configuration configuration = tool::LoadConfiguration({top, "", {}, true});
        return {std::move(configuration.apps), std::move(configuration.lines), configuration.result};
    }

    // The key with this text behind it.
    ReadEntry ReadKey(const Key& key, const std::string& value)
    {
        return Read(&key, std::string("  ") + key.name + ":" + (value.empty() ? "" : " ") + value + "\n");
    }

    TemporaryTree tree_;
};

// A value as the table writes it; an empty map is an empty list in the record.
std::string ValueOf(const Key& key, const ApplicationManifest& app)
{
    const Json value = key.value(app);
    return IsMap(key.kind) && value.empty() ? "{}" : value.dump();
}

bool Decides(const Key& key, const tool::Setting& setting)
{
    for (const char* name : setting.keys) {
        if (name == std::string(key.name)) {
            return true;
        }
    }
    return false;
}

// The key's own value is `expected`, and every setting that the key does not decide is as without it.
void ExpectValue(const Key& key, const ReadEntry& read, const char* expected, const ApplicationManifest& bare)
{
    if (key.isNeeded) {
        EXPECT_TRUE(read.apps.empty());
        return;
    }
    ASSERT_EQ(1U, read.apps.size());
    if (key.value != nullptr) {
        EXPECT_EQ(expected, ValueOf(key, read.apps[0]));
    }
    for (const tool::Setting& setting : tool::Settings()) {
        if (key.value == nullptr || !Decides(key, setting)) {
            EXPECT_EQ(setting.value(bare).dump(), setting.value(read.apps[0]).dump()) << setting.name;
        }
    }
}

TEST_F(KeyTableTest, HoldsTheKeysThatTheLibraryReadsInItsOrder)
{
    const ReadEntry read = ReadValue("no mapping\n"); // one line for each key that is looked up in vain

    std::vector<std::string> names;
    for (const tool::LogLine& line : read.lines) {
        const std::string& text = line.text;
        const std::string before = "Get sub yaml of ";
        const std::size_t at = text.find(before);
        if (at != std::string::npos) {
            const std::string name = text.substr(at + before.size(), text.find(',') - at - before.size());
            if (std::find(names.begin(), names.end(), name) == names.end()) {
                names.push_back(name);
            }
        }
    }
    // The two names are looked at only once both numbers are known to be absent.
    const auto userName = std::find(names.begin(), names.end(), "user_name");
    ASSERT_NE(names.end(), userName);
    std::iter_swap(userName, userName - 1);
    std::vector<std::string> known;
    for (const Key& key : KeysOf(FileKind::STARTUP)) {
        known.emplace_back(key.name);
    }
    EXPECT_EQ(names, known);
}

TEST_F(KeyTableTest, SaysWhatAKeyThatIsLeftOutIsWorth)
{
    const ReadEntry bare = Read(nullptr, "");
    ASSERT_EQ(1U, bare.apps.size());
    for (const Key& key : KeysOf(FileKind::STARTUP)) {
        SCOPED_TRACE(key.name);
        const ReadEntry read = Read(&key, "");
        ExpectValue(key, read, key.absent, bare.apps[0]);
        EXPECT_EQ(key.isNeeded, read.HasLine(LOG_WARNING));
    }
}

TEST_F(KeyTableTest, SaysWhatAnEmptyValueIsReadAs)
{
    const ReadEntry bare = Read(nullptr, "");
    for (const Key& key : KeysOf(FileKind::STARTUP)) {
        for (const char* empty : {"", "\"\"", "''"}) {
            SCOPED_TRACE(std::string(key.name) + ": " + empty);
            const ReadEntry read = ReadKey(key, empty);
            ExpectValue(key, read, key.empty, bare.apps[0]);
            EXPECT_EQ(key.warnsOfEmpty || key.isNeeded, read.HasLine(LOG_WARNING));
        }
    }
}

TEST_F(KeyTableTest, SaysWhatAValueOfTheWrongKindIsReadAs)
{
    const ReadEntry bare = Read(nullptr, "");
    for (const Key& key : KeysOf(FileKind::STARTUP)) {
        std::vector<const char*> values = {"[true, 1]", "{true: 1}"};
        if (IsList(key.kind)) {
            values = {"word", "{a: b}"};
        } else if (IsMap(key.kind)) {
            values = {"word", "[a, b]"};
        }
        for (const char* value : values) {
            SCOPED_TRACE(std::string(key.name) + ": " + value);
            const ReadEntry read = ReadKey(key, value);
            ExpectValue(key, read, key.misfit, bare.apps[0]);
            EXPECT_EQ(key.warnsOfEmpty || key.isNeeded, read.HasLine(LOG_WARNING));
        }
    }
}

// Something that can be written plainly, and what the record then shows.
struct Plain {
    std::string written;
    std::string read;
};

std::vector<Plain> PlainValues(const Key& key)
{
    const std::string least = std::to_string(key.least);
    const std::string most = std::to_string(key.most);
    std::vector<Plain> plain;
    switch (key.kind) {
    case KeyKind::TEXT:
        return {{"plain words", R"("plain words")"}, {"~", R"("~")"}, {"/etc/a", R"("/etc/a")"}};
    case KeyKind::ACCOUNT:
        return {}; // decided by the device, see the tests of the library
    case KeyKind::FLAG:
        return {{"true", "true"}, {"false", "false"}, {"\" TRUE \"", "true"}};
    case KeyKind::SWITCH:
        return {{"true", R"("true")"}, {"True", R"("true")"}};
    case KeyKind::HEXADECIMAL:
        return {{"0", least}, {"FFFFFFFF", most}, {"0x1f", "31"}, {"10", "16"}};
    case KeyKind::SIGNED:
    case KeyKind::UNSIGNED:
    case KeyKind::PRIORITY:
    case KeyKind::DEVICE_ID:
        return {{least, least}, {most, most}, {"\"7\"", "7"}};
    case KeyKind::NUMBER_LIST:
        return {{"[" + least + ", " + most + ", 3]", "[" + least + "," + most + ",3]"}};
    case KeyKind::POLICY:
        for (const char* word : key.words) {
            plain.push_back({word, std::string("\"") + word + "\""});
        }
        return plain;
    case KeyKind::TEXT_LIST:
        return {{key.most == 0 ? "[app, app]" : "[b, a, \"\"]",
                 key.most == 0 ? R"(["app"])" : R"(["b","a",""])"}};
    case KeyKind::MAP:
        return {{"{b: 1}", key.name == std::string("env") ? R"({"b":"1"})" : R"([{"key":"b","path":"1"}])"}};
    case KeyKind::ACCESS_MAP:
        for (const char* word : key.words) {
            plain.push_back({std::string("{g: ") + word + "}",
                             std::string(R"([{"group":"g","permission":")") + word + "\"}]"});
        }
        return plain;
    }
    return plain;
}

TEST_F(KeyTableTest, SaysWhatCanBeWrittenPlainly)
{
    for (const Key& key : KeysOf(FileKind::STARTUP)) {
        for (const Plain& plain : PlainValues(key)) {
            SCOPED_TRACE(std::string(key.name) + ": " + plain.written);
            const ReadEntry read = ReadKey(key, plain.written);
            ASSERT_EQ(1U, read.apps.size());
            EXPECT_EQ(plain.read, ValueOf(key, read.apps[0]));
            EXPECT_FALSE(read.HasLine(LOG_WARNING));
            EXPECT_FALSE(read.HasLine(LOG_ERR));
        }
    }
}

// What a clause of the table about all other values means: a value, and what the record then shows.
// "skipped" and "dropped" stand for no record.
struct Sample {
    const char* clause;
    const char* written;
    const char* read;
};

constexpr char kSkipped[] = "skipped";
constexpr char kDropped[] = "dropped";

const std::vector<Sample>& Samples()
{
    static const std::vector<Sample> kSamples = {
        {"any text is kept", "\"\\t null \"", R"("\t null ")"},
        {"any other text is kept", "relative", R"("relative")"},
        {"nobody checks that the file exists", "/no/such/file", R"("/no/such/file")"},
        {"text: 0", "abc", "0"},
        {"text: 0", "null", "0"},
        {"text: 0", "0x1F", "0"},
        {"outside 32 bits: limits", "2147483648", "2147483647"},
        {"outside 32 bits: limits", "-2147483649", "-2147483648"},
        {"above 2147483647: limits", "2147483648", "2147483647"},
        {"above 2147483647: limits", "99999999999999999999", "2147483647"},
        {"negative: wraps", "-2", "4294967294"},
        {"-1: entry skipped (w)", "-1", kSkipped},
        {"unknown: uid 1000 (e)", "no-such-user-at-all", "1000"},
        {"unknown: gid 1000 (e)", "no-such-group-at-all", "1000"},
        {"any other text: `no` (w)", "always", R"("no")"},
        {"any other text: `no` (w)", "On-Failure", R"("no")"},
        {"text without \"true\": false", "yes", "false"},
        {"any other text is kept in lower case, off", "FIFO", R"("fifo")"},
        {"name that is no entry: entry dropped (e)", "[gone]", kDropped},
        {"item that is text: 0", "[abc]", "[0]"},
        {"item above 4294967295: 4294967295", "[4294967296]", "[4294967295]"},
        {"negative item: wraps", "[-1]", "[4294967295]"},
        {"repeated name: first value", "{A: 1, A: 2}", R"({"A":"1"})"},
        {"value that is no single value: empty text", "{A: [1]}", nullptr},
        {"other access, or none: group left out (e)", "{g: RW}", "{}"},
        {"other access, or none: group left out (e)", "{g: }", "{}"},
        {"100 stays 100", "100", "100"},
        {"text: 0 or its leading digits, and the text", "<0-3>", "0"},
        {"text: 0 or its leading digits, and the text", "12ab", "12"},
        {"no hexadecimal digits: 0", "zz", "0"},
        {"longer than 32 bits: the low 32 bits", "0x123456789", "591751049"},
        {"below 0 or above 255: -1 (w)", "256", "-1"},
        {"below 0 or above 255: -1 (w)", "-1", "-1"},
    };
    return kSamples;
}

std::vector<std::string> Clauses(const Key& key)
{
    std::vector<std::string> clauses;
    std::string text = key.beyond;
    for (std::size_t end = text.find("; "); end != std::string::npos; end = text.find("; ")) {
        clauses.push_back(text.substr(0, end));
        text.erase(0, end + 2);
    }
    clauses.push_back(text);
    return clauses;
}

bool EndsWith(const std::string& text, const std::string& end)
{
    return text.size() >= end.size() && text.compare(text.size() - end.size(), end.size(), end) == 0;
}

void ExpectSample(const Key& key, const Sample& sample, const ReadEntry& read)
{
    const std::string clause = sample.clause;
    EXPECT_EQ(EndsWith(clause, "(w)"), read.HasLine(LOG_WARNING));
    EXPECT_EQ(EndsWith(clause, "(e)"), read.HasLine(LOG_ERR));
    if (sample.read == kSkipped || sample.read == kDropped) {
        EXPECT_TRUE(read.apps.empty());
        EXPECT_EQ(sample.read == kDropped ? PARSE_ERR_DEPEND_NOT_FOUND : 0U, read.result);
        return;
    }
    ASSERT_EQ(1U, read.apps.size());
    if (key.kind == KeyKind::ACCOUNT) {
        const bool isUser = key.name == std::string("user_name");
        EXPECT_EQ(sample.read, std::to_string(isUser ? read.apps[0].GetUid() : read.apps[0].GetGid()));
        return;
    }
    if (sample.read == nullptr) { // the two maps are shown in different forms
        EXPECT_TRUE(EndsWith(ValueOf(key, read.apps[0]), R"(:""})") ||
                    EndsWith(ValueOf(key, read.apps[0]), R"(:""}])"));
        return;
    }
    EXPECT_EQ(sample.read, ValueOf(key, read.apps[0]));
}

TEST_F(KeyTableTest, SaysWhatEverythingElseIsReadAs)
{
    for (const Key& key : KeysOf(FileKind::STARTUP)) {
        for (const std::string& clause : Clauses(key)) {
            SCOPED_TRACE(std::string(key.name) + ", " + clause);
            if (clause == "257 items or more: none (w)") {
                continue; // below
            }
            std::size_t count = 0;
            for (const Sample& sample : Samples()) {
                if (clause == sample.clause) {
                    SCOPED_TRACE(sample.written);
                    ExpectSample(key, sample, ReadKey(key, sample.written));
                    ++count;
                }
            }
            EXPECT_GT(count, 0U) << "nobody has tried this";
        }
    }
}

TEST_F(KeyTableTest, SaysHowManyItemsAListMayHave)
{
    std::size_t limited = 0;
    for (const Key& key : KeysOf(FileKind::STARTUP)) {
        if (key.kind != KeyKind::TEXT_LIST || key.most == 0) {
            continue;
        }
        ++limited;
        std::string items = "a";
        for (std::int64_t i = 1; i < key.most; ++i) {
            items += ", a";
        }
        const ReadEntry most = ReadKey(key, "[" + items + "]");
        ASSERT_EQ(1U, most.apps.size());
        EXPECT_EQ(static_cast<std::size_t>(key.most), key.value(most.apps[0]).size());
        const ReadEntry beyond = ReadKey(key, "[" + items + ", a]");
        ASSERT_EQ(1U, beyond.apps.size());
        EXPECT_EQ(key.absent, ValueOf(key, beyond.apps[0]));
        EXPECT_TRUE(beyond.HasLine(LOG_WARNING));
    }
    EXPECT_EQ(1U, limited);
}

// The device id is the one key that is read twice.
TEST_F(KeyTableTest, SaysThatTheDeviceIdIsATextAsWell)
{
    const Key& key = *FindKey(FileKind::STARTUP, "device_id");

    EXPECT_EQ("-1", Read(&key, "").apps.at(0).GetVfIdPattern());
    EXPECT_EQ("", ReadKey(key, "").apps.at(0).GetVfIdPattern());
    EXPECT_EQ("<0-3>", ReadKey(key, "<0-3>").apps.at(0).GetVfIdPattern());
}

TEST_F(KeyTableTest, SaysWhichKeysStandInForTheOwners)
{
    const ReadEntry both = Read(nullptr, "  uid: 500\n  gid: 20\n");
    EXPECT_EQ(500U, both.apps.at(0).GetUid());
    EXPECT_EQ(20U, both.apps.at(0).GetGid());
    EXPECT_EQ(500U, Read(nullptr, "  uid: 500\n").apps.at(0).GetGid()); // before "group_name", too
    EXPECT_EQ(500U, Read(nullptr, "  uid: 500\n  group_name: root\n").apps.at(0).GetGid());
    EXPECT_EQ(0U, Read(nullptr, "  user_name: root\n").apps.at(0).GetUid());
    EXPECT_EQ(0U, Read(nullptr, "  group_name: root\n").apps.at(0).GetGid());
}

// The two other kinds of file: a misspelt key is a key left out, a list in the place of a map no map.
TEST_F(KeyTableTest, HoldsTheKeysOfTheOtherFiles)
{
    const std::vector<Key>& top = KeysOf(FileKind::TOP_LEVEL);
    ASSERT_EQ(2U, top.size());
    const std::string app = tree_.Write("one.yaml", "app: {bin_path: /bin/app}\n");
    const std::string sub = tree_.Write("sub.yaml", std::string(top[0].name) + ": [\"${APP}\"]\n");
    const std::string replace = tree_.Write(
        "replace.yaml", std::string(KeysOf(FileKind::REPLACE).at(0).name) + ": {APP: " + app + "}\n");
    const std::string start = tree_.Write("start.yaml", std::string(top[1].name) + ": [" + sub + "]\n");
    EXPECT_EQ(1U, tool::LoadConfiguration({start, replace, {}}).apps.size());

    for (const char* value : {"", " \"\"", " word", " {a: b}"}) {
        for (const Key& key : top) {
            const std::string text = std::string(key.name) + ":" + value + "\n";
            EXPECT_EQ(PARSE_ERR_NO_STARTUP_FILE,
                      tool::LoadConfiguration({tree_.Write("none.yaml", text), "", {}}).result)
                << text;
        }
    }
}

std::string Manual()
{
    std::ifstream file(STARTPLAN_SOURCE_DIR "/docs/config.md");
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

// "startplan schema KIND --format markdown" writes what belongs there.
TEST_F(KeyTableTest, IsTheOneOfTheManual)
{
    const std::string manual = Manual();

    EXPECT_NE(std::string::npos, manual.find(tool::KeyTable(FileKind::STARTUP) + "\n"));
    EXPECT_NE(std::string::npos, manual.find(tool::OutcomeTable() + "\n"));
    EXPECT_NE(std::string::npos, manual.find(tool::KeyTable(FileKind::TOP_LEVEL) + "\n"));
    EXPECT_NE(std::string::npos, manual.find(tool::KeyTable(FileKind::REPLACE) + "\n"));
}

TEST_F(KeyTableTest, FindsKeysByNameAndByNearness)
{
    EXPECT_EQ(nullptr, FindKey(FileKind::STARTUP, "Restart"));
    EXPECT_EQ(nullptr, FindKey(FileKind::TOP_LEVEL, "restart"));
    EXPECT_EQ("restart", tool::NearestKey(FileKind::STARTUP, "restrat"));
    EXPECT_EQ("isDynamicPara", tool::NearestKey(FileKind::STARTUP, "is_dynamic_para"));
    EXPECT_EQ("sub_startup", tool::NearestKey(FileKind::TOP_LEVEL, "sub_startups"));
    EXPECT_EQ("", tool::NearestKey(FileKind::REPLACE, "restart"));
    EXPECT_TRUE(tool::IsOwnKey("x-note"));
    EXPECT_FALSE(tool::IsOwnKey("xnote"));
}

} // namespace
