#include "tool/rules/rules_patterns.h"

namespace tool {

const Rule kAdjacentDynamic = {
    "adjacent-dynamic",
    RuleGroup::PATTERNS,
    Level::WARNING,
    "two parameters without text between them",
    "Found in a name with two parameters side by side. The library cuts a name at the pattern's text; where\n"
    "there is none between two parameters, the second one gets everything, and the first one no text at all.",
    "\"app_<1-3><*>\":\n"
    "  bin_path: /bin/app\n",
    "The first parameter is useless. If it is a list without 0, which no digits count as, the pattern "
    "matches\n"
    "no name at all.",
    "Put some text between the two, such as \"_\", or take one of them out.",
};

const Rule kBadInterval = {
    "bad-interval",
    RuleGroup::PATTERNS,
    Level::ERROR,
    "a list of numbers that cannot be read",
    "Found in a name whose <...> the library cannot read as a list: numbers and ranges from the smaller to\n"
    "the larger number, up to 4294967295, with commas between them and without blanks. Everything between <\n"
    "and > is such a list, but for <*> and <*PATH> in exactly this spelling.",
    "\"app_<5-3>\":\n"
    "  bin_path: /bin/app\n",
    "The pattern matches no name: no request finds a member of the family. Each look-up that meets the\n"
    "pattern logs an error.",
    "Write the list as in \"app_<1-3,5>\"; \"5-\" is 5 and above, \"-2\" is 0 to 2, and <> is every number.",
};

const Rule kEmptyIntervalItem = {
    "empty-interval-item",
    RuleGroup::PATTERNS,
    Level::WARNING,
    "an empty item in a list of numbers",
    "Found where a comma begins a list, or follows another one. The library reads nothing as 0. A comma "
    "that\n"
    "ends a list is followed by no item and is fine.",
    "\"app_<1,,3>\":\n"
    "  bin_path: /bin/app\n",
    "app_0 is a member, and so is app_, since no digits in a name count as 0 as well.",
    "Take the comma out, or write the number that is missing.",
};

const Rule kNameTooLong = {
    "name-too-long",
    RuleGroup::PATTERNS,
    Level::ERROR,
    "a name of more than 1024 bytes",
    "Found for an entry whose name is longer than the library takes in a look-up. It is read without a\n"
    "message.",
    "",
    "No request finds the application. Each look-up that meets the name logs an error.",
    "Give the application a shorter name.",
};

const Rule kOverlapLimit = {
    "overlap-limit",
    RuleGroup::PATTERNS,
    Level::NOTE,
    "too many patterns to look for every pattern-overlap",
    "Patterns that begin with the same text and are more than one list of numbers behind it are compared\n"
    "with each other, which ends after three million steps in all: less than a second. That is enough for\n"
    "more than a hundred such patterns. Shows the first pattern that was not compared with all others.",
    "",
    "None. But there may be names that match two entries, and that this command does not find.",
    "Make the patterns differ in the text in front of the first \"<\"; then fewer are compared.",
};

const Rule kPatternOverlap = {
    "pattern-overlap",
    RuleGroup::PATTERNS,
    Level::WARNING,
    "a name that a pattern and another entry both match",
    "Found where some name matches two entries, at least one of which is a pattern, and shows the shortest\n"
    "such name. The name need not be in any file. Found once for each pattern, for 20 patterns at most. A\n"
    "plain name in front of a pattern is prefix-capture.\n\n"
    "The search is exact, but for a limit: see overlap-limit. Of patterns that are one text and one list of\n"
    "numbers, each that overlaps is found, but not each pair.",
    "\"app_<1-3>\":\n"
    "  bin_path: /bin/app\n"
    "\"app_<2-5>\":\n"
    "  bin_path: /bin/other\n",
    "A request for the name gets one of the two entries. Which one, is up to the order of a hash table: it\n"
    "may change with the build of the library, or with one application more.",
    "Make the numbers differ, or the text in front of the first \"<\".",
};

const Rule kPrefixCapture = {
    "prefix-capture",
    RuleGroup::PATTERNS,
    Level::WARNING,
    "a name that other names begin with",
    "A name without <...> also matches every longer name that begins with it. So a request for \"svc_a\" "
    "may\n"
    "find \"svc\", and use its dependencies: which of the two is found first is up to the order of a hash\n"
    "table. Found only where that changes something: where the dependencies of the two are not the same, or\n"
    "where the longer name is a pattern, whose members have no entry but that. Found once for the shortest\n"
    "name of each group, for 20 of them at most.\n\n"
    "Nothing is found where all names of a group have the same dependencies: then requests have the same\n"
    "order, whichever is found.",
    "svc:\n"
    "  bin_path: /bin/svc\n"
    "svc_a:\n"
    "  bin_path: /bin/svc_a\n"
    "  depends: [net]\n"
    "net:\n"
    "  bin_path: /bin/net\n",
    "A start of the longer name may wait for what the shorter one needs, and not for what it needs itself.\n"
    "If the shorter one depends on the longer one, the request may end with PARSE_ERR_GRAPH_CYCLE.",
    "Give the shorter one a name that no other name begins with: \"svc_main\" instead of \"svc\".",
};

const Rule kUnanchoredTail = {
    "unanchored-tail",
    RuleGroup::PATTERNS,
    Level::NOTE,
    "a pattern that ends with text",
    "Found for a pattern whose last piece is text. What follows that text in a name is not looked at, so "
    "the\n"
    "pattern stands for every longer name as well. That is no harm as long as nobody requests such a name;\n"
    "where it meets another entry, pattern-overlap is found.",
    "\"zone_<0-1>_door\":\n"
    "  bin_path: /bin/door\n",
    "A request for a name that is longer by mistake, such as zone_0_doors, is served instead of refused.",
    "End the name with a parameter, if possible: \"zone_door_<0-1>\".",
};

std::vector<const Rule*> PatternRules()
{
    return {&kAdjacentDynamic, &kBadInterval,    &kEmptyIntervalItem, &kNameTooLong,
            &kOverlapLimit,    &kPatternOverlap, &kPrefixCapture,     &kUnanchoredTail};
}

} // namespace tool
