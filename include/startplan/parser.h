#ifndef STARTPLAN_PARSER_H
#define STARTPLAN_PARSER_H

#include <cstdint>
#include <map>
#include <memory>
#include <set>
#include <stack>
#include <string>
#include <vector>

class ApplicationManifest;
struct SharepoolGroupsInfo;

/// @file
/// Parsers: from configuration files to records of applications.

/// Which parser reads a configuration. Any other value names no parser.
enum ParamType : std::uint32_t {
    PARAM_TYPE_YAML = 0, ///< ProcMgr::YamlParser
    PARAM_TYPE_CFG = 1,  ///< ProcMgr::CfgParser, which reads nothing
};

/// The parsers, and the reading of YAML files that they are built on.
namespace ProcMgr {

class KvsTypeYaml;

/// Reads a startup configuration of one kind. Made by ParseFactory, and used through this interface by
/// ParseAndDepend.
///
/// A parser has no state: one object serves any number of calls, from several threads at once, as far
/// as the platform's account look-ups allow (YamlParser::GetUidByUserName()).
class Parser {
public:
    virtual ~Parser();

    /// Appends a record for each application of the configuration at `path` to `apps`.
    /// @return  0 or a code of result_codes.h.
    virtual std::uint32_t ParseToApplication(const std::string& path, std::vector<ApplicationManifest>& apps,
                                             const std::map<std::string, std::string>& replaceData) const = 0;

    /// Adds the names and values of the replace-data file at `path` to `replaceData`.
    /// @return  0 or a code of result_codes.h.
    virtual std::uint32_t ParseToReplaceData(const std::string& path,
                                             std::map<std::string, std::string>& replaceData) const = 0;
};

/// Reads configurations written in YAML.
///
/// Three kinds of files: a top-level file and its sub-startup files name startup files; a startup file
/// maps application names to entries; a replace-data file gives values to the `${name}` placeholders in
/// the paths of startup files.
///
/// The key readers below read one key each of one entry, and are what ParseToApplication() is made of.
/// Their `node` is the entry: the value of one pair of the startup file's root mapping, found by
/// KvsTypeYaml::GetArray(). A key is present when the entry is a mapping that has it, whatever its value
/// is: `key:`, `key: null` and `key: [1]` are all present. An entry that is no mapping has no keys, and
/// each look-up of one logs the warning of KvsTypeYaml::GetSubKvs(). Where a key is repeated the first
/// one counts. Unknown keys are ignored.
///
/// A default is for an absent key only. A present value that is empty or of the wrong kind reads as 0,
/// false or the empty text, silently, but for the readers that say otherwise. Only std::bad_alloc leaves
/// an operation. Log calls leave errno as they found it.
class YamlParser : public Parser {
public:
    /// Walks the tree of files below the top-level file at `path` and reads every startup file that it
    /// names.
    ///
    /// A top-level or sub-startup file is a mapping; two of its keys are read, both optional sequences of
    /// paths: "startup_path_list" (startup files) and "sub_startup" (further files of this kind). The walk
    /// is depth-first in the file's order: a file's own startup files first, then its first sub-startup
    /// file and all below it, then the second. Each file counts as often as it is named, unreadable ones
    /// too; the 200th ends the walk with nothing read, so a tree may have 199. A file that cannot be
    /// loaded is skipped, with no line beyond those of KvsTypeYaml::InitYamlNode() unless errno is EACCES
    /// (LOG_ERR "InitYamlNode %s failed, errno=%d"); one whose root is no mapping names no files, with two
    /// lines of KvsTypeYaml::GetSubKvs().
    /// Then each collected path goes through ReplaceByMatchDataInPath() and
    /// CreateApplicationByStartupFile(), in order. Sub-startup paths are used as they are written.
    ///
    /// | returns                        | when                                        | apps          |
    /// |--------------------------------|---------------------------------------------|---------------|
    /// | 0                              | all read; bad files and entries are skipped | appended to   |
    /// | PARSE_ERR_CFG_PATH             | stat() fails: LOG_ERR "load cfg=%s failed.  | untouched     |
    /// |                                | errno=%d"; a directory: LOG_ERR "%s is a    |               |
    /// |                                | directory."                                 |               |
    /// | PARSE_ERR_TOO_MANY_SUB_STARTUP | the 200th file was taken up: LOG_ERR "Load  | untouched     |
    /// |                                | more than %u sub startup files!" (200)      |               |
    /// | PARSE_ERR_NO_STARTUP_FILE      | no startup file was named: LOG_ERR "No      | untouched     |
    /// |                                | startup file to load!"                      |               |
    /// | PARSE_ERR_NO_PERMISSION        | a file failed and errno was EACCES; the     | appended to   |
    /// |                                | others were read                            |               |
    ///
    /// A startup file fails where CreateApplicationByStartupFile() returns false, so an incomplete entry
    /// counts too. errno is never reset here: an EACCES from before the call, or one that an account look-up
    /// left, makes any file that fails without an errno of its own one of these.
    /// @pre  The paths meet the condition of ReplaceByMatchDataInPath(); else the call does not return.
    std::uint32_t ParseToApplication(const std::string& path, std::vector<ApplicationManifest>& apps,
                                     const std::map<std::string, std::string>& replaceData) const override;

    /// Reads the replace-data file: of the root mapping, every pair with the key "cfgmgr_env", whose
    /// value maps names to values. A name that `replaceData` already has keeps its value, so the first
    /// one wins. A value that is no scalar is the empty text.
    ///     read, or nothing to read        0
    ///     a "cfgmgr_env" that is no       0, LOG_ERR "CreateVehicleData failed, %s is invalid yaml file,
    ///     mapping                         %s 's value is not an array!" (one line; the path, "cfgmgr_env")
    ///     the root is no mapping          PARSE_ERR_NO_STARTUP_FILE, LOG_ERR "CreateVehicleData failed,
    ///                                     %s is invalid yaml file, first layer is not an array!"
    ///     the file cannot be loaded       the same, after LOG_ERR "Load file=%s failed, init yaml node
    ///                                     failed"
    /// The lines of KvsTypeYaml come before these. Names added before a failure stay.
    std::uint32_t ParseToReplaceData(const std::string& path,
                                     std::map<std::string, std::string>& replaceData) const override;

    /// Appends the items of "startup_path_list" to `list`, unchecked; nothing where it is absent.
    void AddToStartupPathList(const KvsTypeYaml& node, std::vector<std::string>& list) const;

    /// Pushes the items of "sub_startup" on `stack`, last to first: the first one ends on top.
    void AddToSubStatupFileQueue(const KvsTypeYaml& node, std::stack<std::string>& stack) const;

    /// Appends a record to `apps` for each complete entry of the startup file at `path`, in the file's
    /// order.
    ///
    /// An entry is complete when its name and its "bin_path" are not empty and its uid is not 4294967295.
    ///     all entries complete, or none there    true
    ///     the root is no mapping                 true, LOG_WARNING "%s is invalid yaml file!"
    ///     an incomplete entry                    false, that entry is left out, LOG_WARNING
    ///                                            "cfg isn't complete:appName=%s, binPath=%s, uid=%u"
    ///     CheckInputPath() refuses the path      false, `apps` untouched
    ///     the file cannot be loaded              false, `apps` untouched, errno for the caller
    /// Logs LOG_INFO "Load sub startup file=%s" for a file that was loaded and, for each entry, complete
    /// or not, the lines of the readers in the order of the keys and three summary lines (LOG_INFO,
    /// "ParseYamlToApplicationManifest ...").
    bool CreateApplicationByStartupFile(const std::string& path,
                                        std::vector<ApplicationManifest>& apps) const;

    /// Whether a startup file may be read from `path`: it contains no ".." (else LOG_ERR "CheckInputPath
    /// path=%s failed, is not illegal path") and begins with one of the characters `/ e t c a d s v r`,
    /// those of "/etc/", "/ads/" and "/var/" (else refused silently, as is the empty path).
    bool CheckInputPath(const std::string& path) const;

    /// The value as GetIntValue() reads it, taken as unsigned: -1 gives 4294967295, anything above
    /// 2147483647 gives 2147483647. `def` for an absent key. Logs nothing.
    std::uint32_t GetUintValue(const KvsTypeYaml& node, const std::string& key, std::uint32_t def) const;
    /// KvsTypeYaml::GetInt() of the value; `def` for an absent key. Logs nothing.
    std::int32_t GetIntValue(const KvsTypeYaml& node, const std::string& key, int def) const;
    /// KvsTypeYaml::GetBool() of the value; `def` for an absent key. Logs nothing.
    bool GetBoolValue(const KvsTypeYaml& node, const std::string& key, bool def) const;
    /// KvsTypeYaml::GetString() of the value; `def` for an absent key. Logs nothing.
    std::string GetStrValue(const KvsTypeYaml& node, const std::string& key, const std::string& def) const;

    /// The entry's own key, unchecked. Logs LOG_INFO "Get app name when parsing Yaml file, appName=%s".
    std::string GetAppName(const KvsTypeYaml& node) const;

    /// "startup_priority", 0 to 255.
    ///     absent, or an empty scalar        -1
    ///     outside 0 to 255                  -1, LOG_WARNING "ParseYamlToApplicationManifest
    ///                                       GetStartupPriority=%d is not in 0-255" (one line)
    ///     no number, sequence, mapping      0
    std::int32_t GetStartupPriority(const KvsTypeYaml& node) const;

    /// "node_type", read in hexadecimal: the low 32 bits of strtoul() with base 16.
    ///     10, 0x1F, 1f, zz                  16, 31, 31, 0
    ///     absent                            0
    ///     empty, sequence, mapping          0, LOG_WARNING "ParseYamlToApplicationManifest node_type is
    ///                                       null !" (one line)
    /// A value beyond unsigned long is that type's maximum first, so 4294967295 here. Where unsigned long
    /// has 32 bits, "100000000" is such a value; where it has 64, its low 32 bits are 0.
    std::uint32_t GetNodeType(const KvsTypeYaml& node) const;

    /// "core_affinity": replaces `out` by KvsTypeYaml::GetSequenceUint32() of the value, which is empty
    /// for anything but a sequence. Absent: `out` untouched. Logs nothing of its own.
    void GetCodeAffinity(std::vector<std::uint32_t>& out, const KvsTypeYaml& node) const;

    /// "isDynamicPara" (in this spelling) as a boolean, false for an absent key. Logs nothing.
    bool GetIsDynamicPara(const KvsTypeYaml& node) const;

    /// Always false; no key sets it. The node is not looked at.
    bool GetIsDelayCoreAffinity(const KvsTypeYaml& node) const;

    /// Whom the application runs as. Numbers win: the names count only where neither "uid" nor "gid" is
    /// present.
    ///     "uid" or "gid" present      uid: "uid" as a number, 1000 for an absent key; gid: GetGid()
    ///     neither                     uid: GetUidByUserName() of "user_name"; gid: GetGidByGroupName() of
    ///                                 "group_name"; what these leave alone stays as it was passed in
    /// The group never comes from the user's account.
    void GetOwnership(const KvsTypeYaml& node, std::uint32_t& uid, std::uint32_t& gid) const;

    /// "gid" as a number; without it "uid" as a number; without either 1000. Logs nothing.
    std::uint32_t GetGid(const KvsTypeYaml& node) const;

    /// The user's id from the user database.
    ///     empty name     `uid` untouched, LOG_INFO "uid and userName are empty, set uid to default value"
    ///     unknown        `uid` untouched, LOG_ERR "getpwnam failed, userName=%s"
    ///     found          `uid` set, LOG_INFO "override uid:%u, userName=%s"; the record that getpwnam()
    ///                    returned is then wiped
    /// Not reentrant, since getpwnam() is not: parse on one thread at a time, and not while another part
    /// of the process uses the user or group database.
    void GetUidByUserName(const std::string& userName, std::uint32_t& uid) const;

    /// The group's id from the group database, in the same way, with the lines "gid and groupName are
    /// empty, set gid to default value", "getgrnam failed, groupName=%s" and "override gid:%u,
    /// groupName=%s". The record is not wiped.
    void GetGidByGroupName(const std::string& groupName, std::uint32_t& gid) const;

    /// "restart": one of "no", "on-failure", "on-forever", "on-until-succeed", spelt exactly so.
    ///     absent            "no"
    ///     anything else     "no", LOG_WARNING "ParseYamlToApplicationManifest restart cfg is invalid, set
    ///                       default value !" (one line)
    std::string GetRestart(const KvsTypeYaml& node) const;

    /// "arguments": replaces `out` by the texts of the sequence, empty ones kept; by nothing where the
    /// key is absent or its value is no sequence. A sequence of more than 256 items is dropped whole:
    /// `out` stays as it is, LOG_WARNING "ParseYamlToApplicationManifest arguments:%lu is beyond max
    /// nums" (one line) with the number of items in `out`, not in the sequence.
    void GetArguments(std::vector<std::string>& out, const KvsTypeYaml& node) const;

    /// "env": adds the names of the mapping that `out` does not have yet, so the first of a repeated name
    /// wins. A value that is no scalar is the empty text. Absent: nothing. Not a mapping, or a pair
    /// without its nodes: nothing is added, LOG_WARNING "no env config!" behind the line of
    /// KvsTypeYaml::GetArray().
    void GetEnvArgv(std::map<std::string, std::string>& out, const KvsTypeYaml& node) const;

    /// "depends": adds the texts of the sequence to `out`, untrimmed and unchecked, patterns as written.
    /// Absent, or no sequence: nothing. Logs nothing of its own.
    void GetDependApps(std::set<std::string>& out, const KvsTypeYaml& node) const;

    /// Replaces every `${name}` in `path` whose name `replaceData` has by its value, left to right. The
    /// name ends at the first "}". Values are not looked into again, nor is an unknown name: it stays as it
    /// is, as does a "${" without its "}". An empty map changes nothing.
    ///
    /// **Does not return** for a path that holds "${}" when the map is not empty but has no empty name
    /// (nor for a path in which an unknown name ends in "${", as in "${a${}"): the search then finds the
    /// same place for ever. Do not pass such a path: check what others write before the call.
    /// Logs nothing.
    void ReplaceByMatchDataInPath(std::string& path,
                                  const std::map<std::string, std::string>& replaceData) const;

    /// "cgroup_path": adds the pairs of the mapping to `cgroups`, repeated keys included. A value that is
    /// no scalar is the empty text.
    ///     absent            nothing
    ///     a mapping         LOG_INFO "cgroup path info:%s" with "key:value, " for each pair
    ///     anything else     nothing added, LOG_WARNING "no cgroups config!" behind the line of
    ///                       KvsTypeYaml::GetArray()
    void GetCGroupPath(std::multimap<std::string, std::string>& cgroups, const KvsTypeYaml& entry) const;

    /// "sharepool_groups": appends the pairs of the mapping whose value is "ro", "rw" or "alloc" to
    /// `groups`, in the file's order.
    ///     absent                a no-op
    ///     another value         that pair is left out, LOG_ERR "ParseYamlToApplicationManifest parse
    ///                           sharepool_group config=%s is illegal" (one line) with the value
    ///     not a mapping         nothing, LOG_WARNING "ParseYamlToApplicationManifest parse sharepool_group
    ///                           config is not array !" (one line) behind the line of
    ///                           KvsTypeYaml::GetArray()
    void GetSharepoolGroups(std::vector<SharepoolGroupsInfo>& groups, const KvsTypeYaml& entry) const;
};

/// Accepts every configuration and reads nothing: both operations return 0, touch none of their
/// arguments and log nothing.
class CfgParser : public Parser {
public:
    /// 0, with `apps` untouched.
    std::uint32_t ParseToApplication(const std::string& path, std::vector<ApplicationManifest>& apps,
                                     const std::map<std::string, std::string>& replaceData) const override;
    /// 0, with `replaceData` untouched.
    std::uint32_t ParseToReplaceData(const std::string& path,
                                     std::map<std::string, std::string>& replaceData) const override;
};

/// Makes parsers.
class ParseFactory {
public:
    /// A new parser of the given kind; an empty pointer for a value that names none, with nothing logged.
    /// Throws std::bad_alloc.
    static std::shared_ptr<Parser> CreateParser(ParamType type);
};

} // namespace ProcMgr

#endif
