// What the library alone takes for a tree, as a program that is measured from outside: loads the configuration
// below the top-level file and builds and checks the start graph of all its applications, which is all that a
// device does with it at boot. Log lines are formatted and handed to nobody.

#include <cstdio>
#include <string>
#include <vector>

#include "startplan/application_manifest.h"
#include "startplan/depend_graph.h"
#include "startplan/parse_and_depend.h"

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fputs("usage: load_tree TOP\n", stderr);
        return 2;
    }
    ParseAndDepend configuration;
    std::vector<ApplicationManifest> apps;
    if (configuration.ParseYaml(PARAM_TYPE_YAML, argv[1], apps, {}) != 0) {
        return 1;
    }
    std::vector<std::string> names;
    for (const ApplicationManifest& app : apps) {
        names.push_back(app.GetAppName());
    }
    DependGraph graph;
    return configuration.GetStartGraph(names, graph) == 0 ? 0 : 1;
}
