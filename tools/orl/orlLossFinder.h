// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_LOSS_FINDER_H
#define ORL_LOSS_FINDER_H

#include <rapidjson/document.h>

#include <functional>
#include <string>

namespace ORL_0_81::rapidotio {
class Node;
}

namespace ORL_0_81::tool {

class JsonPath;

/// Why something does not reach the normal form.
enum class LossKind {
    kSchemaNotHandled, ///< an object became no node, for its schema is unknown, of another version or absent
    kDoesNotFit,       ///< a node stands where the writers leave it out, with all below it
    kNotModelled,      ///< a member that nobody reads
    kRefused,          ///< a value of a form that the reader does not take
    kNotWritten,       ///< read, and yet no part of the normal form
    kRewritten,        ///< another text stands in its place
    kReplaced,         ///< another value of the document goes to the same place and wins
    kRepeated,         ///< a name that the object has already used
    kCut               ///< only a part is kept
};

/// What is asked for: all losses, or those of reading alone, for which every node fits wherever it stands.
enum class LossScope { kNormalForm, kReading };

/// Receives one loss: its kind, what is lost in words that equal losses share, and where.
using LossSink = std::function<void(LossKind, std::string const& what, JsonPath const& place)>;

/// Tells what a document holds and its normal form does not, in the order of the document.
///
/// What is inside something lost counts as part of that loss. A null, an empty text, an empty list and an
/// empty object say nothing, and so do lists and objects of such: that they are gone is no loss. Neither is
/// a refused number that is the default of its member, a rate of 0, which means undefined, nor what single
/// precision takes of the numbers that are kept in it.
///
/// \param document What was parsed.
/// \param root The tree over it, walked to its end and unchanged.
void findLosses(rapidjson::Value const& document, rapidotio::Node const& root, LossScope scope,
                LossSink const& sink);

} // namespace ORL_0_81::tool

#endif // ORL_LOSS_FINDER_H
