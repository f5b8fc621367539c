#include "tool/command_line/command_options.h"

#include <utility>
#include <vector>

#include <CLI/CLI.hpp>

namespace tool {

void AddListOption(CLI::App& app, const std::string& names, const std::string& type, const std::string& help,
                   std::function<void(const std::string& value)> take)
{
    // Without extra arguments CLI11 leaves "[a,b]" alone.
    app.add_option_function<std::vector<std::string>>(
           names,
           [take = std::move(take)](const std::vector<std::string>& values) {
               for (const std::string& value : values) {
                   take(value);
               }
           },
           help)
        ->type_name(type)
        ->type_size(1)
        ->allow_extra_args(false)
        ->group("Options");
}

} // namespace tool
