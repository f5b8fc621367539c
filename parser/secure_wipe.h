#ifndef STARTPLAN_PARSER_SECURE_WIPE_H
#define STARTPLAN_PARSER_SECURE_WIPE_H

#include <cerrno>
#include <cstddef>
#include <cstring>

#include <string.h>

// Defined by a C library that has the bounds-checked functions and was asked for them, which the build
// does by __STDC_WANT_LIB_EXT1__.
#ifndef __STDC_LIB_EXT1__
// The C library lacks the bounds-checked fill. Like the standard's, it fills even what nobody reads
// again; unlike it, it knows one value to fill with, which is all that wiping needs.
inline int memset_s(void* destination, std::size_t size, int value, std::size_t count)
{
    if (destination == nullptr || value != 0 || count > size) {
        return EINVAL;
    }
    explicit_bzero(destination, count);
    return 0;
}
#endif

#endif
