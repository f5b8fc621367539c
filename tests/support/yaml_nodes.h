#ifndef STARTPLAN_TESTS_SUPPORT_YAML_NODES_H
#define STARTPLAN_TESTS_SUPPORT_YAML_NODES_H

#include <string>

namespace test_support {

// While the object lives, every scalar with this text is missing from its document: a look-up of it gives
// no node, as in a document that is damaged. A program that links this file defines
// yaml_document_get_node() and yaml_document_delete() itself; both do the real work otherwise.
class MissingNodes {
public:
    explicit MissingNodes(const std::string& text);
    MissingNodes(const MissingNodes&) = delete;
    MissingNodes& operator=(const MissingNodes&) = delete;
    ~MissingNodes();
};

// How often yaml_document_delete() was called so far, by whomever.
int DeletedDocuments();

} // namespace test_support

#endif
