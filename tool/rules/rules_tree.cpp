#include "tool/rules/rules_tree.h"

namespace tool {

const Rule kEmptyFile = {
    "empty-file",
    RuleGroup::TREE,
    Level::WARNING,
    "a file that holds nothing, or nothing but comments",
    "Found in files of every kind. A file whose only content is \"{}\" is not meant: it says that it is "
    "empty.",
    "# base.yaml: all lines are comments\n",
    "The library skips the file with a line in its log.",
    "Fill the file, or take its path out of the list.",
};

const Rule kEmptyPlaceholder = {
    "empty-placeholder",
    RuleGroup::TREE,
    Level::ERROR,
    "\"${}\" in the path of a startup file",
    "With replace data that do not hold the empty name the library tries to replace such a placeholder for\n"
    "ever. This command therefore does not even call the library then: exit status 2. Without any replace\n"
    "data the path stays as it is. Replace data that hold the empty name do replace it, and nothing is "
    "found.",
    "startup_path_list:\n"
    "  - \"/etc/${}/base.yaml\"\n",
    "The device hangs while it reads its configuration.",
    "Write the placeholder's name between the braces.",
};

const Rule kExtraDocument = {
    "extra-document",
    RuleGroup::TREE,
    Level::WARNING,
    "a second document in a file",
    "Found at the line of three dashes that begins it. Three dashes before the first document, or three "
    "dots\n"
    "behind it, begin none.",
    "web:\n"
    "  bin_path: /opt/web\n"
    "---\n"
    "log:\n"
    "  bin_path: /opt/log\n",
    "The library reads the first document only; what the others describe does not exist on the device.",
    "Join the documents by taking the line of dashes out, or give each a file of its own.",
};

const Rule kFileListedTwice = {
    "file-listed-twice",
    RuleGroup::TREE,
    Level::WARNING,
    "a file that is named a second time",
    "Two spellings of a path that lead to the same file count as well. Of a group of files that is named\n"
    "twice only the group is reported, not everything below it.",
    "startup_path_list:\n"
    "  - /etc/app/base.yaml\n"
    "  - /etc/app/base.yaml\n",
    "The library reads the file again, and the process manager gets every application in it twice.",
    "Take one of the two out.",
};

const Rule kIncludeCycle = {
    "include-cycle",
    RuleGroup::TREE,
    Level::ERROR,
    "a sub-startup file that leads back to itself",
    "Found where the circle closes; the message shows the whole way round.",
    "# /etc/app/sub.yaml\n"
    "sub_startup:\n"
    "  - /etc/app/sub.yaml\n",
    "The library goes round until it has read 200 files and then gives up: the device has no applications.",
    "Take out the path that closes the circle.",
};

const Rule kIncludeLimit = {
    "include-limit",
    RuleGroup::TREE,
    Level::ERROR,
    "200 or more top-level and sub-startup files",
    "The top-level file counts, and so does a file that cannot be opened. Startup files do not count.",
    "",
    "The library gives up at the 200th file, reads no startup file, and the device has no applications.",
    "Move paths of startup files up into fewer sub-startup files.",
};

const Rule kIncludeLimitNear = {
    "include-limit-near",
    RuleGroup::TREE,
    Level::WARNING,
    "180 or more of the 199 top-level and sub-startup files that a tree may have",
    "The top-level file counts, and so does a file that cannot be opened. Startup files do not count.",
    "",
    "All is well today; with the 200th file the device would have no applications at all.",
    "Move paths of startup files up into fewer sub-startup files.",
};

const Rule kMissingSubStartup = {
    "missing-sub-startup",
    RuleGroup::TREE,
    Level::ERROR,
    "a path in \"sub_startup\" that names no file",
    "A relative path is opened from the current directory, on the device from the process manager's.",
    "sub_startup:\n"
    "  - /etc/app/there_is_no_such_file.yaml\n",
    "The library skips it without a word and reports success: a whole branch of the tree is missing.",
    "Correct the path, add the file, or take the item out.",
};

const Rule kNoReplaceData = {
    "no-replace-data",
    RuleGroup::TREE,
    Level::WARNING,
    "a replace-data file without any value",
    "It has no key \"cfgmgr_env\" in its root, or the value of that key is no mapping, or an empty one. All\n"
    "other keys are ignored.",
    "cfgmgr_environment:\n"
    "  ROOT: /etc/app\n",
    "No placeholder is replaced, and the library reports success.",
    "Write the values below the key \"cfgmgr_env\".",
};

const Rule kNoStartupFile = {
    "no-startup-file",
    RuleGroup::TREE,
    Level::ERROR,
    "a tree that names no startup file at all",
    "Says what comes of it when no file of the tree has a \"startup_path_list\" with an item in it.",
    "sub_startup: []\n",
    "The library gives PARSE_ERR_NO_STARTUP_FILE, and the device has no applications.",
    "Name the files that hold the applications in \"startup_path_list\".",
};

const Rule kNotYaml = {
    "not-yaml",
    RuleGroup::TREE,
    Level::ERROR,
    "a file that is not YAML",
    "Found where the reader stops; the mistake is often a little before that. A tab that indents a line, a\n"
    "missing quotation mark and a list item without its space are the usual ones.",
    "web:\n"
    "  bin_path: \"/opt/web\n",
    "The library skips the whole file, what stands before the mistake included.",
    "Correct the file at or a little before this place.",
};

const Rule kPathRefused = {
    "path-refused",
    RuleGroup::TREE,
    Level::ERROR,
    "a path of a startup file that the library refuses to open",
    "It contains \"..\" somewhere, or does not begin with one of the characters / e t c a d s v r. An empty\n"
    "item is refused, too. Paths in \"sub_startup\" and the top-level path are not restricted.",
    "startup_path_list:\n"
    "  - ./base.yaml\n",
    "The file is not opened; for its first character even without a line in the log.",
    "Write the path absolute and without \"..\".",
};

const Rule kPlaceholderInSubStartup = {
    "placeholder-in-sub-startup",
    RuleGroup::TREE,
    Level::ERROR,
    "a placeholder in \"sub_startup\"",
    "The library replaces placeholders in \"startup_path_list\" alone. A file that really has this name is\n"
    "not meant, and nothing is found then.",
    "sub_startup:\n"
    "  - \"${ROOT}/sub.yaml\"\n",
    "The library looks for a file with the placeholder in its name, does not find it and says nothing: a\n"
    "whole branch of the tree is missing.",
    "Write the path out.",
};

const Rule kRootNotMapping = {
    "root-not-mapping",
    RuleGroup::TREE,
    Level::ERROR,
    "a file whose root is a list or a text",
    "Found in files of every kind. The usual cause is a missing colon behind the first name.",
    "- web:\n"
    "    bin_path: /opt/web\n",
    "The library finds nothing in the file.",
    "Begin each line of the root with a name and a colon.",
};

const Rule kUnknownPlaceholder = {
    "unknown-placeholder",
    RuleGroup::TREE,
    Level::ERROR,
    "a placeholder that is not replaced",
    "Its name is not in the replace data, its brace is not closed, or it came in with the value of another\n"
    "one: values are not replaced again.",
    "startup_path_list:\n"
    "  - \"${ROTO}/base.yaml\"\n",
    "It stays in the path as it is, and the file is not found.",
    "Correct the name, or give its value in the replace data.",
};

const Rule kUnreadableFile = {
    "unreadable-file",
    RuleGroup::TREE,
    Level::ERROR,
    "a file that cannot be read",
    "It does not exist, is a folder, or access to it is denied. A sub-startup file that does not exist has "
    "a\n"
    "rule of its own, \"missing-sub-startup\".",
    "startup_path_list:\n"
    "  - /etc/app/there_is_no_such_file.yaml\n",
    "The applications in it do not exist on the device. Where access is denied the library gives everything\n"
    "up and the device has no applications at all; otherwise it reports success.",
    "Correct the path, or let the process manager's user read the file.",
};

std::vector<const Rule*> TreeRules()
{
    return {&kEmptyFile,
            &kEmptyPlaceholder,
            &kExtraDocument,
            &kFileListedTwice,
            &kIncludeCycle,
            &kIncludeLimit,
            &kIncludeLimitNear,
            &kMissingSubStartup,
            &kNoReplaceData,
            &kNoStartupFile,
            &kNotYaml,
            &kPathRefused,
            &kPlaceholderInSubStartup,
            &kRootNotMapping,
            &kUnknownPlaceholder,
            &kUnreadableFile};
}

} // namespace tool
