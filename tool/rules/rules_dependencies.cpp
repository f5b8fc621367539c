#include "tool/rules/rules_dependencies.h"

namespace tool {

const Rule kCycle = {
    "cycle",
    RuleGroup::DEPENDENCIES,
    Level::ERROR,
    "applications that wait for each other",
    "Found once for each group of applications that all wait for each other, with a shortest way round and\n"
    "the place of each dependency on it. Whether there is a cycle at all is asked from the library's graph,\n"
    "with every configured name in it. An application that waits for itself is self-dependency.\n\n"
    "A cycle through a family (\"camera_<0-3>\") is found as well, although no request shows it to the\n"
    "library: requests hold the family's members, and others depend on its name.",
    "a:\n"
    "  bin_path: /bin/a\n"
    "  depends: [b]\n"
    "b:\n"
    "  bin_path: /bin/b\n"
    "  depends: [a]\n",
    "A start or stop request that names all applications of the cycle ends with PARSE_ERR_GRAPH_CYCLE.\n"
    "Nothing of the request is handed out, not even what has nothing to do with the cycle.",
    "Take out the dependency that is wanted least, or move what both sides need to a third application.",
};

const Rule kDependencyIsPatternInstance = {
    "dependency-is-pattern-instance",
    RuleGroup::DEPENDENCIES,
    Level::ERROR,
    "a dependency on a member of a family",
    "Found where an application depends on a name that is not configured itself, but that a pattern stands\n"
    "for. A request finds the pattern for such a name; the check of dependencies does not: it compares them\n"
    "with the configured names as they are written.",
    "\"app_<1-3>\":\n"
    "  bin_path: /bin/app\n"
    "web:\n"
    "  bin_path: /bin/web\n"
    "  depends: [app_1]\n",
    "The application is dropped when the configuration is read: it is not started, and no request finds it.",
    "Depend on the whole family by its name as it is written, in quotes: depends: [\"app_<1-3>\"].\n"
    "Or give the member an entry of its own, and take it out of the pattern.",
};

const Rule kDependencySpelling = {
    "dependency-spelling",
    RuleGroup::DEPENDENCIES,
    Level::ERROR,
    "a dependency that differs from a name in letter case or blanks",
    "Found where a dependency is not configured, and a name is that differs from it in nothing but letter\n"
    "case and blanks. Names are compared byte by byte, and nothing is trimmed.",
    "Net:\n"
    "  bin_path: /bin/net\n"
    "web:\n"
    "  bin_path: /bin/web\n"
    "  depends: [net]\n",
    "The application is dropped when the configuration is read: it is not started, and no request finds it.",
    "Write both names in the same way.",
};

const Rule kEmptyDependency = {
    "empty-dependency",
    RuleGroup::DEPENDENCIES,
    Level::ERROR,
    "a dependency without a name",
    "Found for an item of \"depends\" that is empty, and for one that is a list or a mapping, which counts "
    "as\n"
    "an empty name. No application can have that name.",
    "web:\n"
    "  bin_path: /bin/web\n"
    "  depends:\n"
    "    - net\n"
    "    -\n",
    "The application is dropped when the configuration is read: it is not started, and no request finds it.",
    "Write the name, or take the item out.",
};

const Rule kMissingDependency = {
    "missing-dependency",
    RuleGroup::DEPENDENCIES,
    Level::ERROR,
    "a dependency that is not configured",
    "Found for every dependency for which the library drops an application, unless a more exact rule knows\n"
    "why: empty-dependency, dependency-is-pattern-instance, dependency-spelling. Tells who else needs the\n"
    "dropped application; those stay configured, but cannot be started as they should.\n\n"
    "The nearest name is looked for as long as that is quick: in a tree of 10,000 names for the first 30\n"
    "names that are missing, in smaller trees for more.",
    "web:\n"
    "  bin_path: /bin/web\n"
    "  depends: [nett]\n",
    "The application is dropped when the configuration is read: it is not started, and no request finds it.\n"
    "Who needs it waits in vain, or for a name that nothing can be started for.",
    "Correct the name, configure it, or take it out of \"depends\".",
};

const Rule kRedundantDependency = {
    "redundant-dependency",
    RuleGroup::DEPENDENCIES,
    Level::NOTE,
    "a dependency that another dependency has, too",
    "Found where an application depends on two others, one of which depends on the other itself: once for\n"
    "each application, for 20 applications at most. It is no mistake. In a request that names all three the\n"
    "longer way gives the same order; in one that leaves the one between out, it does not, since a request\n"
    "is followed one step only.\n\n"
    "Looks one step further and not along longer ways. Where that takes more than 64 steps for each\n"
    "dependency of the tree, a last finding says where it stopped. Says nothing about families, cycles and\n"
    "dropped applications.",
    "net:\n"
    "  bin_path: /bin/net\n"
    "db:\n"
    "  bin_path: /bin/db\n"
    "  depends: [net]\n"
    "web:\n"
    "  bin_path: /bin/web\n"
    "  depends: [db, net]\n",
    "None, as long as requests name everything.",
    "Take the dependency out if the file is easier to read without it.",
};

const Rule kSelfDependency = {
    "self-dependency",
    RuleGroup::DEPENDENCIES,
    Level::ERROR,
    "an application that depends on itself",
    "Found where the \"depends\" list of an application holds its own name. The check that the library "
    "makes\n"
    "when it reads the configuration lets it pass.",
    "web:\n"
    "  bin_path: /bin/web\n"
    "  depends: [web]\n",
    "Every start or stop request that names the application ends with PARSE_ERR_GRAPH_CYCLE, and nothing of\n"
    "the request is handed out.",
    "Take the name out of its own list.",
};

std::vector<const Rule*> DependencyRules()
{
    return {&kCycle,           &kDependencyIsPatternInstance, &kDependencySpelling,
            &kEmptyDependency, &kMissingDependency,           &kRedundantDependency,
            &kSelfDependency};
}

} // namespace tool
