#ifndef STARTPLAN_TESTS_FAULTS_EVERY_KEY_TREE_H
#define STARTPLAN_TESTS_FAULTS_EVERY_KEY_TREE_H

#include <map>
#include <string>
#include <vector>

#include "startplan/application_manifest.h"
#include "tests/support/manifest_builder.h"
#include "tests/support/temporary_tree.h"

namespace faults {

// A small tree whose entries use every key: five files besides the replace data, read in the order top, sub,
// first, second, third. Values are long enough to need memory of their own, and some numbers are written
// such that a stream has to read them.
class EveryKeyTree {
public:
    EveryKeyTree()
    {
        replaceData_ = tree_.Write("replace.yaml", "cfgmgr_env: {FIRST_STARTUP_FILE: first, B: b}\n");
        top_ = tree_.Write("top.yaml", "startup_path_list: [\"" + tree_.Path("${FIRST_STARTUP_FILE}.yaml") +
                                           "\", " + tree_.Path("second.yaml") + "]\nsub_startup: [" +
                                           tree_.Path("sub.yaml") + "]\n");
        tree_.Write("sub.yaml", "startup_path_list: [" + tree_.Path("third.yaml") + "]\n");
        tree_.Write("first.yaml", Entry("first_application_of_all", "uid: 1001\n  gid: ' 7 '", ""));
        tree_.Write("second.yaml", Entry("an_application_by_account", "user_name: app\n  group_name: root",
                                         "first_application_of_all"));
        tree_.Write("third.yaml",
                    Entry("a_third_application_here", "uid: '12 '", "an_application_by_account") +
                        Entry("an_application_without_a_user", "user_name: nobody_of_that_name",
                              "a_third_application_here"));
    }

    const std::string& Top() const { return top_; }
    const std::string& ReplaceData() const { return replaceData_; }
    std::string Path(const std::string& name) const { return tree_.Path(name); }

private:
    static std::string Entry(const std::string& name, const std::string& owner, const std::string& depends)
    {
        return name + ":\n  " + owner + R"(
  bin_path: /opt/a/path/that/is/not/short/bin/application
  restart: on-until-succeed
  is_so: true
  so_name: lib_with_a_name_that_is_not_short.so
  so_path: /opt/a/path/that/is/not/short/lib
  process_bind_path: /run/a/path/that/is/not/short
  term_time_out: ' 5000 '
  is_force_term: true
  is_ros_node: true
  is_reporting: true
  res_group_name: a_group_of_resources_here
  is_auto_boot: true
  set_rt_prio: TRUE
  depends: [)" +
               depends + R"(]
  arguments: [--an-argument-that-is-not-short, -b, "", c]
  core_affinity: [1, " 2 ", 3]
  env: {A_VARIABLE_THAT_IS_NOT_SHORT: a value that is not short either, B: 2}
  sharepool_groups: {a_pool_that_has_a_long_name: ro, g2: alloc, g3: wrong}
  security_con: a_security_context_with_a_name
  nice: ' -7 '
  device_id: ' 42 of the virtual functions'
  startup_entry_path: /opt/a/path/that/is/not/short/entry
  cpuset: /a/cpuset/path/that/is/not/short
  heart_beat: true
  heart_beat_interval: ' 200 '
  heart_beat_count: ' 20 '
  node_type: 0x1F
  startup_priority: ' 12 '
  isDynamicPara: true
  blkio_cgroup_name: a_block_group_with_a_long_name
  cgroup_path: {cpu: /sys/fs/cgroup/cpu/a_long_name, memory: /sys/fs/cgroup/memory/x}
  set_rt_type: A_SCHEDULING_TYPE_OF_LENGTH
  numa_type: ' 1 '
  process_type: ' 2 '
)";
    }

    test_support::TemporaryTree tree_;
    std::string top_;
    std::string replaceData_;
};

inline std::vector<std::string> TextsOf(const std::vector<ApplicationManifest>& apps)
{
    std::vector<std::string> texts;
    for (const ApplicationManifest& app : apps) {
        texts.push_back(test_support::TextOf(app));
    }
    return texts;
}

// Whether `some` is `all` with any of its elements left out.
inline bool IsPartOf(const std::vector<std::string>& some, const std::vector<std::string>& all)
{
    std::size_t found = 0;
    for (std::size_t i = 0; i < all.size() && found < some.size(); ++i) {
        found += all[i] == some[found] ? 1U : 0U;
    }
    return found == some.size();
}

} // namespace faults

#endif
