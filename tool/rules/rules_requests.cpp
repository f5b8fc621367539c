#include "tool/rules/rules_requests.h"

namespace tool {

const Rule kDependantLeftRunning = {
    "dependant-left-running",
    RuleGroup::REQUESTS,
    Level::WARNING,
    "an application that keeps running though what it depends on is stopped",
    "Found for the request that --stop gives: an application in it is needed by one that is not. The "
    "library\n"
    "stops what is named, nothing more.",
    "net:\n"
    "  bin_path: /opt/net\n"
    "web: # startplan check top.yaml --stop net\n"
    "  bin_path: /opt/web\n"
    "  depends: [net]\n",
    "The application runs on without what it needs.",
    "Stop it as well. \"startplan plan stop --closure\" shows the whole request.",
};

const Rule kOneLevelClosure = {
    "one-level-closure",
    RuleGroup::REQUESTS,
    Level::WARNING,
    "an application that a start pulls in and that does not wait for its own dependencies",
    "Found for the request that --start gives. What its applications depend on is started, too, but the "
    "library\n"
    "looks no further: what is pulled in waits for nothing. Without dependencies of its own it has nothing "
    "to\n"
    "wait for, and nothing is found.",
    "dev:\n"
    "  bin_path: /opt/dev\n"
    "net:\n"
    "  bin_path: /opt/net\n"
    "  depends: [dev]\n"
    "web: # startplan check top.yaml --start web\n"
    "  bin_path: /opt/web\n"
    "  depends: [net]\n",
    "It is started at once, and what it depends on later or not at all.",
    "Name it and all that it depends on in the request. \"startplan plan start --closure\" shows that "
    "request.",
};

const Rule kRequestCycle = {
    "request-cycle",
    RuleGroup::REQUESTS,
    Level::ERROR,
    "a request that the library refuses because of a cycle",
    "Found for the requests that --start and --stop give. A cycle outside of the request does no harm to "
    "it;\n"
    "the rule \"cycle\" finds those as well.",
    "net:\n"
    "  bin_path: /opt/net\n"
    "  depends: [web]\n"
    "web: # startplan check top.yaml --start net --start web\n"
    "  bin_path: /opt/web\n"
    "  depends: [net]\n",
    "Nothing of the whole request is started or stopped.",
    "Break the cycle.",
};

const Rule kStall = {
    "stall",
    RuleGroup::REQUESTS,
    Level::ERROR,
    "an application of a request whose turn never comes",
    "Found for the requests that --start and --stop give: it waits for one that is not configured, or for "
    "one\n"
    "that waits for such a one.",
    "net: # depends on an application that is not configured, so it is dropped\n"
    "  bin_path: /opt/net\n"
    "  depends: [dev]\n"
    "web: # startplan check top.yaml --start net --start web\n"
    "  bin_path: /opt/web\n"
    "  depends: [net]\n",
    "The process manager waits for ever.",
    "Configure what is missing, or do not depend on it.",
};

const Rule kUnknownName = {
    "unknown-name",
    RuleGroup::REQUESTS,
    Level::ERROR,
    "a name in a request that no application serves",
    "Found for the requests that --start and --stop give. The entry of a name that is found may be a "
    "pattern.\n"
    "An entry that was dropped or is not complete serves no name.",
    "",
    "The library leaves the name out and gives PARSE_ERR_DEPEND_NOT_FOUND.",
    "Correct the name, or configure the application.",
};

std::vector<const Rule*> RequestRules()
{
    return {&kDependantLeftRunning, &kOneLevelClosure, &kRequestCycle, &kStall, &kUnknownName};
}

} // namespace tool
