#include "tool/check/check_numbers.h"

#include <string_view>
#include <utility>

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include "tool/rules/rules_entries.h"
#include "tool/rules/rules_values.h"
#include "tool/text/number_text.h"
#include "tool/text/printable.h"

namespace tool {

namespace {

std::string RangeHelp(const Key& key)
{
    return fmt::format("write a number from {} to {}", key.least, key.most);
}

} // namespace

struct NumberCheck::Number {
    const KeyedMapping& entry;
    const Key& key;
    const NodeUse& use;
    Json read;
    NumberText text;
};

void NumberCheck::Check(const KeyedMapping& entry, const Key& key, const NodeUse& value)
{
    const std::string_view text = entry.file->Text(value);
    const bool isHexadecimal = key.kind == KeyKind::HEXADECIMAL;
    const NumberText number = ReadNumberText(text, isHexadecimal ? 16 : 10);
    // Most numbers are plain ones: the library is not asked about them.
    const bool isPlain = number.isWhole && number.hasPrefix == isHexadecimal && number.value >= key.least &&
                         number.value <= key.most;
    if (isPlain) {
        return;
    }
    const Json read = values_.Read(entry.entry, key);
    const bool isSkipped = key.name == std::string_view("uid") && read == 4294967295U;
    if (isSkipped) {
        return; // the entry is incomplete
    }
    const Number one{entry, key, value, read, number};
    if (isHexadecimal) {
        CheckHexadecimal(one);
    } else if (key.kind == KeyKind::PRIORITY) {
        CheckPriority(one);
    } else {
        CheckDecimal(one);
    }
}

void NumberCheck::CheckItems(const KeyedMapping& entry, const Key& key, const NodeUse& list)
{
    const NodeUses items = entry.file->Items(list);
    Json read;
    for (std::size_t i = 0; i < items.size; ++i) {
        const std::string_view text = entry.file->Text(items[i]);
        const NumberText number = ReadNumberText(text, 10);
        const bool isPlain =
            number.isWhole && !number.hasPrefix && number.value >= key.least && number.value <= key.most;
        if (isPlain || entry.file->Kind(items[i]) != NodeKind::SCALAR) {
            continue;
        }
        if (read.is_null()) {
            read = values_.Read(entry.entry, key);
        }
        const Number one{entry, key, items[i], i < read.size() ? read[i] : Json(0), number};
        if (text.empty()) {
            Add(one, kEmptyValue, fmt::format("item {} of \"{}\" is empty", i + 1, key.name),
                fmt::format("it is read as {}", ReadWords(key, one.read)),
                "write a number, or take the item out");
            continue;
        }
        CheckDecimal(one);
    }
}

void NumberCheck::CheckDecimal(const Number& number)
{
    const std::string_view text = number.entry.file->Text(number.use);
    if (number.text.isWhole && number.text.hasPrefix) {
        AddMistake(
            number, kHexSurprise,
            fmt::format("{} is hexadecimal, and \"{}\" is read as decimal", Quoted(text), number.key.name),
            fmt::format("it is read as {}: reading stops at the \"x\"", ReadWords(number.key, number.read)),
            fmt::format("write {}", number.text.value));
    } else if (number.text.isWhole) {
        AddOutOfRange(number);
    } else if (number.key.kind != KeyKind::DEVICE_ID) {
        AddGarbage(number, "whole number");
    }
}

void NumberCheck::CheckHexadecimal(const Number& number)
{
    const std::string_view text = number.entry.file->Text(number.use);
    constexpr std::size_t kMostDigits = 8;
    if (!number.text.isWhole) {
        AddGarbage(number, "hexadecimal number");
        return;
    }
    if (number.text.value < 0 || number.text.digits > kMostDigits) {
        AddOutOfRange(number);
        return;
    }
    const NumberText decimal = ReadNumberText(text, 10);
    if (decimal.isWhole && !decimal.hasPrefix && number.text.digits > 1) {
        Add(number, kHexSurprise, fmt::format("{} is read as hexadecimal", Quoted(text)),
            fmt::format("the node type is {}", ReadWords(number.key, number.read)),
            fmt::format("write 0x{:X} if {} is meant, or else 0x{:X}", decimal.value, decimal.value,
                        number.text.value));
    }
}

void NumberCheck::CheckPriority(const Number& number)
{
    const std::string_view text = number.entry.file->Text(number.use);
    const std::string help = fmt::format("write a number from {} to {}, or leave the key out for none",
                                         number.key.least, number.key.most);
    if (!number.text.isWhole || number.text.hasPrefix) {
        Add(number, kPriorityNotNumber, fmt::format("{} is no number", Quoted(text)),
            fmt::format("it is read as {}", ReadWords(number.key, number.read)), help);
        return;
    }
    Add(number, kPriorityRange,
        fmt::format("{} is not in {} to {}", Quoted(text), number.key.least, number.key.most),
        fmt::format("the library logs a warning and reads {}, which stands for none",
                    ReadWords(number.key, number.read)),
        help);
}

void NumberCheck::AddGarbage(const Number& number, const char* what)
{
    const std::string_view text = number.entry.file->Text(number.use);
    AddMistake(number, kNumberGarbage, fmt::format("{} is no {}", Quoted(text), what),
               fmt::format("it is read as {}: reading stops at the first character that is no digit",
                           ReadWords(number.key, number.read)),
               number.key.group == KeyGroup::OWNER
                   ? "write the number; names go behind \"user_name\" and \"group_name\""
                   : "write digits alone");
}

void NumberCheck::AddOutOfRange(const Number& number)
{
    const std::string_view text = number.entry.file->Text(number.use);
    const bool wraps =
        number.key.kind == KeyKind::HEXADECIMAL || (number.key.least == 0 && number.text.value < 0);
    const std::string help = number.key.kind == KeyKind::HEXADECIMAL
                                 ? fmt::format("write a number from 0x0 to 0x{:X}", number.key.most)
                                 : RangeHelp(number.key);
    if (wraps) {
        Add(number, kNumberWraps, fmt::format("{} does not fit \"{}\"", Quoted(text), number.key.name),
            fmt::format("it becomes {}, without a message", ReadWords(number.key, number.read)), help);
        return;
    }
    const char* how = number.text.value < 0 ? "small" : "large";
    Add(number, kNumberSaturates, fmt::format("{} is too {} for \"{}\"", Quoted(text), how, number.key.name),
        fmt::format("it becomes {}, the nearest number there is, without a message",
                    ReadWords(number.key, number.read)),
        help);
}

void NumberCheck::AddMistake(const Number& number, const Rule& rule, std::string message, std::string effect,
                             std::string help)
{
    Finding finding =
        FindingAt(number.entry, rule, number.use, std::move(message), std::move(effect), std::move(help));
    finding.least = IsRoot(number.key, number.read) ? Level::ERROR : Level::OFF;
    findings_.Add(std::move(finding));
}

void NumberCheck::Add(const Number& number, const Rule& rule, std::string message, std::string effect,
                      std::string help)
{
    findings_.Add(
        FindingAt(number.entry, rule, number.use, std::move(message), std::move(effect), std::move(help)));
}

} // namespace tool
