#ifndef STARTPLAN_PARSE_AND_DEPEND_H
#define STARTPLAN_PARSE_AND_DEPEND_H

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <unordered_map>
#include <vector>

#include "startplan/parser.h"

class DependGraph;

/// @file
/// From a configuration to graphs of what starts and stops.

/// The library's front: reads a startup configuration, knows which application depends on which, and
/// fills the graphs by which applications are started and stopped.
///
///     ParseAndDepend configuration;
///     std::map<std::string, std::string> replaceData;
///     configuration.ParseToReplaceData(PARAM_TYPE_YAML, "/etc/app/replace.yaml", replaceData);
///     std::vector<ApplicationManifest> apps;
///     configuration.ParseYaml(PARAM_TYPE_YAML, "/etc/app/top.yaml", apps, replaceData);
///     DependGraph graph;
///     if (configuration.GetStartGraph({"net", "web"}, graph) == 0) {
///         while (!graph.IsEmpty()) {
///             for (const std::string& name : graph.GetNoDependVertices()) {
///                 graph.Pop(name); // once it has been started
///             }
///         }
///     }
///
/// Owns its dependency table and nothing else: the records, the replace data and the graphs are the
/// caller's. Copied and moved like a value.
///
/// Threads: none of its own and no lock; one thread at a time uses an object. The const operations may
/// run on several threads while no other operation runs.
///
/// Only std::bad_alloc leaves an operation, and what the graph throws from those that fill one.
class ParseAndDepend {
public:
    /// From application name, or pattern of names as written in the configuration, to the names that it
    /// depends on.
    using DependsMap = std::unordered_map<std::string, std::set<std::string>>;

    /// What a piece of a name pattern is.
    enum PatternType : std::uint32_t {
        PATTERN_CONST = 0, ///< text outside `<...>`
        PATTERN_NUM = 1,   ///< an interval list: any text in `<...>` that is none of the two below
        PATTERN_PATH = 2,  ///< `<*PATH>`
        PATTERN_ANY = 3,   ///< `<*>`
    };

    /// One match of a name against a pattern, piece by piece; three parallel vectors.
    struct SplitedStr {
        std::vector<PatternType> patternTypes; ///< the kind of each piece
        std::vector<std::string> patternStrs;  ///< its text, without the brackets
        std::vector<std::string> paraStrs;     ///< the part of the name that belongs to it
    };

    /// Reads the configuration below the top-level file at `path`: appends its applications to `apps`,
    /// enters every record of `apps` (those from before the call too) into the dependency table, and
    /// drops the applications that depend on a name that is no key of the table.
    ///
    /// | returns                    | apps                             | dependency table          |
    /// |----------------------------|----------------------------------|---------------------------|
    /// | 0                          | appended to                      | all of `apps` entered     |
    /// | PARSE_ERR_CREATE_PARSER    | untouched                        | untouched                 |
    /// | PARSE_ERR_DEPEND_NOT_FOUND | the dropped ones removed, the    | the dropped ones removed  |
    /// |                            | others in their order            |                           |
    /// | a code of the parser       | emptied, storage released        | emptied                   |
    ///
    /// The table is kept between calls and checked whole each time. The check is made once: an
    /// application that depends on a dropped one stays, and the graph builders report it. Dependencies
    /// are compared with the keys literally, patterns too.
    ///
    /// Logs, besides the parser's lines:
    ///     no such parser          LOG_ERR "CreateParser failed parser is nullptr. paraType:%u"
    ///     the parser failed       LOG_ERR "InitApplicationsAndDepend ParseToApplication error"
    ///     a name twice            LOG_WARNING "InitApplicationsAndDepend applicationDependsMap key: %s
    ///                             will be covered !" (one line, two blanks before "will"): the later
    ///                             record's dependencies count; both records stay in `apps`
    ///     a missing dependency    LOG_ERR "CheckApplicationsAndDepend error: app: %s depends: %s not in
    ///                             appList" (one line), for each, in the table's order
    /// After std::bad_alloc the table may hold entries that were not checked or whose dependencies are not
    /// there yet, and `apps` records of them.
    /// @pre  What YamlParser::ParseToApplication() asks for.
    std::uint32_t ParseYaml(ParamType paraType, const std::string& path,
                            std::vector<ApplicationManifest>& apps,
                            const std::map<std::string, std::string>& replaceData);

    /// Reads a replace-data file, see Parser::ParseToReplaceData(), whose result is returned.
    /// PARSE_ERR_CREATE_PARSER, logged as in ParseYaml(), where no such parser exists.
    std::uint32_t ParseToReplaceData(ParamType paraType, const std::string& path,
                                     std::map<std::string, std::string>& replaceData);

    /// The dependency table itself, good as long as this object lives.
    const DependsMap& GetApplicationDependsMap() const { return applicationDependsMap_; }

    /// Replaces the dependency table by a copy of `dependsMap`, unchecked. After std::bad_alloc the table
    /// is the old one. Logs nothing.
    void SetApplicationDependsMap(const DependsMap& dependsMap);

    /// The first entry of the dependency table, in its own order, whose key matches `appName` by
    /// IsDynamicParaMatch(); end() of the table where none does. A key without `<...>` matches its own
    /// name and every longer name that begins with it, so where both "svc" and "svc_a" are keys, either
    /// may be found for "svc_a". Good until the table changes. Logs what the matches log.
    DependsMap::iterator GetAppFromDependsMap(const std::string& appName);
    /// The same where the table can only be read.
    DependsMap::const_iterator GetAppFromDependsMap(const std::string& appName) const;

    /// Fills `graph` for starting the named applications: each waits for those it depends on.
    ///
    /// Every name becomes a vertex under the name as requested, with the dependencies of the entry that
    /// GetAppFromDependsMap() finds. A dependency outside the request becomes a vertex without
    /// dependencies of its own: the closure is one level deep.
    ///
    /// | returns                    | graph                            | errApps                  |
    /// |----------------------------|----------------------------------|--------------------------|
    /// | 0                          | filled                           | untouched                |
    /// | PARSE_ERR_DEPEND_NOT_FOUND | filled with the names found      | the others appended      |
    /// | PARSE_ERR_GRAPH_CYCLE      | cleared                          | names not found appended |
    ///
    /// A requested dependency that is not in the table is no vertex; see DependGraph on such names. After
    /// an exception `graph` may hold the request unchecked: clear it.
    /// Logs, in the order of the request and in ascending order of each one's dependencies:
    ///     not in the table                LOG_ERR "ParseAndDepend GetStartGraph %s is not in
    ///                                     applicationDependsMap_" (one line), once each time it is named
    ///     a dependency not requested      LOG_WARNING "ParseAndDepend GetStartGraph  %s depend  %s is not
    ///                                     in startAppNames" (one line, two blanks as shown)
    ///     a cycle                         LOG_ERR "ParseAndDepend GetStartGraph: the graph has cycle !"
    ///                                     behind the line of DependGraph::HasCycle()
    /// @pre  `errApps` is not `startAppNames`.
    std::uint32_t GetStartGraphWithErrApp(const std::vector<std::string>& startAppNames, DependGraph& graph,
                                          std::vector<std::string>& errApps) const;

    /// The same without telling which names were not found.
    std::uint32_t GetStartGraph(const std::vector<std::string>& startAppNames, DependGraph& graph) const;

    /// Fills `graph` for stopping the named applications: each waits for those that depend on it.
    ///
    /// Only requested names become vertices. The applications that wait are found by comparing `name`
    /// with the dependencies in the table literally. Results as for GetStartGraphWithErrApp().
    /// Logs, in the order of the request:
    ///     not in the table                LOG_ERR "ParseAndDepend GetTermGraph %s is not in
    ///                                     applicationDependsMap_" (one line)
    ///     a dependant not requested       LOG_WARNING "ParseAndDepend GetTermGraph %s is not in
    ///                                     termAppNames" (one line), in the table's order, for each
    ///                                     requested name that it depends on; it is then ignored
    ///     a cycle                         LOG_ERR "ParseAndDepend GetTermGraph: the graph has cycle !"
    ///                                     behind the line of DependGraph::HasCycle()
    /// @pre  `errApps` is not `termAppNames`.
    std::uint32_t GetTermGraphWithErrApp(const std::vector<std::string>& termAppNames, DependGraph& graph,
                                         std::vector<std::string>& errApps) const;

    /// The same without telling which names were not found.
    std::uint32_t GetTermGraph(const std::vector<std::string>& termAppNames, DependGraph& graph) const;

    /// Whether the name holds a dynamic parameter: a `<` and a `>`, the first `<` before the first `>`.
    ///     "a<1>", "<>"                  true
    ///     "a>b<1>", "a<1", "a1>"        false
    bool IsDynamicPara(const std::string& para) const;

    /// Whether `str` is one of the names that `pattern` stands for.
    ///
    /// The pattern's literal pieces are looked for in `str` from left to right, the first one at its
    /// start, each at its first occurrence; the text in between belongs to the dynamic piece just before
    /// the literal, and text left over to the last piece. Text behind a last literal is not looked at; of
    /// two dynamic pieces side by side the first gets the empty text.
    ///     app_<1-3,5>     app_1, app_5, app_05         not app_4, app_, app_x (logged)
    ///     app_<>          app_0 to app_4294967295
    ///     svc_<*>_x       svc_a_x, svc__x, svc_a_xyz   not svc_a
    ///     /opt/<*PATH>    /opt/a/b                     not /opt/a/../b
    ///     abc             abc, abcdef                  not xabc
    /// A length outside 1 to 1024 bytes never matches: LOG_ERR "ParseAndDepend IsDynamicParaMatch: dynamic
    /// para invalid, pattern=%d, str=%d" (one line) with both lengths. Otherwise logs what
    /// CheckNumTypePara() logs. Allocates nothing unless it logs.
    bool IsDynamicParaMatch(const std::string& pattern, const std::string& str) const;

    /// Appends the pieces of `pattern` to `out`'s patternTypes and patternStrs.
    ///     app_<1-3>          CONST "app_", NUM "1-3"
    ///     <*>_x<*PATH>       ANY "*", CONST "_x", PATH "*PATH"
    ///     a<1>b, a>b<1>      CONST "a", NUM "1", CONST "b"; CONST "a>b<1>"
    ///     empty              nothing
    void SplitPattern(const std::string& pattern, SplitedStr& out) const;

    /// Gives each piece of `split` its part of `str`: resizes paraStrs to the number of pieces and fills
    /// it as IsDynamicParaMatch() says. False, with paraStrs filled in part, where a literal piece is
    /// missing. True without pieces; text is then stored nowhere. Logs nothing.
    /// @pre  patternTypes and patternStrs have the same number of elements; `str` is none of paraStrs.
    bool SplitPara(const std::string& str, SplitedStr& split) const;

    /// Whether `strPiece` is a number in the interval list `patternPiece`.
    ///     a bad list      false, LOG_ERR "ParseAndDepend CheckNumTypePara: GetIntervals fail, %s"
    ///                     behind a line of StrToUint32(), if a number in the list is at fault
    ///     a bad number    false, with the line of StrToUint32()
    bool CheckNumTypePara(const std::string& patternPiece, const std::string& strPiece) const;

    /// Whether `strPiece` does not contain "..". Logs nothing.
    bool CheckPathTypePara(const std::string& patternPiece, const std::string& strPiece) const;

    /// True. Logs nothing.
    bool CheckAnyTypePara(const std::string& patternPiece, const std::string& strPiece) const;

    /// Reads an interval list into `intervals` (start to end, both included), then merges them.
    ///     "1-3,5"                 1-3, 5-5
    ///     "-2", "5-", "1,,3"      0-2; 5-4294967295; 0-0, 1-1 and 3-3 (then merged to 0-1, 3-3)
    ///     "1-3,4-6,10"            1-6, 10-10
    ///     ""                      the entry for 0 is set to 0-4294967295; nothing is merged
    ///     "5-3", "1-2-3", "a"     false; the intervals before the bad one stay, unmerged
    /// Logs what StrToUint32() logs.
    bool GetIntervals(std::string text, std::map<std::uint32_t, std::uint32_t>& intervals) const;

    /// Adds one interval; of two with the same start the longer one stays. False, and nothing added,
    /// where start > end. Logs nothing.
    bool InsertIntervals(std::map<std::uint32_t, std::uint32_t>& intervals, std::uint32_t start,
                         std::uint32_t end) const;

    /// Joins intervals that overlap or touch. One that reaches 4294967295 takes in nothing behind it, so
    /// redundant ones may stay there. Logs nothing.
    void MergeIntervals(std::map<std::uint32_t, std::uint32_t>& intervals) const;

    /// Whether some interval contains `num`. Logs nothing.
    bool IsNumInRange(const std::map<std::uint32_t, std::uint32_t>& intervals, std::uint32_t num) const;

    /// Reads a decimal number strictly: digits only, leading zeros allowed.
    ///     "", "007", "4294967295"     true: 0, 7, 4294967295
    ///     "+1", " 1", "1x", "-1"      false, `num` untouched, LOG_ERR "ParseAndDepend StrToUint32: dynamic
    ///                                 para invalid, %s" (one line)
    ///     "4294967296"                false, `num` untouched, LOG_ERR "ParseAndDepend StrToUint32: dynamic
    ///                                 para out of range, %s" (one line)
    /// The first fault from the left decides.
    bool StrToUint32(const std::string& str, std::uint32_t& num) const;

private:
    DependsMap applicationDependsMap_;
};

#endif
