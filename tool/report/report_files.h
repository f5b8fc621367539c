#ifndef STARTPLAN_TOOL_REPORT_REPORT_FILES_H
#define STARTPLAN_TOOL_REPORT_REPORT_FILES_H

#include <string_view>

// The files of tool/report/page/ as they were when the command was built; see embed_page.cmake.
namespace tool::report {

extern const std::string_view kPage;    // page.html
extern const std::string_view kStyle;   // page.css
extern const std::string_view kScript;  // all *.js
extern const std::string_view kLibrary; // D3; empty where it was not found
extern const std::string_view kLicence; // its licence, as HTML text

} // namespace tool::report

#endif
