#include "tool/check_dependencies.h"

namespace tool {

std::vector<const Rule*> DependencyRules()
{
    return {};
}

} // namespace tool
