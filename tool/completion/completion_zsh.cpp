#include "tool/completion/completion_scripts.h"

#include <fmt/format.h>

namespace tool {

namespace {

constexpr char kZshHead[] = R"(#compdef startplan
# Completes the startplan command in zsh. Put it into a folder of $fpath as "_startplan", or, for this shell:
#     source <(startplan completion zsh)

# Asks the command itself: what comes next on the line of so many words, or, for "names", the applications.
_startplan_ask()
{
    local answer
    local -a answers line
    line=("${(@Q)words[1,$2]}")
    answer=$("${~line[1]}" completion "$1" -- "${(@)line[2,-1]}" 2>/dev/null) || return 1
    answers=("${(@f)answer}")
    [[ -n $answer ]] && compadd -a answers
    return 0
}

_startplan_names()
{
    local current=${words[CURRENT]}
    if [[ $current == --*=* ]]; then
        _startplan_ask names $((CURRENT - 1))
    else
        _startplan_ask names $((CURRENT - 2))
    fi
}

_startplan_words() { _startplan_ask words $((CURRENT - 1)) || _files }
)";

// Inside a form, ":" and brackets have a meaning.
std::string Escaped(const std::string& text)
{
    std::string escaped;
    for (const char c : text) {
        escaped += std::string_view(":[]\\").find(c) == std::string_view::npos ? "" : "\\";
        escaped += c;
    }
    return escaped;
}

std::string ZshAction(const OptionShape& option)
{
    switch (option.kind) {
    case WordKind::FILE:
        return "_files";
    case WordKind::FOLDER:
        return "_files -/";
    case WordKind::APPLICATION:
        return "_startplan_names";
    case WordKind::CHOICE:
        return fmt::format("({})", fmt::join(option.choices, " "));
    default:
        return " ";
    }
}

// One form for each spelling. "*": the last one counts, so an option may come again.
std::string OptionForms(const std::vector<OptionShape>& options)
{
    std::string text;
    for (const OptionShape& option : options) {
        for (const std::string& name : option.Names()) {
            const bool isLong = name.rfind("--", 0) == 0;
            std::string form = "*" + name;
            if (option.isValueOptional) {
                form += isLong ? "=-" : "";
            } else if (option.NeedsValue()) {
                form += isLong ? "=" : "+";
            }
            form += fmt::format("[{}]", Escaped(option.summary));
            if (!option.placeholder.empty()) {
                form += fmt::format("{}{}:{}", option.isValueOptional ? "::" : ":",
                                    Escaped(option.placeholder), ZshAction(option));
            }
            text += fmt::format("        {}\n", ShellQuoted(form));
        }
    }
    return text;
}

} // namespace

std::string ZshScript(const CompletionShapes& shapes)
{
    std::string text = kZshHead;
    text += "\n_startplan_commands()\n{\n    local -a commands\n    commands=(\n";
    for (const CommandShape& command : shapes.commands) {
        text += fmt::format("        {}\n", ShellQuoted(command.name + ":" + Escaped(command.summary)));
    }
    text += "    )\n    _describe command commands\n}\n";
    text += fmt::format("\n_startplan()\n{{\n"
                        "    local command= i\n"
                        "    local -a options\n"
                        "    for ((i = 2; i < CURRENT; i++)); do\n"
                        "        case ${{words[i]}} in\n"
                        "        ({}) ((i++)) ;;\n"
                        "        (-*) ;;\n"
                        "        (*)\n"
                        "            command=${{words[i]}}\n"
                        "            break\n"
                        "            ;;\n"
                        "        esac\n"
                        "    done\n"
                        "    options=(\n{}    )\n"
                        "    case $command in\n",
                        fmt::join(NamesWithValue(shapes), "|"), OptionForms(shapes.common));
    for (const CommandShape& command : shapes.commands) {
        if (!command.options.empty()) {
            text +=
                fmt::format("    ({}) options+=(\n{}    ) ;;\n", command.name, OptionForms(command.options));
        }
    }
    text += "    esac\n"
            "    _arguments -s -S : $options '1:command:_startplan_commands' '*:argument:_startplan_words'\n"
            "}\n\n"
            "if [[ $funcstack[1] == _startplan ]]; then\n"
            "    _startplan \"$@\"\n"
            "else\n"
            "    compdef _startplan startplan\n"
            "fi\n";
    return text;
}

} // namespace tool
