// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_OTIO_NODE_ITERATOR_H
#define ORL_OTIO_NODE_ITERATOR_H

namespace ORL_0_81::rapidotio {

class Node;
class NodeVisitor;

/// Takes a visitor through a tree, and makes the tree as it goes.
///
/// At each node: visit; if there are no children, make them; the children in order; post-visit.
class NodeIterator {
public:
    /// Refers to both and owns neither. The document of the tree must live for as long as the walk.
    NodeIterator(Node& node, NodeVisitor& visitor) : m_node(node), m_visitor(visitor) {}

    void iterate();

private:
    Node& m_node;
    NodeVisitor& m_visitor;
};

} // namespace ORL_0_81::rapidotio

#endif // ORL_OTIO_NODE_ITERATOR_H
