#include "tests/support/yaml_nodes.h"

#include <atomic>
#include <cstring>

#include <yaml.h>

#include "tests/support/next_function.h"

namespace {

std::string& MissingText()
{
    static std::string text;
    return text;
}

std::atomic<int> deletedDocuments{0};

bool IsMissing(const yaml_node_t& node)
{
    const std::string& missing = MissingText();
    return !missing.empty() && node.type == YAML_SCALAR_NODE && node.data.scalar.length == missing.size() &&
           std::memcmp(node.data.scalar.value, missing.data(), missing.size()) == 0;
}

} // namespace

extern "C" yaml_node_t* yaml_document_get_node(yaml_document_t* document, int index)
{
    static const auto next =
        test_support::NextFunction<yaml_node_t* (*)(yaml_document_t*, int)>("yaml_document_get_node");
    yaml_node_t* const node = next(document, index);
    return node == nullptr || IsMissing(*node) ? nullptr : node;
}

extern "C" void yaml_document_delete(yaml_document_t* document)
{
    static const auto next = test_support::NextFunction<void (*)(yaml_document_t*)>("yaml_document_delete");
    ++deletedDocuments;
    next(document);
}

namespace test_support {

MissingNodes::MissingNodes(const std::string& text)
{
    MissingText() = text;
}

MissingNodes::~MissingNodes()
{
    MissingText().clear();
}

int DeletedDocuments()
{
    return deletedDocuments;
}

} // namespace test_support
