#include "tool/check_tree.h"

namespace tool {

std::vector<const Rule*> TreeRules()
{
    return {};
}

} // namespace tool
