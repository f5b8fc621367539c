#ifndef STARTPLAN_DEPEND_NUMBER_INTERVALS_H
#define STARTPLAN_DEPEND_NUMBER_INTERVALS_H

#include <string_view>

namespace startplan {

// What ParseAndDepend::CheckNumTypePara() returns and logs, without building the map of intervals: whether
// `text` is a number that the interval list has.
bool IsInIntervalList(std::string_view list, std::string_view text);

} // namespace startplan

#endif
