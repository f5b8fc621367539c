#include "tool/command_line/request_options.h"

#include <utility>

#include <CLI/CLI.hpp>

#include "tool/text/failure.h"

namespace tool {

void RequestOptions::Define(CLI::App& app)
{
    app.add_flag("--all", isAll_, "Request every application whose name is no pattern")->group("Options");
    app.add_flag("--closure", isClosure_,
                 "Request also all that the names need (start) or that needs them (stop)")
        ->group("Options");
}

void RequestOptions::Check(const std::vector<std::string>& words) const
{
    if (isAll_ != words.empty()) {
        throw UsageFailure(isAll_ ? "either names or --all, not both"
                                  : "which applications? Name some, or --all");
    }
}

std::vector<std::string> RequestOptions::Names(const Configuration& configuration, RequestKind kind,
                                               std::vector<std::string> words) const
{
    std::vector<std::string> names = isAll_ ? AllNames(configuration) : std::move(words);
    return isClosure_ ? Closure(configuration, kind, names) : names;
}

} // namespace tool
