// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_TIMELINE_DOCUMENT_H
#define ORL_TIMELINE_DOCUMENT_H

#include "rapidotio/orlOtioNode.h"

#include <rapidjson/document.h>

#include <memory>
#include <string>

namespace ORL_0_81::rapidotio {
class NodeVisitor;
}

namespace ORL_0_81::tool {

/// \returns the text without the byte order mark of UTF-8 that some programs write at the beginning, and that
/// the library's parser does not know.
std::string withoutByteOrderMark(std::string const& text);

/// Parses the text of a document, without a byte order mark, as the library does.
///
/// Zero bytes at the end are passed over, for they lose nothing. A zero byte with more text behind it is
/// refused: the library would stop there in silence.
///
/// \param file Named in the errors.
/// \throws InputError with line, column (both from 1, columns in bytes) and reason.
void parseDocument(std::string const& file, std::string const& body, rapidjson::Document& document);

/// A timeline document that has been read, with the whole tree of nodes that the library lays over it.
class TimelineDocument {
public:
    /// Parses the text by parseDocument(), past a byte order mark, and walks the tree once.
    ///
    /// \throws InputError as parseDocument() does.
    TimelineDocument(std::string const& file, std::string const& text);

    /// As above, with a visitor that sees the walk.
    TimelineDocument(std::string const& file, std::string const& text, rapidotio::NodeVisitor& visitor);

    /// What was read.
    rapidjson::Value const& json() const { return m_json; }

    /// The top of the tree.
    rapidotio::RootNode const& root() const { return *m_root; }

    /// The timeline at the top, or null when the document holds none.
    rapidotio::TimelineNode const* timeline() const;

    /// The text of the tree: what VisitorHelper::visit gives for the same document.
    std::string normalForm() const;

private:
    rapidjson::Document m_json;
    std::unique_ptr<rapidotio::RootNode> m_root;
};

} // namespace ORL_0_81::tool

#endif // ORL_TIMELINE_DOCUMENT_H
