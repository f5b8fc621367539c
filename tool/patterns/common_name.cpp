#include "tool/patterns/common_name.h"

#include <algorithm>
#include <bitset>
#include <cstdint>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace tool {

namespace {

using State = PatternAutomaton::State;

struct PairHash {
    std::size_t operator()(const std::pair<std::uint64_t, std::uint64_t>& pair) const
    {
        return static_cast<std::size_t>(pair.first * 0x9E3779B97F4A7C15U ^
                                        (pair.second + (pair.first >> 29U)));
    }
};

// Every byte that one of the two tells from others, and one byte for all the rest: a letter if possible.
std::vector<unsigned char> BytesToTry(const PatternAutomaton& a, const PatternAutomaton& b)
{
    std::bitset<256> bytes;
    a.AddBytes(bytes);
    b.AddBytes(bytes);
    constexpr std::string_view kOthers = "xabcdefghijklmnopqrstuvwyz_";
    const auto other = std::find_if(kOthers.begin(), kOthers.end(),
                                    [&bytes](char c) { return !bytes[static_cast<unsigned char>(c)]; });
    if (other != kOthers.end()) {
        bytes.set(static_cast<unsigned char>(*other));
    }
    std::vector<unsigned char> list;
    for (unsigned byte = 1; byte < bytes.size(); ++byte) {
        if (bytes[byte]) {
            list.push_back(static_cast<unsigned char>(byte));
        }
    }
    return list;
}

// Breadth first over the pairs of states that the same bytes lead to.
class Search {
public:
    Search(const PatternAutomaton& a, const PatternAutomaton& b, std::size_t& steps)
        : a_(a), b_(b), steps_(steps), bytes_(BytesToTry(a, b))
    {}

    std::optional<std::string> Run()
    {
        visits_.push_back({a_.Start(), b_.Start(), 0, 0, 0});
        for (std::size_t at = 0; at < visits_.size(); ++at) {
            if (visits_[at].length == kLongestName) {
                break;
            }
            for (const unsigned char byte : bytes_) {
                if (steps_ == 0) {
                    return std::nullopt;
                }
                --steps_;
                if (Step(at, byte)) {
                    return NameOf(visits_.size() - 1);
                }
            }
        }
        return std::nullopt;
    }

private:
    struct Visit {
        State a;
        State b;
        std::uint32_t from;
        std::uint16_t length;
        unsigned char byte;
    };

    // Whether both accept what has been read then.
    bool Step(std::size_t from, unsigned char byte)
    {
        nextOfA_.clear();
        nextOfB_.clear();
        a_.Step(visits_[from].a, byte, nextOfA_);
        b_.Step(visits_[from].b, byte, nextOfB_);
        for (const State& a : nextOfA_) {
            for (const State& b : nextOfB_) {
                if (seen_.emplace(a.Packed(), b.Packed()).second) {
                    visits_.push_back({a, b, static_cast<std::uint32_t>(from),
                                       static_cast<std::uint16_t>(visits_[from].length + 1), byte});
                    if (a_.Accepts(a) && b_.Accepts(b)) {
                        return true;
                    }
                }
            }
        }
        return false;
    }

    std::string NameOf(std::size_t visit) const
    {
        std::string name;
        for (; visit != 0; visit = visits_[visit].from) {
            name += static_cast<char>(visits_[visit].byte);
        }
        std::reverse(name.begin(), name.end());
        return name;
    }

    const PatternAutomaton& a_;
    const PatternAutomaton& b_;
    std::size_t& steps_;
    std::vector<unsigned char> bytes_;
    std::vector<Visit> visits_; // the first one is not in seen_: the empty name is none
    std::unordered_set<std::pair<std::uint64_t, std::uint64_t>, PairHash> seen_;
    std::vector<State> nextOfA_;
    std::vector<State> nextOfB_;
};

} // namespace

std::optional<std::string> CommonName::Find(const PatternAutomaton& a, const PatternAutomaton& b)
{
    if (a.MatchesNothing() || b.MatchesNothing()) {
        return std::nullopt;
    }
    return Search(a, b, steps_).Run();
}

} // namespace tool
