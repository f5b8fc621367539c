#include "tool/command_line/load.h"

#include <utility>

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include "startplan/result_codes.h"
#include "tool/library/result_names.h"
#include "tool/source/nearest_file.h"
#include "tool/text/failure.h"
#include "tool/text/printable.h"

namespace tool {

namespace {

std::string RefusalText(const Refusal& refusal)
{
    return fmt::format("{}: refused: {}", Printable(ToText(refusal.position)), Printable(refusal.reason));
}

void CheckRefusals(const Session& session, const Configuration& configuration)
{
    if (configuration.WasRead()) {
        return;
    }
    for (std::size_t i = 0; i + 1 < configuration.refusals.size(); ++i) {
        session.Error(RefusalText(configuration.refusals[i]));
    }
    throw Failure(RefusalText(configuration.refusals.back()));
}

void CheckReplaceFile(const Configuration& configuration)
{
    if (configuration.replaceResult == 0) {
        return;
    }
    const SourceFile& source = *configuration.replaceSource;
    const std::string reason = source.IsLoaded() ? "is no mapping" : source.Error();
    throw Failure(fmt::format("{}: {}; the replace data cannot be read: {}",
                              Printable(ToText({source.Path(), source.ErrorMark()})), Printable(reason),
                              ResultText(configuration.replaceResult)));
}

// A top-level file that cannot be read leaves nothing to work on; an empty one is only a poor one.
void CheckTopLevel(const Configuration& configuration)
{
    const SourceFile& top = configuration.tree.FileOf(0);
    if (top.State() != FileState::UNREADABLE && top.State() != FileState::NOT_YAML) {
        return;
    }
    const std::string help =
        HelpForUnreadable(configuration.request.device.root, top.Path(), "", top.ErrorNumber());
    throw Failure(fmt::format("{}: {}; the configuration cannot be read: {}{}{}",
                              Printable(ToText({top.Path(), top.ErrorMark()})), Printable(top.Error()),
                              ResultText(configuration.result), help.empty() ? "" : "\nhelp: ", help));
}

void SayWhichAccountsAreMissing(const Session& session, const Configuration& configuration)
{
    for (const auto& accounts : {configuration.users, configuration.groups}) {
        if (accounts && !accounts->isThere) {
            session.Warn(fmt::format("no {} below {}: none of its names is known", accounts->path,
                                     Printable(configuration.request.device.root)));
        }
    }
}

void SayWhatWasDropped(const Session& session, const Configuration& configuration)
{
    const SourceTree& tree = configuration.tree;
    for (const MissingDependency& one : configuration.missing) {
        const std::vector<std::size_t>& entries = tree.EntriesNamed(one.application);
        const std::string where =
            entries.empty()
                ? std::string()
                : ToText(tree.PositionOfDependency(tree.Entries()[entries.back()], one.dependency)) + ": ";
        session.Warn(fmt::format("{}\"{}\" is dropped: it depends on \"{}\", which is not configured",
                                 Printable(where), Printable(one.application), Printable(one.dependency)));
    }
    if (configuration.result != 0) {
        session.Warn(fmt::format("the library's result is {}: {}", ResultText(configuration.result),
                                 configuration.missing.empty() ? ResultMeaning(configuration.result)
                                                               : "applications were dropped"));
    }
}

} // namespace

Configuration LoadForWork(const Session& session, const std::string& top)
{
    return LoadForWork(session, RequestFor(session.Options(), top));
}

Configuration LoadForWork(const Session& session, ConfigurationRequest request)
{
    Configuration configuration = LoadConfiguration(std::move(request));
    session.Show(configuration.lines);
    CheckRefusals(session, configuration);
    CheckReplaceFile(configuration);
    CheckTopLevel(configuration);
    SayWhichAccountsAreMissing(session, configuration);
    SayWhatWasDropped(session, configuration);
    return configuration;
}

ExitStatus StatusOf(const Configuration& configuration)
{
    return configuration.result == 0 ? EXIT_DONE : EXIT_FINDINGS;
}

Json ResultJson(std::uint32_t code)
{
    return Json{{"code", code}, {"name", ResultName(code)}};
}

Json PositionJson(const Position& position)
{
    return Json{{"file", position.file}, {"line", position.mark.line}, {"column", position.mark.column}};
}

Json ConfigurationJson(std::string_view command, const Configuration& configuration)
{
    Json json = JsonDocument(command);
    json["top"] = configuration.request.top;
    json["result"] = ResultJson(configuration.result);
    json["dropped"] = Json::array();
    for (const MissingDependency& one : configuration.missing) {
        json["dropped"].push_back({{"name", one.application}, {"missing", one.dependency}});
    }
    return json;
}

} // namespace tool
