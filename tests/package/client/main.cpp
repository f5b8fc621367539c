#include <iostream>

#include <startplan/depend_graph.h>
#include <startplan/parse_and_depend.h>

int main()
{
    ParseAndDepend configuration;
    configuration.SetApplicationDependsMap({{"net", {}}, {"web", {"net"}}});
    DependGraph graph;
    if (configuration.GetStartGraph({"net", "web"}, graph) != 0) {
        return 1;
    }
    for (int round = 1; !graph.IsEmpty(); ++round) {
        for (const std::string& name : graph.GetNoDependVertices()) {
            std::cout << round << ' ' << name << '\n';
            graph.Pop(name);
        }
    }
    return 0;
}
