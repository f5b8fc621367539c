#ifndef STARTPLAN_TOOL_CHECK_CHECK_NUMBERS_H
#define STARTPLAN_TOOL_CHECK_CHECK_NUMBERS_H

#include <string>

#include "tool/check/finding.h"
#include "tool/check/keyed_mapping.h"
#include "tool/keys/key_table.h"
#include "tool/keys/library_values.h"

namespace tool {

// The rules about numbers: what is none, what lies out of range, what is read to another base.
class NumberCheck {
public:
    NumberCheck(LibraryValues& values, Findings& findings) : values_(values), findings_(findings) {}

    // A single value that is not empty.
    void Check(const KeyedMapping& entry, const Key& key, const NodeUse& value);
    // The items of a list of numbers.
    void CheckItems(const KeyedMapping& entry, const Key& key, const NodeUse& list);

private:
    // One number: a key's value or an item, and what the library reads.
    struct Number;

    void CheckDecimal(const Number& number);
    void CheckHexadecimal(const Number& number);
    void CheckPriority(const Number& number);
    void AddGarbage(const Number& number, const char* what);
    void AddOutOfRange(const Number& number);
    // An error where the mistake makes root of an owner.
    void AddMistake(const Number& number, const Rule& rule, std::string message, std::string effect,
                    std::string help);
    void Add(const Number& number, const Rule& rule, std::string message, std::string effect,
             std::string help);

    LibraryValues& values_;
    Findings& findings_;
};

} // namespace tool

#endif
