#include "tool/rules/rules_entries.h"

namespace tool {

const Rule kDuplicateApplication = {
    "duplicate-application",
    RuleGroup::ENTRIES,
    Level::ERROR,
    "an application that is defined twice",
    "Two complete entries have the same name, in one file or in two. An entry that the library skips does\n"
    "not count, and neither does the same entry in a file that is read twice.",
    "web:\n"
    "  bin_path: /bin/web\n"
    "web:\n"
    "  bin_path: /bin/web-new\n",
    "Both entries stay in the list of applications, so the process manager may start both. For the order of\n"
    "starting and stopping only the \"depends\" of the last entry counts.",
    "Rename one of them or take it out.",
};

const Rule kDuplicateKey = {
    "duplicate-key",
    RuleGroup::ENTRIES,
    Level::WARNING,
    "a key that is written twice",
    "A key stands twice in one entry or in one file of another kind; or a variable twice in \"env\", a\n"
    "placeholder twice in \"cfgmgr_env\". A controller in \"cgroup_path\" and \"cfgmgr_env\" itself may "
    "come\n"
    "more than once: all of them are read.",
    "web:\n"
    "  bin_path: /bin/web\n"
    "  restart: \"no\"\n"
    "  restart: on-failure\n",
    "The first one counts. The later ones are not looked at, and nothing is logged. (Other programs take\n"
    "the last one.)",
    "Keep one of them.",
};

const Rule kEmptyValue = {
    "empty-value",
    RuleGroup::ENTRIES,
    Level::WARNING,
    "a key with nothing behind it",
    "A key has nothing or \"\" behind it, and reads as something else than it would if it were left out, or\n"
    "makes the library log a warning. An error for \"uid\" and \"gid\", which become root's. Every other "
    "key\n"
    "whose empty value is its default is silent.\n"
    "\n"
    "Also a text that looks empty and is not: \"~\" and \"null\" are texts of one and of four letters.",
    "web:\n"
    "  bin_path: /bin/web\n"
    "  heart_beat:\n",
    "An empty number is 0, an empty flag is false, whatever the default is: supervision is off, the time to\n"
    "end is none, the application runs as root.",
    "Write a value, or take the key out to have the default.",
};

const Rule kEntryNotMapping = {
    "entry-not-mapping",
    RuleGroup::ENTRIES,
    Level::ERROR,
    "an entry that is no mapping of keys",
    "A startup file maps names of applications to entries. Behind a name stands something else than keys "
    "and\n"
    "values. A name that begins with \"x-\" is your own and may hold anything.",
    "web: /bin/web\n",
    "The library logs a warning for every key it looks for and skips the entry: there is no such\n"
    "application, and what depends on it is dropped.",
    "Write the keys below the name, indented; \"bin_path\" at least.",
};

const Rule kFlagDisagrees = {
    "flag-disagrees",
    RuleGroup::ENTRIES,
    Level::WARNING,
    "\"isDynamicPara\" and the entry's name say different things",
    "The name of an entry for a family holds <...>, and \"isDynamicPara\" says the same to the process\n"
    "manager. Here only one of the two does.",
    "\"camera_<0-3>\":\n"
    "  bin_path: /bin/camera\n",
    "The library goes by the name alone and hands the flag on as it is. What the process manager does with\n"
    "a family that is said to be none, or the other way round, is up to it.",
    "Write \"isDynamicPara: true\" in the entries of families, and only there.",
};

const Rule kIncompleteEntry = {
    "incomplete-entry",
    RuleGroup::ENTRIES,
    Level::ERROR,
    "an entry that the library skips",
    "An entry needs a name, a \"bin_path\" that is not empty, and a uid other than 4294967295 (which is "
    "what\n"
    "-1 reads as). A name that begins with \"x-\" is your own: such an entry may well be incomplete.",
    "web:\n"
    "  depends: [net]\n",
    "The entry is skipped with a warning, the rest of the file is read. There is no such application, and\n"
    "what depends on it is dropped. The result is 0 unless something is.",
    "Write what is missing.",
};

const Rule kListForMap = {
    "list-for-map",
    RuleGroup::ENTRIES,
    Level::ERROR,
    "a list or a single value where a mapping is expected",
    "\"env\", \"cgroup_path\" and \"sharepool_groups\" are mappings of names to values.",
    "web:\n"
    "  bin_path: /bin/web\n"
    "  env: [LANG=C]\n",
    "All of it is lost. The library logs a line that names neither the key nor the application.",
    "Write one \"NAME: value\" a line.",
};

const Rule kMapForScalar = {
    "map-for-scalar",
    RuleGroup::ENTRIES,
    Level::ERROR,
    "a list or a mapping where a single value is expected",
    "A list or a mapping stands behind a key that has one value, in an item of a list, or behind a name in\n"
    "a mapping. A usual cause is an item like \"- mode: fast\", which YAML takes for a mapping.",
    "web:\n"
    "  bin_path: /bin/web\n"
    "  nice: [10]\n",
    "It reads as 0, false or the empty text, mostly without a message.",
    "Write one value; put an item that holds \": \" in quotes.",
};

const Rule kScalarForList = {
    "scalar-for-list",
    RuleGroup::ENTRIES,
    Level::ERROR,
    "a single value or a mapping where a list is expected",
    "\"depends\", \"arguments\", \"core_affinity\", \"startup_path_list\" and \"sub_startup\" are lists, "
    "even for\n"
    "one item.",
    "web:\n"
    "  bin_path: /bin/web\n"
    "  depends: net\n",
    "It reads as an empty list, without a message: no dependency, no argument, no file.",
    "Put the value in brackets.",
};

const Rule kTooManyArguments = {
    "too-many-arguments",
    RuleGroup::ENTRIES,
    Level::ERROR,
    "more than 256 arguments",
    "An application gets at most 256 arguments.",
    "web:\n"
    "  bin_path: /bin/web\n"
    "  arguments: [a1, a2, a3]   # and so on, to a257\n",
    "All arguments are dropped, not only those beyond the limit, and the application starts without any. "
    "The\n"
    "warning in the log says \"arguments:0\".",
    "Pass fewer, for example the path of a file that holds the rest.",
};

const Rule kUnknownKey = {
    "unknown-key",
    RuleGroup::ENTRIES,
    Level::WARNING,
    "a key that the library does not know",
    "A key of an entry, of a top-level or sub-startup file or of the replace data that nobody reads. Keys\n"
    "that begin with \"x-\" are your own and are not reported. The merge key \"<<\" is not known either.",
    "web:\n"
    "  bin_path: /bin/web\n"
    "  heart_beet: false\n",
    "The library ignores it without a message: a misspelt key is a key left out.",
    "Correct the spelling, or begin the key with \"x-\".",
};

std::vector<const Rule*> EntryRules()
{
    return {&kDuplicateApplication, &kDuplicateKey,     &kEmptyValue, &kEntryNotMapping,
            &kFlagDisagrees,        &kIncompleteEntry,  &kListForMap, &kMapForScalar,
            &kScalarForList,        &kTooManyArguments, &kUnknownKey};
}

} // namespace tool
