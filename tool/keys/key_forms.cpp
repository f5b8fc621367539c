#include "tool/keys/key_forms.h"

namespace tool {

namespace {

constexpr char kSignedBeyond[] = "text: 0; outside 32 bits: limits";
constexpr char kUnsignedBeyond[] = "text: 0; above 2147483647: limits; negative: wraps";
constexpr char kMapBeyond[] = "value that is no single value: empty text";

} // namespace

Row Text(const char* name, KeyGroup group, const char* meaning, Reading reading)
{
    return Row(name, KeyKind::TEXT, group, "string", meaning, reading)
        .Reads(R"("")")
        .Range("any text")
        .Beyond("any text is kept");
}

Row Account(const char* name, const char* range, const char* meaning)
{
    return Row(name, KeyKind::ACCOUNT, KeyGroup::OWNER, "string", meaning, {}).Reads(R"("")").Range(range);
}

Row Flag(const char* name, KeyGroup group, const char* meaning, Reading reading)
{
    return Row(name, KeyKind::FLAG, group, "flag", meaning, reading)
        .Reads("false")
        .Range("true, false")
        .Beyond("text without \"true\": false");
}

Row Signed(const char* name, KeyGroup group, const char* meaning, Reading reading)
{
    return Row(name, KeyKind::SIGNED, group, "integer", meaning, reading)
        .Reads("0")
        .Limits(-kMostSigned - 1, kMostSigned)
        .Range("-2147483648 to 2147483647")
        .Beyond(kSignedBeyond);
}

Row Unsigned(const char* name, KeyGroup group, const char* kindText, const char* absent, const char* meaning,
             Reading reading)
{
    return Row(name, KeyKind::UNSIGNED, group, kindText, meaning, reading)
        .Reads(absent, "0", "0")
        .Limits(0, kMostSigned)
        .Range("0 to 2147483647")
        .Beyond(kUnsignedBeyond);
}

Row TextList(const char* name, KeyGroup group, const char* range, const char* meaning, Reading reading)
{
    return Row(name, KeyKind::TEXT_LIST, group, "list of strings", meaning, reading).Reads("[]").Range(range);
}

Row Map(const char* name, KeyGroup group, const char* range, const char* meaning, Reading reading)
{
    return Row(name, KeyKind::MAP, group, "map", meaning, reading)
        .Reads("{}")
        .Range(range)
        .Beyond(kMapBeyond)
        .Warns();
}

} // namespace tool
