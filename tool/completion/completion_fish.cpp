#include "tool/completion/completion_scripts.h"

#include <fmt/format.h>

namespace tool {

namespace {

constexpr char kFishHead[] =
    R"(# Completes the startplan command in fish. To use it at once, and in every shell:
#     startplan completion fish | source
#     startplan completion fish >~/.config/fish/completions/startplan.fish

# What may come next, asked of the command itself.
function __startplan_words
    set -l line (commandline -opc)
    set -l answers ($line[1] completion words -- $line[2..-1] 2>/dev/null)
    if test $status -eq 1
        __fish_complete_path (commandline -ct)
        return
    end
    printf '%s\n' $answers
end

# The applications of the configuration that the line names.
function __startplan_names
    set -l line (commandline -opc)
    $line[1] completion names -- $line[2..-1] 2>/dev/null
end
)";

// In single quotes, where fish knows two escapes.
std::string SingleQuoted(std::string_view text)
{
    std::string quoted = "'";
    for (const char c : text) {
        quoted += c == '\'' || c == '\\' ? "\\" : "";
        quoted += c;
    }
    return quoted + "'";
}

std::string FishAction(const OptionShape& option)
{
    const std::string requiresValue = option.isValueOptional ? "" : " -r";
    switch (option.kind) {
    case WordKind::FILE:
        return requiresValue + " -F";
    case WordKind::FOLDER:
        return requiresValue + " -f -a '(__fish_complete_directories)'";
    case WordKind::APPLICATION:
        return requiresValue + " -f -a '(__startplan_names)'";
    case WordKind::CHOICE:
        return requiresValue +
               fmt::format(" -f -a {}", SingleQuoted(fmt::format("{}", fmt::join(option.choices, " "))));
    default:
        return requiresValue + " -f";
    }
}

std::string OptionLines(const std::string& condition, const std::vector<OptionShape>& options)
{
    std::string text;
    for (const OptionShape& option : options) {
        text += "complete -c startplan" + condition;
        for (const std::string& name : option.shortNames) {
            text += " -s " + name;
        }
        for (const std::string& name : option.longNames) {
            text += " -l " + name;
        }
        text += option.placeholder.empty() ? " -f" : FishAction(option);
        text += fmt::format(" -d {}\n", SingleQuoted(option.summary));
    }
    return text;
}

} // namespace

std::string FishScript(const CompletionShapes& shapes)
{
    std::string text = kFishHead;
    text += fmt::format("\n# The command on the line, or nothing.\n"
                        "function __startplan_command\n"
                        "    set -l line (commandline -opc)\n"
                        "    set -l skip no\n"
                        "    for word in $line[2..-1]\n"
                        "        if test $skip = yes\n"
                        "            set skip no\n"
                        "            continue\n"
                        "        end\n"
                        "        switch $word\n"
                        "            case {}\n"
                        "                set skip yes\n"
                        "            case '-*'\n"
                        "            case '*'\n"
                        "                echo $word\n"
                        "                return 0\n"
                        "        end\n"
                        "    end\n"
                        "    return 1\n"
                        "end\n\n"
                        "function __startplan_is\n"
                        "    test (__startplan_command) = $argv[1] 2>/dev/null\n"
                        "end\n\n",
                        fmt::join(NamesWithValue(shapes), " "));
    text += "complete -c startplan -f\n";
    text += "complete -c startplan -n '__startplan_command >/dev/null' -a '(__startplan_words)'\n";
    for (const CommandShape& command : shapes.commands) {
        text += fmt::format("complete -c startplan -n 'not __startplan_command >/dev/null' -a {} -d {}\n",
                            command.name, SingleQuoted(command.summary));
    }
    text += OptionLines("", shapes.common);
    for (const CommandShape& command : shapes.commands) {
        text += OptionLines(fmt::format(" -n '__startplan_is {}'", command.name), command.options);
    }
    return text;
}

} // namespace tool
