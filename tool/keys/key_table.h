#ifndef STARTPLAN_TOOL_KEYS_KEY_TABLE_H
#define STARTPLAN_TOOL_KEYS_KEY_TABLE_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "startplan/application_manifest.h"
#include "tool/command_line/session.h"

namespace tool {

enum class FileKind : std::uint8_t { STARTUP, TOP_LEVEL, REPLACE };

// By which rule the library makes a value of what stands behind a key.
enum class KeyKind : std::uint8_t {
    TEXT,        // as written
    ACCOUNT,     // a name that is looked up on the device
    FLAG,        // true if the text contains "true"
    SWITCH,      // a text in lower case, on if it is "true"
    SIGNED,      // leading decimal digits, within 32 bits
    UNSIGNED,    // read as SIGNED, then taken as unsigned
    HEXADECIMAL, // leading hexadecimal digits, the low 32 bits
    PRIORITY,    // read as SIGNED; a marker for what is out of range
    POLICY,      // one of some words, or else the first of them
    DEVICE_ID,   // read twice: as SIGNED and as TEXT
    TEXT_LIST,
    NUMBER_LIST, // each item decimal, unsigned
    MAP,         // of names to texts
    ACCESS_MAP,  // of names to one of some words
};

enum class KeyGroup : std::uint8_t {
    PROGRAM,
    OWNER,
    LIFE,
    DEPENDENCIES,
    SCHEDULING,
    RESOURCES,
    SUPERVISION,
    FAMILY,
    MIDDLEWARE,
    FILES,
};

// One key of one kind of file: all that the command knows about it.
struct Key {
    const char* name = "";
    KeyKind kind = KeyKind::TEXT;
    KeyGroup group = KeyGroup::PROGRAM;
    const char* kindText = "";
    const char* meaning = ""; // one line

    // What the library reads, as JSON, in the form in which the setting's value is shown.
    const char* absent = "";   // the key is left out
    const char* empty = "";    // nothing or "" behind it
    const char* misfit = "";   // a list or mapping for one value, or anything but a list or mapping for those
    bool isNeeded = false;     // whether an entry is skipped without it
    bool warnsOfEmpty = false; // whether the library logs a warning for the latter two
    std::int64_t least = 0;    // of numbers, as they can be written plainly
    std::int64_t most = 0;     // likewise; the number of items of a list, 0 for any
    std::vector<const char*> words; // the only ones allowed

    // The manual's words where they do not follow from the rest.
    const char* absentText = nullptr;
    const char* emptyText = nullptr;
    const char* range = "";  // what can be written plainly
    const char* beyond = ""; // clauses "WRITTEN: READ" for everything else, with "; " between them

    // The record's value that the key is read into; none for a key that only takes part in another one.
    const char* getter = nullptr; // "GetBinPath"
    Json (*value)(const ApplicationManifest& app) = nullptr;
    std::vector<const char*>
        standIns; // the keys that decide this value without this key, the strongest first
};

// In the order in which the library reads them.
const std::vector<Key>& KeysOf(FileKind kind);

// Null for an unknown name.
const Key* FindKey(FileKind kind, std::string_view name);

// Where a key stands in the list of its kind.
std::size_t PlaceOf(FileKind kind, const Key& key);

// The key of that kind with the nearest name; empty where none is near.
std::string NearestKey(FileKind kind, std::string_view name);

// Whether the name is one of the user's own, which begin with "x-": the library ignores them, and the command
// says nothing about them.
bool IsOwnKey(std::string_view name);

bool IsNumber(KeyKind kind);
bool IsList(KeyKind kind);
bool IsMap(KeyKind kind);
// A single value, whatever it is read as.
inline bool IsScalar(KeyKind kind)
{
    return !IsList(kind) && !IsMap(kind);
}

// "Owner" and so on.
const char* TitleOf(KeyGroup group);

} // namespace tool

#endif
