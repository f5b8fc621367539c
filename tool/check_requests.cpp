#include "tool/check_requests.h"

namespace tool {

void CheckRequests(const Configuration& /*configuration*/, const std::vector<RequestToCheck>& /*requests*/,
                   Findings& /*findings*/)
{}

} // namespace tool
