// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_SEQUENCE_DETECTION_H
#define ORL_SEQUENCE_DETECTION_H

#include "internal/orlDirectoryListing.h"
#include "internal/orlSequenceDetector.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// \file
/// What stands around a SequenceDetector wherever one is used: where names come from, and how it is run.

namespace ORL_0_81 {

/// Detects the sequences among those names that the filter lets pass, on a roomy stack if the filter needs
/// one and there is memory for it. Without room each name gets the filter's failure.
///
/// \param names Their texts must stay during the call.
/// \param filter A regular expression, see NameFilter. Throws `std::regex_error` if it is malformed; no result
///     has come then.
/// \param results Is called on the stack of another thread, perhaps, but while the caller waits.
void detectSequences(CandidateIndex::Names names, std::string_view filter,
                     SequenceDetector::Results& results);

/// The names of the regular files of a directory, in the file system's order, normalised by normalizeToNfd().
class DirectoryNames : private NameReceiver {
public:
    DirectoryNames() = default;

    /// Throws as listRegularFiles() does.
    explicit DirectoryNames(std::string const& path) { listRegularFiles(path, *this); }

    /// Views of texts that live as long as this object, and stay where they are until it is moved.
    std::vector<std::string_view> views() const;

    /// The same views, as detectSequences() takes them.
    CandidateIndex::Names names() const;

private:
    void addName(char const* name) override;

    template <class Add>
    void forEach(Add const& add) const;

    std::string m_text; // one behind the other
    std::vector<std::size_t> m_ends;
};

} // namespace ORL_0_81

#endif // ORL_SEQUENCE_DETECTION_H
