// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "rapidotio/orlOtioNodeIterator.h"

#include "rapidotio/orlOtioNode.h"

namespace ORL_0_81::rapidotio {

namespace {

// Goes as deep as the document does, which the limit of nesting at parsing bounds.
void recurse(Node& node, NodeVisitor& visitor) { // NOLINT(misc-no-recursion)
    node.accept(visitor);
    if (node.m_children.empty()) {
        node.generateChildren();
    }
    // By index and within the count of this moment: a visitor below may append to these children.
    for (std::size_t i = 0, count = node.m_children.size(); i < count && i < node.m_children.size(); ++i) {
        SharedPtr<Node> const child = node.m_children[i];
        if (child) {
            recurse(*child, visitor);
        }
    }
    node.postAccept(visitor);
}

} // namespace

void NodeIterator::iterate() { recurse(m_node, m_visitor); }

} // namespace ORL_0_81::rapidotio
