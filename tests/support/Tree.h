// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_TEST_SUPPORT_TREE_H
#define ORL_TEST_SUPPORT_TREE_H

#include "support/Json.h"

#include "rapidotio/orlOtioNode.h"
#include "rapidotio/orlOtioNodeIterator.h"
#include "rapidotio/orlOtioNodeVisitor.h"
#include "rapidotio/orlOtioVisitorHelper.h"

#include <cstddef>
#include <initializer_list>
#include <stdexcept>
#include <string>

/// \file
/// Timeline documents for tests: trees, single nodes and normal forms.

namespace orlTest {

/// Sees everything and does nothing.
class SilentVisitor : public ORL_0_81::rapidotio::NodeVisitor {};

/// A document under the whole tree that a walk makes of it.
class Tree {
public:
    explicit Tree(std::string const& text) : m_document(parsed(text)), m_root(m_document) { walk(); }

    void walk() {
        SilentVisitor visitor;
        ORL_0_81::rapidotio::NodeIterator(m_root, visitor).iterate();
    }

    ORL_0_81::rapidotio::RootNode& root() { return m_root; }

    /// The node at the end of a path of child positions below the root.
    template <class N = ORL_0_81::rapidotio::Node>
    N& at(std::initializer_list<std::size_t> path) {
        ORL_0_81::rapidotio::Node* node = &m_root;
        for (std::size_t const position : path) {
            node = node->m_children.at(position).get();
        }
        return dynamic_cast<N&>(*node);
    }

    std::string text() const { return writtenToObject(m_root); }

private:
    rapidjson::Document m_document; // outlives the tree
    ORL_0_81::rapidotio::RootNode m_root;
};

/// One node that the factory made of a text, without a parent and without its children.
template <class N>
class Built {
public:
    explicit Built(std::string const& text) : m_document(parsed(text)) {
        m_node = ORL_0_81::rapidotio::NodeFactory::buildNode(m_document, nullptr);
        if (dynamic_cast<N*>(m_node.get()) == nullptr) {
            throw std::invalid_argument("the factory made no such node of " + text);
        }
    }

    Built(Built const&) = delete;
    Built& operator=(Built const&) = delete;

    N& operator*() { return static_cast<N&>(*m_node); }
    N* operator->() { return static_cast<N*>(m_node.get()); }

private:
    rapidjson::Document m_document; // outlives the node
    ORL_0_81::SharedPtr<ORL_0_81::rapidotio::Node> m_node;
};

/// The normal form of a text that has to parse.
inline std::string normalized(std::string const& text) {
    SilentVisitor visitor;
    std::string output = "untouched";
    if (!ORL_0_81::rapidotio::VisitorHelper::visit(text, visitor, &output)) {
        throw std::invalid_argument("refused: " + text.substr(0, 200));
    }
    return output;
}

/// Whether a text is taken; what a refusal must leave alone is checked, too.
inline bool accepted(std::string const& text) {
    SilentVisitor visitor;
    std::string output = "untouched";
    bool const result = ORL_0_81::rapidotio::VisitorHelper::visit(text, visitor, &output);
    if (result == (output == "untouched")) {
        throw std::logic_error("the output was touched by a refusal, or not by a success");
    }
    return result;
}

} // namespace orlTest

#endif // ORL_TEST_SUPPORT_TREE_H
