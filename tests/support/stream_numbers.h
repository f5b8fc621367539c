#ifndef STARTPLAN_TESTS_SUPPORT_STREAM_NUMBERS_H
#define STARTPLAN_TESTS_SUPPORT_STREAM_NUMBERS_H

#include <locale>
#include <sstream>
#include <string>

namespace test_support {

// The plain model of every number in a configuration: what a fresh string stream makes of the text. A text
// of nothing but white space leaves the variable unwritten, hence 0.
template <typename Number>
Number StreamNumber(const std::string& text)
{
    std::stringstream stream;
    stream << text;
    Number value = 0;
    stream >> value;
    return value;
}

// While the object lives, the global C++ locale groups digits by three with commas.
class GroupedDigits {
public:
    GroupedDigits() : before_(std::locale::global(std::locale(std::locale::classic(), new Punctuation))) {}
    GroupedDigits(const GroupedDigits&) = delete;
    GroupedDigits& operator=(const GroupedDigits&) = delete;
    ~GroupedDigits() { std::locale::global(before_); }

private:
    class Punctuation : public std::numpunct<char> {
    protected:
        std::string do_grouping() const override { return "\3"; }
        char do_thousands_sep() const override { return ','; }
    };

    std::locale before_;
};

} // namespace test_support

#endif
