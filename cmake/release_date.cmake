# The date of this version in CHANGELOG.md, for the manual pages; empty while it is not released. Never today's
# date: the same sources make the same pages.
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/CHANGELOG.md)
string(REPLACE "." "\\." startplan_version_pattern ${PROJECT_VERSION})
file(STRINGS ${PROJECT_SOURCE_DIR}/CHANGELOG.md startplan_release_date
  REGEX "^## \\[${startplan_version_pattern}\\] - ")
if(NOT startplan_release_date MATCHES "- ([0-9]+-[0-9]+-[0-9]+|unreleased)$")
  message(FATAL_ERROR "CHANGELOG.md has no section \"## [${PROJECT_VERSION}] - YYYY-MM-DD\" (or \"unreleased\")")
endif()
string(REPLACE "unreleased" "" startplan_release_date ${CMAKE_MATCH_1})
