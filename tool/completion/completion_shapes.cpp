#include "tool/completion/completion_shapes.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <tuple>

#include "tool/command_line/command_line.h"
#include "tool/rules/rules.h"

namespace tool {

namespace {

std::vector<std::string> Split(std::string_view text, char separator)
{
    std::vector<std::string> pieces;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find(separator), text.size());
        if (end != 0) {
            pieces.emplace_back(text.substr(0, end));
        }
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return pieces;
}

bool IsLower(std::string_view text)
{
    return std::any_of(text.begin(), text.end(), [](unsigned char c) { return std::islower(c) != 0; });
}

struct Words {
    WordKind kind = WordKind::OTHER;
    std::vector<std::string> choices;
};

// What a placeholder in a usage or behind an option stands for: words in small letters stand for themselves.
Words WordsFor(const std::string& placeholder)
{
    const auto isOneOf = [&placeholder](const auto& list) {
        return std::find(list.begin(), list.end(), placeholder) != list.end();
    };
    constexpr std::array<std::string_view, 5> kFiles = {"FILE", "TOP", "OLD", "NEW", "FILE.html"};
    constexpr std::array<std::string_view, 3> kApplications = {"NAME", "OTHER", "PATTERN"};
    if (isOneOf(kFiles)) {
        return {WordKind::FILE, {}};
    }
    if (placeholder == "DIR") {
        return {WordKind::FOLDER, {}};
    }
    if (isOneOf(kApplications)) {
        return {WordKind::APPLICATION, {}};
    }
    if (placeholder.rfind("RULE", 0) == 0) {
        return {WordKind::CHOICE, RuleIds()};
    }
    if (placeholder == "LEVEL") {
        return {WordKind::CHOICE, {"note", "warning", "error"}};
    }
    if (placeholder == "WHEN") {
        return {WordKind::CHOICE, ColorChoices()};
    }
    return IsLower(placeholder) ? Words{WordKind::CHOICE, Split(placeholder, '|')} : Words();
}

OptionShape ShapeOf(const CLI::Option& option, const CommandInfo& info)
{
    OptionShape shape;
    shape.shortNames = option.get_snames();
    shape.longNames = option.get_lnames();
    shape.summary = option.get_description();
    const std::string type = option.get_type_name();
    shape.isValueOptional = type.rfind("[=", 0) == 0;
    if (shape.isValueOptional) {
        shape.placeholder = type.substr(2, type.size() - 3);
    } else if (option.get_items_expected_min() > 0) {
        shape.placeholder = type;
    }
    Words words = WordsFor(shape.placeholder);
    if (shape.placeholder == "FORMAT") {
        words = {WordKind::CHOICE, info.formats};
    }
    shape.kind = words.kind;
    shape.choices = std::move(words.choices);
    return shape;
}

bool IsIn(const std::vector<OptionShape>& options, const OptionShape& option)
{
    return std::find(options.begin(), options.end(), option) != options.end();
}

// Takes what all commands have out of them.
void MoveCommon(CompletionShapes& shapes)
{
    for (const OptionShape& option : shapes.commands.front().options) {
        if (std::all_of(shapes.commands.begin(), shapes.commands.end(),
                        [&option](const CommandShape& command) { return IsIn(command.options, option); })) {
            shapes.common.push_back(option);
        }
    }
    for (CommandShape& command : shapes.commands) {
        const auto isCommon = [&shapes](const OptionShape& option) { return IsIn(shapes.common, option); };
        command.options.erase(std::remove_if(command.options.begin(), command.options.end(), isCommon),
                              command.options.end());
    }
}

} // namespace

std::vector<std::string> OptionShape::Names() const
{
    std::vector<std::string> names;
    for (const std::string& name : shortNames) {
        names.push_back("-" + name);
    }
    for (const std::string& name : longNames) {
        names.push_back("--" + name);
    }
    return names;
}

bool OptionShape::operator==(const OptionShape& other) const
{
    const auto key = [](const OptionShape& shape) {
        return std::tie(shape.shortNames, shape.longNames, shape.summary, shape.placeholder, shape.kind,
                        shape.choices);
    };
    return key(*this) == key(other);
}

CompletionShapes MakeCompletionShapes()
{
    CommandLine line;
    line.DefineAll();
    CompletionShapes shapes;
    for (const CommandInfo& info : line.Infos()) {
        CommandShape command{info.name, info.summary, {}};
        for (const CLI::Option* option : line.AppOf(info).get_options()) {
            command.options.push_back(ShapeOf(*option, info));
        }
        shapes.commands.push_back(std::move(command));
    }
    MoveCommon(shapes);
    return shapes;
}

std::vector<ArgumentShape> ArgumentShapes(std::string_view usage)
{
    std::vector<ArgumentShape> arguments;
    for (std::string word : Split(usage, ' ')) {
        ArgumentShape argument;
        word.erase(std::remove_if(word.begin(), word.end(), [](char c) { return c == '[' || c == ']'; }),
                   word.end());
        const std::size_t dots = word.find("...");
        argument.isRepeated = dots != std::string::npos;
        word.resize(std::min(dots, word.size())); // what may follow is an option to take instead
        argument.isTop = word == "TOP";
        Words words = WordsFor(word);
        argument.kind = words.kind;
        argument.choices = std::move(words.choices);
        arguments.push_back(std::move(argument));
    }
    return arguments;
}

} // namespace tool
