#ifndef STARTPLAN_TESTS_SUPPORT_NEXT_FUNCTION_H
#define STARTPLAN_TESTS_SUPPORT_NEXT_FUNCTION_H

#include <cstdlib>
#include <cstring>

#include <dlfcn.h>

namespace test_support {

// The function of this name that the program would call, had it not defined one itself.
template <typename Function>
Function NextFunction(const char* name)
{
    void* const symbol = dlsym(RTLD_NEXT, name);
    if (symbol == nullptr) {
        std::abort();
    }
    Function function = nullptr;
    static_assert(sizeof function == sizeof symbol);
    std::memcpy(&function, &symbol, sizeof function);
    return function;
}

} // namespace test_support

#endif
