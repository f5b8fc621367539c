#include "tool/manual/roff_text.h"

#include <algorithm>
#include <cctype>

#include <fmt/format.h>

namespace tool {

namespace {

constexpr std::size_t kLineWidth = 79;

constexpr std::string_view kVariableCharacters = "ABCDEFGHIJKLMNOPQRSTUVWXYZ_";
constexpr std::string_view kWordCharacters = "abcdefghijklmnopqrstuvwxyz-";

// How many of these characters a text begins with.
std::size_t RunOf(std::string_view characters, std::string_view text)
{
    return std::min(text.find_first_not_of(characters), text.size());
}

// What roff shows as other characters than ASCII's in a text that is not literal: quotes, accents, hyphens.
std::string Escaped(std::string_view text, bool isLiteral)
{
    std::string out;
    for (const char c : text) {
        switch (c) {
        case '\\':
            out += "\\e";
            break;
        case '-':
            out += isLiteral ? "\\-" : "-";
            break;
        case '\'':
            out += isLiteral ? "\\(aq" : "'";
            break;
        case '`':
            out += "\\(ga";
            break;
        case '^':
            out += "\\(ha";
            break;
        case '~':
            out += "\\(ti";
            break;
        default:
            out += c;
        }
    }
    return out;
}

bool IsCode(std::string_view core)
{
    return (!core.empty() && core.front() == '-') ||
           core.find_first_of("/_=<>${}*|@#0123456789") != std::string_view::npos;
}

bool IsOption(std::string_view core)
{
    const std::size_t name = core.find_first_not_of('-');
    return (name == 1 || name == 2) && std::isalpha(static_cast<unsigned char>(core[name])) != 0;
}

// Where the number of a section begins: "startplan(5)".
std::size_t PageAt(std::string_view core)
{
    const std::size_t size = core.size();
    const bool isPage = size > 3 && core[size - 1] == ')' && core[size - 3] == '(' &&
                        core.substr(0, size - 3).find('(') == std::string_view::npos &&
                        std::isdigit(static_cast<unsigned char>(core[size - 2])) != 0;
    return isPage ? size - 3 : std::string_view::npos;
}

// A word in three parts: punctuation, what it is about, punctuation.
struct Word {
    std::string_view before;
    std::string_view core;
    std::string_view after;
};

Word Split(std::string_view text)
{
    const std::size_t begin = std::min(text.find_first_not_of("(\"["), text.size());
    std::size_t end = text.find_last_not_of(".,;:!?\")]");
    end = end == std::string_view::npos || end < begin ? begin : end + 1;
    if (text.substr(end, 1) == ")" && PageAt(text.substr(begin, end + 1 - begin)) != std::string_view::npos) {
        ++end;
    }
    return {text.substr(0, begin), text.substr(begin, end - begin), text.substr(end)};
}

std::string ProseWord(std::string_view text, const std::set<std::string>& variables, bool isQuoted)
{
    const Word word = Split(text);
    const std::size_t page = PageAt(word.core);
    std::string core;
    if (page != std::string_view::npos) {
        core = RoffBold(word.core.substr(0, page)) + std::string(word.core.substr(page));
    } else if (variables.count(std::string(word.core)) != 0) {
        core = RoffItalic(word.core);
    } else if (IsOption(word.core) && !isQuoted) {
        core = RoffBold(word.core);
    } else {
        core = Escaped(word.core, isQuoted || IsCode(word.core));
    }
    return Escaped(word.before, false) + core + Escaped(word.after, false);
}

// The words of a text as roff; what stands in backquotes is one word, with the punctuation beside it.
std::vector<std::string> ProseWords(std::string_view text, const std::set<std::string>& variables)
{
    std::vector<std::string> words;
    bool isQuoted = false;
    while (true) {
        text.remove_prefix(std::min(text.find_first_not_of(" \n"), text.size()));
        if (text.empty()) {
            return words;
        }
        const std::size_t open = text.substr(0, text.find_first_of(" \n")).find('`');
        if (open == std::string_view::npos) {
            const std::string_view word = text.substr(0, text.find_first_of(" \n"));
            const bool opens = word.front() == '"' || word.substr(0, 2) == "(\"";
            words.push_back(ProseWord(word, variables, isQuoted || opens));
            isQuoted = std::count(word.begin(), word.end(), '"') % 2 == 1 ? !isQuoted : isQuoted;
            text.remove_prefix(word.size());
            continue;
        }
        const std::size_t close = std::min(text.find('`', open + 1), text.size() - 1);
        const std::size_t end = std::min(text.find_first_of(" \n", close), text.size());
        words.push_back(Escaped(text.substr(0, open), false) +
                        RoffBold(text.substr(open + 1, close - open - 1)) +
                        Escaped(text.substr(close + 1, end - close - 1), false));
        text.remove_prefix(end);
    }
}

bool EndsSentence(std::string_view word)
{
    const std::size_t end = word.find_last_not_of("\")");
    return end != std::string_view::npos && end > 0 &&
           std::string_view(".?!").find(word[end]) != std::string_view::npos && word[end - 1] != '.';
}

} // namespace

std::string RoffLiteral(std::string_view text)
{
    return Escaped(text, true);
}

std::string RoffBold(std::string_view literal)
{
    return fmt::format("\\fB{}\\fR", RoffLiteral(literal));
}

std::string RoffItalic(std::string_view literal)
{
    return fmt::format("\\fI{}\\fR", RoffLiteral(literal));
}

std::vector<std::string> RoffProse(std::string_view text, const std::set<std::string>& variables)
{
    std::vector<std::string> lines;
    bool isNewLine = true;
    for (const std::string& word : ProseWords(text, variables)) {
        isNewLine = isNewLine || lines.back().size() + 1 + word.size() > kLineWidth;
        if (isNewLine) {
            // At the start of a line these two would begin a request.
            const bool isRequest = word.front() == '.' || word.front() == '\'';
            lines.push_back(isRequest ? "\\&" + word : word);
        } else {
            lines.back() += " " + word;
        }
        isNewLine = EndsSentence(word);
    }
    return lines;
}

std::string RoffUsage(std::string_view usage)
{
    std::string out;
    while (!usage.empty()) {
        const std::size_t variable = RunOf(kVariableCharacters, usage);
        const std::size_t word = RunOf(kWordCharacters, usage);
        if (variable > 0) {
            out += RoffItalic(usage.substr(0, variable));
        } else if (word > 0) {
            out += RoffBold(usage.substr(0, word));
        } else {
            out += RoffLiteral(usage.substr(0, 1));
        }
        usage.remove_prefix(std::max<std::size_t>({variable, word, 1}));
    }
    return out;
}

std::set<std::string> RoffVariables(std::string_view usage)
{
    std::set<std::string> variables;
    while (!usage.empty()) {
        const std::size_t length = RunOf(kVariableCharacters, usage);
        if (length > 0) {
            variables.emplace(usage.substr(0, length));
        }
        usage.remove_prefix(std::max<std::size_t>(length, 1));
    }
    return variables;
}

std::string InCapitals(std::string_view text)
{
    std::string capitals(text);
    std::transform(capitals.begin(), capitals.end(), capitals.begin(),
                   [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    return capitals;
}

} // namespace tool
