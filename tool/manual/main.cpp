// Writes the pages of the manual that are made from the command itself. Part of the build, never installed:
//
//     startplan_manual FOLDER TEMPLATES VERSION [DATE]
//
// FOLDER has man1, man5 and man7; TEMPLATES holds the pages that are written by hand in part.
#include <exception>
#include <iostream>
#include <string>

#include <fmt/format.h>

#include "tool/command_line/command_line.h"
#include "tool/manual/command_page.h"
#include "tool/manual/key_items.h"
#include "tool/manual/page_template.h"
#include "tool/manual/rules_page.h"
#include "tool/text/output.h"

namespace {

void Write(const std::string& path, const std::string& text)
{
    tool::Output file(path);
    file.Add(text);
    file.Commit();
}

void WritePages(const std::string& folder, const std::string& templates, const tool::Edition& edition)
{
    tool::CommandLine line;
    line.DefineAll();
    for (const tool::CommandInfo& info : line.Infos()) {
        Write(fmt::format("{}/man1/startplan-{}.1", folder, info.name), CommandPage(line, info, edition));
    }
    Write(folder + "/man1/startplan.1", tool::FillTemplate(templates + "/startplan.1", MainPageParts(line)));
    Write(folder + "/man5/startplan.5", tool::FillTemplate(templates + "/startplan.5", tool::KeyParts()));
    Write(folder + "/man7/startplan-rules.7", tool::RulesPage(edition));
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 4 && argc != 5) {
        std::cerr << "startplan_manual FOLDER TEMPLATES VERSION [DATE]\n";
        return 2;
    }
    try {
        WritePages(argv[1], argv[2], {argv[3], argc == 5 ? argv[4] : ""});
    } catch (const std::exception& error) {
        std::cerr << "startplan_manual: " << error.what() << '\n';
        return 2;
    }
    return 0;
}
