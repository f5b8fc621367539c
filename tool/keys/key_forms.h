#ifndef STARTPLAN_TOOL_KEYS_KEY_FORMS_H
#define STARTPLAN_TOOL_KEYS_KEY_FORMS_H

#include <cstdint>
#include <utility>
#include <vector>

#include "tool/keys/key_table.h"

namespace tool {

constexpr std::int64_t kMostSigned = 2147483647; // in 32 bits

// Where the record keeps a value.
struct Reading {
    const char* getter = nullptr;
    Json (*value)(const ApplicationManifest& app) = nullptr;
};

// A key under construction: the rows of the table say what is special about it, the functions below what
// is common to all keys of a kind.
struct Row : Key {
    Row(const char* itsName, KeyKind itsKind, KeyGroup itsGroup, const char* itsKindText,
        const char* itsMeaning, Reading reading)
    {
        name = itsName;
        kind = itsKind;
        group = itsGroup;
        kindText = itsKindText;
        meaning = itsMeaning;
        getter = reading.getter;
        value = reading.value;
    }
    Row Reads(const char* whenAbsent, const char* whenEmpty, const char* whenMisfit) &&
    {
        absent = whenAbsent;
        empty = whenEmpty;
        misfit = whenMisfit;
        return std::move(*this);
    }
    Row Reads(const char* always) && { return std::move(*this).Reads(always, always, always); }
    Row Limits(std::int64_t itsLeast, std::int64_t itsMost) &&
    {
        least = itsLeast;
        most = itsMost;
        return std::move(*this);
    }
    Row Range(const char* itsRange) &&
    {
        range = itsRange;
        return std::move(*this);
    }
    Row Beyond(const char* clauses) &&
    {
        beyond = clauses;
        return std::move(*this);
    }
    Row Words(std::vector<const char*> itsWords) &&
    {
        words = std::move(itsWords);
        return std::move(*this);
    }
    Row Told(const char* ofAbsent, const char* ofEmpty) &&
    {
        absentText = ofAbsent;
        emptyText = ofEmpty;
        return std::move(*this);
    }
    Row Needed() &&
    {
        isNeeded = true;
        return std::move(*this);
    }
    Row Warns() &&
    {
        warnsOfEmpty = true;
        return std::move(*this);
    }
    Row StandIns(std::vector<const char*> keys) &&
    {
        standIns = std::move(keys);
        return std::move(*this);
    }
};

Row Text(const char* name, KeyGroup group, const char* meaning, Reading reading);
Row Account(const char* name, const char* range, const char* meaning);
Row Flag(const char* name, KeyGroup group, const char* meaning, Reading reading);
Row Signed(const char* name, KeyGroup group, const char* meaning, Reading reading);
Row Unsigned(const char* name, KeyGroup group, const char* kindText, const char* absent, const char* meaning,
             Reading reading);
Row TextList(const char* name, KeyGroup group, const char* range, const char* meaning, Reading reading = {});
Row Map(const char* name, KeyGroup group, const char* range, const char* meaning, Reading reading = {});

} // namespace tool

#endif
