#include "tool/check_requests.h"

namespace tool {

std::vector<const Rule*> RequestRules()
{
    return {};
}

} // namespace tool
