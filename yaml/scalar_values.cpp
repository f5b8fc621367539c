#include <algorithm>
#include <cctype>
#include <charconv>
#include <cstdint>
#include <limits>
#include <sstream>
#include <string>
#include <string_view>
#include <system_error>

#include "startplan/kvs_type_yaml.h"
#include "yaml/node_ref.h"
#include "yaml/node_text.h"

namespace {

bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}

// Texts of a sign and digits read the same under every locale; digit grouping, odd white space and what
// may follow a number are the locale's business.
bool IsPlainNumber(std::string_view text)
{
    if (text.front() == '-' || text.front() == '+') {
        text.remove_prefix(1);
    }
    return !text.empty() && std::all_of(text.begin(), text.end(), IsDigit);
}

// The formatted extraction that defines what any other text is worth.
template <class Number>
Number ExtractNumber(std::string_view text)
{
    Number value = 0; // what text of white space only leaves as it is
    // Written into the stream, the text could make libc++ throw something else where no memory is left.
    std::istringstream stream{std::string(text)};
    // Else the stream would swallow a std::bad_alloc, and the number would quietly be 0.
    stream.exceptions(std::ios_base::badbit);
    stream >> value;
    return value;
}

// The value of text that IsPlainNumber(), with the limits that the extraction sets: a signed number stops
// at the nearest limit; an unsigned one at the upper limit, and below it a minus negates modulo its range.
template <class Number>
Number PlainNumber(std::string_view text)
{
    using Limits = std::numeric_limits<Number>;
    const bool negative = text.front() == '-';
    const bool signGiven = negative || text.front() == '+';
    std::uint64_t magnitude = 0;
    const std::from_chars_result read =
        std::from_chars(text.data() + (signGiven ? 1 : 0), text.data() + text.size(), magnitude);
    if (read.ec == std::errc::result_out_of_range || magnitude > static_cast<std::uint64_t>(Limits::max())) {
        // The lower limit of a signed number is one further from zero, and the same whether read or cut.
        return negative && Limits::is_signed ? Limits::min() : Limits::max();
    }
    const Number value = static_cast<Number>(magnitude);
    return negative ? static_cast<Number>(Number{0} - value) : value;
}

template <class Number>
Number StrToNum(std::string_view text)
{
    if (text.empty()) {
        return 0;
    }
    return IsPlainNumber(text) ? PlainNumber<Number>(text) : ExtractNumber<Number>(text);
}

} // namespace

namespace startplan {

std::string_view ScalarText(const yaml_node_t& node)
{
    return NodeText(node);
}

int ScalarInt(const yaml_node_t& node)
{
    return StrToNum<int>(NodeText(node));
}

std::uint64_t ScalarUint64(const yaml_node_t& node)
{
    return StrToNum<std::uint64_t>(NodeText(node));
}

std::uint32_t TextUint32(std::string_view text)
{
    return StrToNum<std::uint32_t>(text);
}

bool ScalarBool(const yaml_node_t& node)
{
    static constexpr std::string_view kTrue = "true";
    const std::string_view text = NodeText(node);
    const auto lowerIsSame = [](char written, char lower) {
        return std::tolower(static_cast<unsigned char>(written)) == static_cast<unsigned char>(lower);
    };
    return std::search(text.begin(), text.end(), kTrue.begin(), kTrue.end(), lowerIsSame) != text.end();
}

bool IsNullScalar(const yaml_node_t& node)
{
    return node.type == YAML_SCALAR_NODE && NodeText(node).empty();
}

} // namespace startplan

namespace ProcMgr {

std::string KvsTypeYaml::GetKey() const
{
    return key;
}

std::string KvsTypeYaml::GetString() const
{
    return std::string(startplan::ScalarText(node));
}

int KvsTypeYaml::GetInt() const
{
    return startplan::ScalarInt(node);
}

std::uint64_t KvsTypeYaml::GetUint64() const
{
    return startplan::ScalarUint64(node);
}

bool KvsTypeYaml::GetBool() const
{
    return startplan::ScalarBool(node);
}

bool KvsTypeYaml::GetIsNullOfScalarType() const
{
    return startplan::IsNullScalar(node);
}

} // namespace ProcMgr
