#include "tool/patterns/pattern_automaton.h"

namespace tool {

namespace {

// Of a path's text: behind a dot, another one must not follow.
constexpr std::uint32_t kBehindDot = 1;

bool IsDigit(unsigned char byte)
{
    return byte >= '0' && byte <= '9';
}

} // namespace

std::uint64_t PatternAutomaton::State::Packed() const
{
    // A unit takes two bytes of a pattern at the least, and an overlap is shorter than the longest name.
    return (std::uint64_t{unit} << 54U) | ((std::uint64_t{read} & 0x7FFU) << 43U) |
           (std::uint64_t{overlap} << 32U) | check;
}

PatternAutomaton::PatternAutomaton(const std::vector<PatternPiece>& pieces) : units_(1)
{
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        if (pieces[i].IsText()) {
            units_.back().SetText(pieces[i].text);
        } else {
            AddParameter(pieces[i], i + 1 == pieces.size() || pieces[i + 1].IsText());
        }
    }
}

void PatternAutomaton::AddParameter(const PatternPiece& piece, bool takesText)
{
    const auto intervals = piece.IsNumber() ? ReadIntervals(piece.text) : std::nullopt;
    if (piece.IsNumber() && !intervals) {
        matchesNothing_ = true;
        return;
    }
    if (!takesText) {
        matchesNothing_ = matchesNothing_ || (piece.IsNumber() && !HoldsZero(piece.text));
        return;
    }
    Unit unit;
    unit.type = piece.type;
    if (intervals) {
        unit.number.emplace(*intervals);
    }
    units_.push_back(std::move(unit));
}

void PatternAutomaton::Unit::SetText(const std::string& value)
{
    text = value;
    borders.assign(text.size() + 1, 0);
    for (std::size_t i = 1; i < text.size(); ++i) {
        std::uint16_t border = borders[i];
        while (border > 0 && text[border] != text[i]) {
            border = borders[border];
        }
        borders[i + 1] = text[border] == text[i] ? static_cast<std::uint16_t>(border + 1) : border;
    }
}

std::uint16_t PatternAutomaton::Unit::Overlap(std::uint16_t overlap, unsigned char byte) const
{
    while (overlap > 0 && static_cast<unsigned char>(text[overlap]) != byte) {
        overlap = borders[overlap];
    }
    return static_cast<unsigned char>(text[overlap]) == byte ? static_cast<std::uint16_t>(overlap + 1)
                                                             : overlap;
}

std::optional<std::uint32_t> PatternAutomaton::Unit::Check(std::uint32_t check, unsigned char byte) const
{
    if (number) {
        if (!IsDigit(byte)) {
            return std::nullopt;
        }
        const NumberAutomaton::State next = number->Next(check, byte - '0');
        return next == NumberAutomaton::kDead ? std::nullopt : std::optional<std::uint32_t>(next);
    }
    if (type != ParseAndDepend::PATTERN_PATH || byte != '.') {
        return 0;
    }
    return check == kBehindDot ? std::nullopt : std::optional<std::uint32_t>(kBehindDot);
}

// Behind a whole piece of text, the parameter that follows it begins.
PatternAutomaton::State PatternAutomaton::Normal(State state) const
{
    const bool isWhole = state.read == units_[state.unit].text.size();
    if (isWhole && state.unit + 1U < units_.size()) {
        return {static_cast<std::uint16_t>(state.unit + 1), kInParameter, 0, NumberAutomaton::kStart};
    }
    return state;
}

PatternAutomaton::State PatternAutomaton::Start() const
{
    return Normal({});
}

bool PatternAutomaton::Accepts(const State& state) const
{
    const Unit& unit = units_[state.unit];
    if (state.unit + 1U < units_.size()) {
        return false;
    }
    return state.read == kInParameter ? unit.text.empty() && unit.IsGood(state.check)
                                      : state.read == unit.text.size();
}

void PatternAutomaton::Step(const State& state, unsigned char byte, std::vector<State>& out) const
{
    const Unit& unit = units_[state.unit];
    if (state.read == unit.text.size() && state.read != kInParameter) {
        out.push_back(state); // behind the last piece of text
        return;
    }
    const bool hasText = !unit.text.empty();
    const bool hasOverlap = hasText && unit.type != ParseAndDepend::PATTERN_CONST;
    const std::uint16_t overlap = hasOverlap ? unit.Overlap(state.overlap, byte) : std::uint16_t{0};
    const bool isWhole = hasOverlap && overlap == unit.text.size();
    const bool isInParameter = state.read == kInParameter;
    const std::size_t read = isInParameter ? 0 : state.read;

    const bool mayRead = hasText && (!isInParameter || unit.IsGood(state.check));
    if (mayRead && static_cast<unsigned char>(unit.text[read]) == byte &&
        (!isWhole || read + 1 == unit.text.size())) {
        out.push_back(Normal({state.unit, static_cast<std::uint16_t>(read + 1), overlap, 0}));
    }
    if (isInParameter && !isWhole) {
        if (const auto check = unit.Check(state.check, byte)) {
            out.push_back({state.unit, kInParameter, overlap, *check});
        }
    }
}

void PatternAutomaton::AddBytes(std::bitset<256>& bytes) const
{
    for (const Unit& unit : units_) {
        for (const char c : unit.text) {
            bytes.set(static_cast<unsigned char>(c));
        }
        if (unit.type == ParseAndDepend::PATTERN_PATH) {
            bytes.set('.');
        }
        for (unsigned char digit = '0'; unit.number && digit <= '9'; ++digit) {
            bytes.set(digit);
        }
    }
}

} // namespace tool
