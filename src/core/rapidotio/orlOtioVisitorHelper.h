// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_OTIO_VISITOR_HELPER_H
#define ORL_OTIO_VISITOR_HELPER_H

#include <string>

namespace ORL_0_81::rapidotio {

class NodeVisitor;

/// The whole road of a timeline document in one call: parse, walk and, if asked, write.
class VisitorHelper {
public:
    /// \param json A document: the timeline itself, or an object that holds it as "timeline". It ends at the
    ///     first zero byte.
    /// \param visitor Is taken through the tree. It must keep no plain reference to a node beyond the call; a
    ///     node that it keeps alive through a SharedPtr has a stale parent and a stale JSON reference.
    /// \param output If not null, receives the compact text of the tree as the visitor left it, in normal
    ///     form and without the wrapper; "{}" for a document without a usable timeline. Unchanged after a
    ///     failure.
    /// \returns false only if the text does not parse or is nested deeper than 1000 levels; the visitor was
    ///     then not called.
    ///
    /// May run on several threads at once, with a visitor for each.
    static bool visit(std::string const& json, NodeVisitor& visitor, std::string* output);
};

} // namespace ORL_0_81::rapidotio

#endif // ORL_OTIO_VISITOR_HELPER_H
