// Question: does a handle read any file at all as libyaml's own tree says, through each of its readers?
// Asserts beyond not crashing: every reader on every node as the plain rules read libyaml's tree; the log
// lines of each; sub-handles outlive their root; a second load reads the same; no memory kept once the
// handles are gone; allocations in proportion to the text and to what is read.
// Refuses files beyond 8 KiB: libyaml's own loading takes quadratic time in anchors and in nesting, which
// would be measured here instead of the library. Of one file 300 nodes are read (a node that contains
// itself has no end).

#include <cstddef>
#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <syslog.h>

#include "fuzz/fuzz_support.h"
#include "fuzz/yaml_reader_model.h"
#include "startplan/kvs_type_yaml.h"
#include "tests/support/log_capture.h"

namespace {

using fuzz::PlainYaml;
using ProcMgr::KvsTypeYaml;
using test_support::Lines;
using test_support::LogCapture;

constexpr std::size_t kMostBytes = 8192;
constexpr std::size_t kMostNodes = 300;
constexpr char kFile[] = "file.yaml";

class Comparison {
public:
    Comparison(PlainYaml& plain, LogCapture& log) : plain_(plain), log_(log) {}

    // Walks both trees breadth first, side by side.
    void Run(KvsTypeYaml root)
    {
        pending_.push_back({std::move(root), plain_.Root()});
        for (std::size_t count = 0; !pending_.empty() && count < kMostNodes; ++count) {
            const Place place = std::move(pending_.front());
            pending_.pop_front();
            CheckScalar(place);
            CheckSequence(place);
            CheckMapping(place);
            FUZZ_REQUIRE(log_.Take().empty());
        }
    }

    // How many values were read; the measure of what reading may cost.
    std::size_t Reads() const { return reads_; }

private:
    struct Place {
        KvsTypeYaml handle;
        const yaml_node_t* node;
    };

    void CheckScalar(const Place& place)
    {
        const bool isScalar = place.node->type == YAML_SCALAR_NODE;
        const std::string text = PlainYaml::Text(*place.node);
        FUZZ_REQUIRE(place.handle.GetString() == text);
        FUZZ_REQUIRE(place.handle.GetInt() == PlainYaml::ToNumber<int>(text));
        FUZZ_REQUIRE(place.handle.GetUint64() == PlainYaml::ToNumber<std::uint64_t>(text));
        FUZZ_REQUIRE(place.handle.GetBool() == PlainYaml::ToBool(text));
        FUZZ_REQUIRE(place.handle.GetIsNullOfScalarType() == (isScalar && text.empty()));
        ++reads_;
    }

    void CheckSequence(const Place& place)
    {
        std::vector<std::string> texts;
        std::vector<std::uint32_t> numbers;
        std::vector<const yaml_node_t*> items;
        if (place.node->type == YAML_SEQUENCE_NODE) {
            items = plain_.Items(*place.node);
        }
        for (const yaml_node_t* item : items) {
            texts.push_back(PlainYaml::Text(*item));
            numbers.push_back(PlainYaml::ToNumber<std::uint32_t>(texts.back()));
        }
        FUZZ_REQUIRE(place.handle.GetSequenceString() == texts);
        FUZZ_REQUIRE(place.handle.GetSequenceUint32() == numbers);
        const std::vector<KvsTypeYaml> handles = place.handle.GetSequenceYamlNode();
        FUZZ_REQUIRE(handles.size() == items.size());
        for (std::size_t i = 0; i < items.size(); ++i) {
            FUZZ_REQUIRE(handles[i].GetKey().empty());
            Enqueue(handles[i], items[i]);
        }
        reads_ += items.size();
    }

    void CheckMapping(const Place& place)
    {
        KvsTypeYaml sub;
        std::vector<KvsTypeYaml> entries(1); // what is there stays there
        if (place.node->type != YAML_MAPPING_NODE) {
            FUZZ_REQUIRE(!place.handle.GetArray(entries));
            FUZZ_REQUIRE(!place.handle.GetSubKvs("env", sub));
            fuzz::RequireSameLines(
                log_.Take(),
                {{LOG_WARNING, " [YAMLPARSE][GetArray 197] Get yaml array, the type is not map", {}},
                 {LOG_WARNING, " [YAMLPARSE][GetSubKvs 240] Get sub yaml of env, the type is not map", {}}});
            FUZZ_REQUIRE(entries.size() == 1);
            return;
        }
        const auto pairs = plain_.Pairs(*place.node);
        FUZZ_REQUIRE(place.handle.GetArray(entries));
        FUZZ_REQUIRE(entries.size() == pairs.size() + 1);
        for (std::size_t i = 0; i < pairs.size(); ++i) {
            const std::string key = PlainYaml::Text(*pairs[i].key);
            FUZZ_REQUIRE(entries[i + 1].GetKey() == key);
            Enqueue(entries[i + 1], pairs[i].value);
            if (i < 8) { // each look-up walks the mapping
                CheckLookUp(place, key, pairs);
            }
        }
        CheckLookUp(place, "", pairs);
        CheckLookUp(place, "a key that is hardly there", pairs);
        reads_ += pairs.size();
    }

    // The first pair with this key.
    void CheckLookUp(const Place& place, const std::string& key, const std::vector<PlainYaml::Pair>& pairs)
    {
        const yaml_node_t* expected = nullptr;
        for (const PlainYaml::Pair& pair : pairs) {
            if (PlainYaml::Text(*pair.key) == key) {
                expected = pair.value;
                break;
            }
        }
        KvsTypeYaml sub;
        FUZZ_REQUIRE(place.handle.GetSubKvs(key, sub) == (expected != nullptr));
        if (expected != nullptr) {
            FUZZ_REQUIRE(sub.GetKey() == key);
            FUZZ_REQUIRE(sub.GetString() == PlainYaml::Text(*expected));
            ++reads_;
        }
    }

    void Enqueue(const KvsTypeYaml& handle, const yaml_node_t* node)
    {
        if (pending_.size() < kMostNodes) {
            pending_.push_back({handle, node});
        }
    }

    PlainYaml& plain_;
    LogCapture& log_;
    std::deque<Place> pending_;
    std::size_t reads_ = 0;
};

Lines ExpectedLoadLines(bool isLoaded, const std::string& path)
{
    if (!isLoaded) {
        return {{LOG_ERR,
                 " [YAMLPARSE][InitYamlNode 175] Load yaml=" + path + " failed, init yaml paser failed",
                 {}}};
    }
    return {
        {LOG_ERR, " [YAMLPARSE][InitYamlNode 183] Load yaml=" + path + " failed, root node is nullptr", {}}};
}

// Gives the number of values read.
std::size_t CheckFile(std::string_view text, const std::string& path)
{
    LogCapture log;
    PlainYaml plain(text);
    std::optional<KvsTypeYaml> root(std::in_place);
    const bool isRead = root->InitYamlNode(kFile);
    FUZZ_REQUIRE(isRead == (plain.Root() != nullptr));
    if (!isRead) {
        fuzz::RequireSameLines(log.Take(), ExpectedLoadLines(plain.IsLoaded(), path));
        return 0;
    }
    FUZZ_REQUIRE(log.Take().empty());
    Comparison comparison(plain, log);
    KvsTypeYaml copy = *root;
    root.reset();
    comparison.Run(std::move(copy));
    return comparison.Reads();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size > kMostBytes) {
        return 0;
    }
    static const fuzz::InputFolder folder;
    const std::string_view text = fuzz::TextOf(data, size);
    folder.Write(kFile, text);
    const std::string path = folder.Path() + "/" + kFile;

    CheckFile(text, path);
    const fuzz::AllocationMeter meter; // from the second time on, when every cache is filled
    const std::size_t reads = CheckFile(text, path);
    FUZZ_REQUIRE(meter.Kept() == 0);
    FUZZ_REQUIRE(meter.Allocations() <= 400 + 64 * (size + reads));
    return 0;
}
