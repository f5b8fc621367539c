#ifndef STARTPLAN_TESTS_SUPPORT_PLAIN_PATTERNS_H
#define STARTPLAN_TESTS_SUPPORT_PLAIN_PATTERNS_H

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <map>
#include <string>

#include <syslog.h>

#include "startplan/parse_and_depend.h"
#include "tests/support/log_capture.h"

namespace test_support {

// The pattern operations of ParseAndDepend, step by step on copied strings: the result, and the log lines
// on the way to it.
class PlainPatterns {
public:
    using SplitedStr = ParseAndDepend::SplitedStr;
    using Intervals = std::map<std::uint32_t, std::uint32_t>;

    explicit PlainPatterns(Lines& log) : log_(log) {}

    bool IsDynamicPara(const std::string& para) const
    {
        const std::size_t open = para.find('<');
        const std::size_t close = para.find('>');
        return open != std::string::npos && close != std::string::npos && open < close;
    }

    bool IsDynamicParaMatch(const std::string& pattern, const std::string& str) const
    {
        if (!HasGoodLength(pattern) || !HasGoodLength(str)) {
            Log("ParseAndDepend IsDynamicParaMatch: dynamic para invalid, pattern=" +
                std::to_string(pattern.size()) + ", str=" + std::to_string(str.size()));
            return false;
        }
        SplitedStr split;
        SplitPattern(pattern, split);
        if (!SplitPara(str, split)) {
            return false;
        }
        for (std::size_t i = 0; i < split.patternTypes.size(); ++i) {
            if (!Check(split.patternTypes[i], split.patternStrs[i], split.paraStrs[i])) {
                return false;
            }
        }
        return true;
    }

    void SplitPattern(const std::string& pattern, SplitedStr& out) const
    {
        std::string rest = pattern;
        while (!rest.empty()) {
            const std::size_t open = rest.find('<');
            const std::size_t close = rest.find('>');
            if (open == std::string::npos || close == std::string::npos || close <= open) {
                Append(out, ParseAndDepend::PATTERN_CONST, rest);
                return;
            }
            if (open > 0) {
                Append(out, ParseAndDepend::PATTERN_CONST, rest.substr(0, open));
            }
            const std::string inner = rest.substr(open + 1, close - open - 1);
            Append(out, KindOf(inner), inner);
            rest.erase(0, close + 1);
        }
    }

    bool SplitPara(const std::string& str, SplitedStr& split) const
    {
        const std::size_t count = split.patternTypes.size();
        split.paraStrs.resize(count);
        std::string rest = str;
        for (std::size_t i = 0; i < count; ++i) {
            if (split.patternTypes[i] != ParseAndDepend::PATTERN_CONST) {
                continue;
            }
            const std::string literal = split.patternStrs[i];
            const std::size_t found = rest.find(literal);
            if (found == std::string::npos || (i == 0 && found != 0)) {
                return false;
            }
            split.paraStrs[i] = literal;
            if (i > 0 && found != 0) {
                split.paraStrs[i - 1] = rest.substr(0, found);
            }
            rest.erase(0, found + literal.size());
        }
        if (!rest.empty() && count > 0) {
            split.paraStrs[count - 1] = rest;
        }
        return true;
    }

    bool CheckNumTypePara(const std::string& patternPiece, const std::string& strPiece) const
    {
        Intervals intervals;
        if (!GetIntervals(patternPiece, intervals)) {
            Log("ParseAndDepend CheckNumTypePara: GetIntervals fail, " + patternPiece);
            return false;
        }
        std::uint32_t num = 0;
        return StrToUint32(strPiece, num) && IsNumInRange(intervals, num);
    }

    bool GetIntervals(std::string text, Intervals& intervals) const
    {
        if (text.empty()) {
            intervals[0] = kTop;
            return true;
        }
        while (!text.empty()) {
            const std::size_t comma = text.find(',');
            std::uint32_t start = 0;
            std::uint32_t end = kTop;
            if (!ReadItem(text.substr(0, comma), start, end) || !InsertIntervals(intervals, start, end)) {
                return false;
            }
            text.erase(0, comma == std::string::npos ? text.size() : comma + 1);
        }
        MergeIntervals(intervals);
        return true;
    }

    bool InsertIntervals(Intervals& intervals, std::uint32_t start, std::uint32_t end) const
    {
        if (start > end) {
            return false;
        }
        const auto same = intervals.find(start);
        if (same == intervals.end()) {
            intervals[start] = end;
        } else {
            same->second = std::max(same->second, end);
        }
        return true;
    }

    void MergeIntervals(Intervals& intervals) const
    {
        if (intervals.size() < 2) {
            return;
        }
        auto current = intervals.begin();
        while (std::next(current) != intervals.end()) {
            const auto next = std::next(current);
            const auto reach = static_cast<std::uint32_t>(current->second + 1U); // wraps behind the top
            if (next->first <= reach) {
                current->second = std::max(current->second, next->second);
                intervals.erase(next);
            } else {
                current = next;
            }
        }
    }

    bool IsNumInRange(const Intervals& intervals, std::uint32_t num) const
    {
        for (const auto& [start, end] : intervals) {
            if (start <= num && num <= end) {
                return true;
            }
        }
        return false;
    }

    bool StrToUint32(const std::string& str, std::uint32_t& num) const
    {
        std::uint64_t value = 0;
        for (const char c : str) {
            if (c < '0' || c > '9') {
                Log("ParseAndDepend StrToUint32: dynamic para invalid, " + str);
                return false;
            }
            value = value * 10 + static_cast<std::uint64_t>(c - '0');
            if (value > kTop) {
                Log("ParseAndDepend StrToUint32: dynamic para out of range, " + str);
                return false;
            }
        }
        num = static_cast<std::uint32_t>(value);
        return true;
    }

private:
    static constexpr std::uint32_t kTop = 4294967295;

    static bool HasGoodLength(const std::string& text) { return text.size() >= 1 && text.size() <= 1024; }

    static void Append(SplitedStr& out, ParseAndDepend::PatternType type, const std::string& text)
    {
        out.patternTypes.push_back(type);
        out.patternStrs.push_back(text);
    }

    static ParseAndDepend::PatternType KindOf(const std::string& inner)
    {
        if (inner == "*PATH") {
            return ParseAndDepend::PATTERN_PATH;
        }
        return inner == "*" ? ParseAndDepend::PATTERN_ANY : ParseAndDepend::PATTERN_NUM;
    }

    bool Check(ParseAndDepend::PatternType type, const std::string& patternPiece,
               const std::string& strPiece) const
    {
        if (type == ParseAndDepend::PATTERN_NUM) {
            return CheckNumTypePara(patternPiece, strPiece);
        }
        return type != ParseAndDepend::PATTERN_PATH || strPiece.find("..") == std::string::npos;
    }

    // `start` and `end` come in as what they are where a range leaves them out.
    bool ReadItem(const std::string& item, std::uint32_t& start, std::uint32_t& end) const
    {
        const std::size_t dash = item.find('-');
        if (dash == std::string::npos) {
            const bool isNumber = StrToUint32(item, start);
            end = start;
            return isNumber;
        }
        if (dash > 0 && !StrToUint32(item.substr(0, dash), start)) {
            return false;
        }
        return dash + 1 == item.size() || StrToUint32(item.substr(dash + 1), end);
    }

    // A text ends at its first zero byte, as printf sees it.
    void Log(const std::string& text) const { log_.push_back({LOG_ERR, text.c_str(), {}}); }

    Lines& log_;
};

} // namespace test_support

#endif
