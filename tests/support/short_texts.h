#ifndef STARTPLAN_TESTS_SUPPORT_SHORT_TEXTS_H
#define STARTPLAN_TESTS_SUPPORT_SHORT_TEXTS_H

#include <cstddef>
#include <string>
#include <vector>

namespace test_support {

// Every text of up to `most` characters of an alphabet, the empty one first.
inline std::vector<std::string> EveryText(const std::string& alphabet, std::size_t most)
{
    std::vector<std::string> texts = {""};
    std::size_t shorter = 0; // where those begin that are one character shorter
    for (std::size_t length = 1; length <= most; ++length) {
        const std::size_t end = texts.size();
        for (; shorter < end; ++shorter) {
            for (const char c : alphabet) {
                texts.push_back(texts[shorter] + c);
            }
        }
    }
    return texts;
}

} // namespace test_support

#endif
