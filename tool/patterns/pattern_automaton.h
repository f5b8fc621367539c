#ifndef STARTPLAN_TOOL_PATTERNS_PATTERN_AUTOMATON_H
#define STARTPLAN_TOOL_PATTERNS_PATTERN_AUTOMATON_H

#include <bitset>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "tool/patterns/name_pattern.h"
#include "tool/patterns/number_automaton.h"

namespace tool {

// Reads a name byte by byte and tells whether a pattern matches it: a finite automaton that may be in
// several states at once. It follows the library's way of matching (see ParseAndDepend::SplitPara): each
// piece of text counts where it occurs first, and what follows a last piece of text does not count. Made to
// ask whether one name matches two patterns; whether a given name matches is asked from the library.
class PatternAutomaton {
public:
    struct State {
        std::uint16_t unit = 0;    // which piece of text, with the parameters in front of it
        std::uint16_t read = 0;    // how much of that piece of text; kInParameter before it
        std::uint16_t overlap = 0; // the longest beginning of it that ends here
        std::uint32_t check = 0;   // how far the parameter's text is good

        std::uint64_t Packed() const;
    };

    explicit PatternAutomaton(const std::vector<PatternPiece>& pieces);

    // Whether there is no name at all that matches: a bad list, or a parameter that never gets any text.
    bool MatchesNothing() const { return matchesNothing_; }
    State Start() const;
    bool Accepts(const State& state) const;
    // Appends where a byte leads.
    void Step(const State& state, unsigned char byte, std::vector<State>& out) const;
    // Adds the bytes that it tells from others.
    void AddBytes(std::bitset<256>& bytes) const;

private:
    static constexpr std::uint16_t kInParameter = 0xFFFF;

    // The last of the parameters side by side, which is the only one that takes text; and the piece of text
    // behind it.
    struct Unit {
        ParseAndDepend::PatternType type = ParseAndDepend::PATTERN_CONST; // for none
        std::optional<NumberAutomaton> number;
        std::string text; // empty at the pattern's end alone, or in front of its first parameter
        std::vector<std::uint16_t> borders; // of each beginning of the text: its longest proper border

        void SetText(const std::string& value);
        std::uint16_t Overlap(std::uint16_t overlap, unsigned char byte) const;
        std::optional<std::uint32_t> Check(std::uint32_t check, unsigned char byte) const;
        bool IsGood(std::uint32_t check) const { return !number || number->Accepts(check); }
    };

    void AddParameter(const PatternPiece& piece, bool takesText);
    State Normal(State state) const;

    std::vector<Unit> units_; // the first one has no parameter
    bool matchesNothing_ = false;
};

} // namespace tool

#endif
