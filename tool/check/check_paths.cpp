#include "tool/check/check_paths.h"

#include <utility>
#include <vector>

#include <fmt/format.h>

#include "tool/rules/rules_tree.h"
#include "tool/text/printable.h"
#include "tool/text/suggest.h"

namespace tool {

namespace {

constexpr char kLoss[] = "none of the applications in the file exist on the device";
constexpr char kStays[] = "it stays in the path; none of the applications in the file exist on the device";

std::string Written(const Placeholder& placeholder)
{
    return fmt::format("${{{}{}", placeholder.name, placeholder.isClosed ? "}" : "");
}

std::string HelpForUnknown(const std::string& name, const std::map<std::string, std::string>& replaceData)
{
    if (replaceData.empty()) {
        return fmt::format("name the replace data with -r FILE, or give -D {}=VALUE", Printable(name));
    }
    std::vector<std::string> names;
    names.reserve(replaceData.size());
    for (const auto& [known, value] : replaceData) {
        names.push_back(known);
    }
    const std::string nearest = Nearest(name, names);
    return nearest.empty() ? fmt::format("add \"{}\" to the replace data", Printable(name))
                           : fmt::format("did you mean \"${{{}}}\"?", Printable(nearest));
}

} // namespace

std::string PathCheck::TextOf(const Visit& visit) const
{
    return std::string(tree_.FileOf(visit.parent).Text(visit.item));
}

Finding PathCheck::At(const Visit& visit, const Rule& rule) const
{
    Finding finding;
    finding.rule = &rule;
    finding.position = tree_.PositionOf(visit.parent, visit.item);
    finding.length = LengthOf(tree_.FileOf(visit.parent), visit.item);
    finding.visit = visit.parent;
    return finding;
}

Finding PathCheck::At(const Visit& visit, const Placeholder& placeholder, const Rule& rule) const
{
    Finding finding = At(visit, rule);
    if (finding.length != 0) {
        finding.position.mark = MarkInside(tree_.FileOf(visit.parent), visit.item, placeholder.begin);
        finding.length = Width(Written(placeholder));
    }
    return finding;
}

bool PathCheck::Check(std::size_t number)
{
    const Visit& visit = tree_.Visits()[number];
    const bool isLoaded = tree_.IsLoaded(number);
    if (visit.role == FileRole::TOP_LEVEL) {
        return false;
    }
    if (visit.role == FileRole::SUB_STARTUP) {
        return !isLoaded && CheckSubStartup(visit);
    }
    if (CheckPlaceholders(visit, isLoaded)) {
        return true;
    }
    if (visit.file == kNone) {
        AddRefused(visit);
    }
    return visit.file == kNone;
}

bool PathCheck::CheckSubStartup(const Visit& visit)
{
    const std::vector<Placeholder> placeholders = PlaceholdersIn(TextOf(visit), {});
    if (placeholders.empty() || !placeholders.front().isClosed) {
        return false;
    }
    Finding finding = At(visit, placeholders.front(), kPlaceholderInSubStartup);
    finding.message =
        fmt::format("\"{}\" is not replaced in \"sub_startup\"", Printable(Written(placeholders.front())));
    finding.effect =
        "the library finds no file of this name and says nothing; everything that the file names "
        "is missing on the device";
    finding.help = "write the path out";
    findings_.Add(std::move(finding));
    return true;
}

// True if one is left in the path and nothing is read from there.
bool PathCheck::CheckPlaceholders(const Visit& visit, bool isLoaded)
{
    bool isFound = false;
    for (const Placeholder& one : PlaceholdersIn(TextOf(visit), configuration_.replaceData)) {
        if (one.isKnown) {
            continue;
        }
        isFound = true;
        if (one.isClosed && one.name.empty()) {
            Finding finding = At(visit, one, kEmptyPlaceholder);
            finding.message = "\"${}\" has no name";
            finding.effect =
                "as soon as there are any replace data the device hangs while it reads this path";
            finding.help = "write the placeholder's name between the braces";
            findings_.Add(std::move(finding));
        } else if (!isLoaded && configuration_.replaceResult == 0) {
            AddUnknown(visit, one);
        }
    }
    if (isLoaded || isFound || visit.path.find("${") == std::string::npos) {
        return isFound && !isLoaded;
    }
    Finding finding = At(visit, kUnknownPlaceholder);
    finding.message = fmt::format("the path becomes \"{}\": what a value holds is not replaced again",
                                  Printable(visit.path));
    finding.effect = kStays;
    finding.help = "give the value without a placeholder in it";
    findings_.Add(std::move(finding));
    return true;
}

void PathCheck::AddUnknown(const Visit& visit, const Placeholder& one)
{
    const auto known = unknown_.find(one.name);
    if (known != unknown_.end() && one.isClosed) {
        known->second.related.push_back({At(visit, one, kUnknownPlaceholder).position, "here, too"});
        return;
    }
    Finding finding = At(visit, one, kUnknownPlaceholder);
    const std::string written = Printable(Written(one));
    finding.effect = kStays;
    if (!one.isClosed) {
        finding.message = fmt::format("\"{}\" is not closed", written);
        finding.help = "close the placeholder with \"}\"";
        findings_.Add(std::move(finding));
        return;
    }
    finding.message = fmt::format("\"{}\" is not replaced: {}", written,
                                  configuration_.replaceData.empty() ? "there are no replace data"
                                                                     : "the replace data do not hold it");
    finding.help = HelpForUnknown(one.name, configuration_.replaceData);
    unknown_.emplace(one.name, std::move(finding));
}

void PathCheck::Finish()
{
    for (auto& [name, finding] : unknown_) {
        findings_.Add(std::move(finding));
    }
    unknown_.clear();
}

void PathCheck::AddRefused(const Visit& visit)
{
    const std::string& path = visit.path;
    const std::string text = TextOf(visit);
    const std::string becomes = path == text ? "" : fmt::format(" (written \"{}\")", Printable(text));
    Finding finding = At(visit, kPathRefused);
    if (path.find("..") != std::string::npos) {
        finding.message = fmt::format("the path \"{}\"{} contains \"..\"", Printable(path), becomes);
        finding.effect = fmt::format("the library refuses the path with a line in its log; {}", kLoss);
        finding.help = "write the path absolute and without \"..\"";
        findings_.Add(std::move(finding));
        return;
    }
    finding.effect = fmt::format("the library skips the file without a word; {}", kLoss);
    finding.message = fmt::format("the path \"{}\"{} begins with none of the characters / e t c a d s v r",
                                  Printable(path), becomes);
    finding.help = "write the path absolute";
    if (path.empty()) {
        finding.message = fmt::format("the path{} is empty", becomes);
        finding.help = "write a path, or take the item out";
    }
    findings_.Add(std::move(finding));
}

} // namespace tool
