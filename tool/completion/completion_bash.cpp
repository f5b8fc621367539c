#include "tool/completion/completion_scripts.h"

#include <set>

#include <fmt/format.h>

namespace tool {

namespace {

// The line as the shell has it is cut at "=" and ":", too: it is put together again, without its quotes, and
// the current word's part that the shell takes for a word of its own is cut off the answers.
constexpr char kBashHead[] =
    R"(# Completes the startplan command in bash. To use it at once, and in every shell:
#     source <(startplan completion bash)
#     startplan completion bash >~/.local/share/bash-completion/completions/startplan

# Splits the line up to the cursor into `words`; sets `cut` to what stands before the part to be replaced.
_startplan_split()
{
    local rest=${COMP_LINE:0:COMP_POINT} i word
    words=() cut=
    for ((i = 0; i <= COMP_CWORD; i++)); do
        word=${COMP_WORDS[i]}
        if ((i > 0)) && [[ -n $word && $rest == "$word"* ]]; then
            cut=${words[${#words[@]} - 1]}
            words[${#words[@]} - 1]+=$word
        else
            cut=
            words+=("$word")
            rest=${rest#"${rest%%[![:space:]]*}"}
        fi
        rest=${rest#"$word"}
    done
    case $word in
    '=' | ':') cut=${words[${#words[@]} - 1]} ;;
    esac
}

# Offers those of the answers, one a line, that begin with what is written.
_startplan_offer()
{
    local begin=$value quote= answer
    compopt +o default +o bashdefault 2>/dev/null
    case $begin in
    \"* | \'*) quote=${begin:0:1} ;;
    esac
    begin=${begin//[\\\"\']/}
    while IFS= read -r answer; do
        if [[ -n $answer && $answer == "$begin"* ]]; then
            [[ -n $quote ]] || printf -v answer %q "$answer"
            COMPREPLY+=("${answer#"$cut"}")
        fi
    done <<<"$1"
}

# Asks the command itself: what comes next, or, for "names", the applications.
_startplan_ask()
{
    local answer line=("${words[@]//[\\\"\']/}")
    line=("${line[@]/#\~\//$HOME/}")
    answer=$("${line[0]}" completion "$1" -- "${line[@]:1:$2 - 1}" 2>/dev/null) || return 1
    _startplan_offer "$answer"
}

_startplan()
{
    local words cut i command= option= value
    COMPREPLY=()
    _startplan_split
    local last=$((${#words[@]} - 1))
)";

constexpr char kBehindCommand[] = R"(
    value=${words[last]}
    if [[ $value == --*=* ]]; then
        option=${value%%=*}
        value=${value#*=}
        cut=${cut#"$option="}
    elif [[ $value == -* ]]; then
        _startplan_offer "${options// /$'\n'}"
        return
    else
        option=${words[last - 1]}
    fi
)";

// A value that may be left out comes only behind "=".
std::string ForgetOptions(const std::vector<std::string>& names)
{
    std::string text;
    for (const std::string& name : names) {
        text += fmt::format("    [[ $option == {} && $value == \"${{words[last]}}\" ]] && option=\n", name);
    }
    return text;
}

std::string Joined(const std::vector<std::string>& words, const char* separator)
{
    return fmt::format("{}", fmt::join(words, separator));
}

// The pattern of `case` for "COMMAND OPTION".
std::string Patterns(const std::string& command, const OptionShape& option)
{
    std::vector<std::string> patterns;
    for (const std::string& name : option.Names()) {
        patterns.push_back(command.empty() ? "*" + ShellQuoted(" " + name)
                                           : ShellQuoted(command + " " + name));
    }
    return Joined(patterns, " | ");
}

std::string BashAction(const OptionShape& option)
{
    switch (option.kind) {
    case WordKind::FILE:
        return "";
    case WordKind::FOLDER:
        return "compopt +o default +o bashdefault -o dirnames 2>/dev/null";
    case WordKind::APPLICATION:
        return "_startplan_ask names \"$last\"";
    case WordKind::CHOICE:
        return fmt::format("_startplan_offer $'{}'", Joined(option.choices, "\\n"));
    default:
        return "compopt +o default +o bashdefault 2>/dev/null";
    }
}

std::string ValueCases(const std::string& command, const std::vector<OptionShape>& options)
{
    std::string text;
    for (const OptionShape& option : options) {
        if (option.placeholder.empty()) {
            continue;
        }
        const std::string action = BashAction(option);
        text += fmt::format("    {})\n", Patterns(command, option));
        text += action.empty() ? "" : fmt::format("        {}\n", action);
        text += "        return\n        ;;\n";
    }
    return text;
}

std::string LongNames(const std::vector<OptionShape>& options)
{
    std::vector<std::string> names;
    for (const OptionShape& option : options) {
        for (const std::string& name : option.longNames) {
            names.push_back("--" + name);
        }
    }
    return Joined(names, " ");
}

// Every spelling of the options, of all commands, that `isWanted` says.
std::vector<std::string> NamesOf(const CompletionShapes& shapes, bool (*isWanted)(const OptionShape&))
{
    std::set<std::string> names;
    const auto add = [&names, isWanted](const std::vector<OptionShape>& options) {
        for (const OptionShape& option : options) {
            const std::vector<std::string> spellings = option.Names();
            if (isWanted(option)) {
                names.insert(spellings.begin(), spellings.end());
            }
        }
    };
    add(shapes.common);
    for (const CommandShape& command : shapes.commands) {
        add(command.options);
    }
    return {names.begin(), names.end()};
}

std::string FindCommand(const CompletionShapes& shapes)
{
    return fmt::format("    for ((i = 1; i < last; i++)); do\n"
                       "        case ${{words[i]}} in\n"
                       "        {}) ((i++)) ;;\n"
                       "        -*) ;;\n"
                       "        *)\n"
                       "            command=${{words[i]}}\n"
                       "            break\n"
                       "            ;;\n"
                       "        esac\n"
                       "    done\n",
                       Joined(NamesWithValue(shapes), " | "));
}

} // namespace

std::string ShellQuoted(std::string_view text)
{
    std::string quoted = "'";
    for (const char c : text) {
        quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
    }
    return quoted + "'";
}

std::vector<std::string> NamesWithValue(const CompletionShapes& shapes)
{
    return NamesOf(shapes, [](const OptionShape& option) { return option.NeedsValue(); });
}

std::string BashScript(const CompletionShapes& shapes)
{
    std::string text = kBashHead + FindCommand(shapes);
    text += fmt::format("\n    local options='{}'\n    case $command in\n", LongNames(shapes.common));
    std::string names;
    std::string values;
    for (const CommandShape& command : shapes.commands) {
        names += (names.empty() ? "" : "\\n") + command.name;
        if (!command.options.empty()) {
            text += fmt::format("    {}) options+=' {}' ;;\n", command.name, LongNames(command.options));
        }
        values += ValueCases(command.name, command.options);
    }
    const auto isOptional = [](const OptionShape& option) { return option.isValueOptional; };
    text += fmt::format("    esac\n{}{}    case \"$command $option\" in\n{}{}    esac\n", kBehindCommand,
                        ForgetOptions(NamesOf(shapes, isOptional)), values, ValueCases("", shapes.common));
    text += fmt::format("    if [[ -z $command ]]; then\n"
                        "        _startplan_offer $'{}'\n"
                        "        return\n"
                        "    fi\n"
                        "    _startplan_ask words \"$last\" || return 0\n"
                        "}}\n"
                        "complete -o bashdefault -o default -F _startplan startplan\n",
                        names);
    return text;
}

} // namespace tool
