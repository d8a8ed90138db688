// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_LOSS_REPORT_H
#define ORL_LOSS_REPORT_H

#include "orlLossFinder.h"
#include "orlStreams.h"

#include <cstddef>
#include <string>
#include <unordered_map>
#include <vector>

namespace ORL_0_81::tool {

class TimelineDocument;

/// Equal losses of one document.
struct LossGroup {
    LossKind kind;
    std::string what;
    std::size_t count;
    std::string first; ///< JSON pointer, from the document's top
};

/// The losses of one document, grouped, in the order of their first places.
class LossReport {
public:
    LossReport() = default;

    /// Of what the document holds and its normal form does not.
    explicit LossReport(TimelineDocument const& document, LossScope scope = LossScope::kNormalForm);

    /// Adds one loss to its group.
    void add(LossKind kind, std::string const& what, JsonPath const& place);

    std::vector<LossGroup> const& groups() const { return m_groups; }

    /// Of all groups together.
    std::size_t count() const { return m_count; }

    /// One line for each group, for people: how often, what, and where first.
    static std::string line(LossGroup const& group);

    /// Writes to the error stream a heading and a line for each group, if there are any.
    ///
    /// \param form What the document was brought to, such as "normal form".
    void print(std::string const& file, std::string const& form, Streams const& streams) const;

    /// \throws InputError if there is any loss.
    void refuseLosses(std::string const& file, std::string const& form) const;

private:
    std::vector<LossGroup> m_groups;
    std::unordered_map<std::string, std::size_t> m_positions;
    std::size_t m_count = 0;
};

/// Tells on the error stream how many clips of a document are of a newer schema, which are read as nothing, and that
/// `orl convert` helps. Says nothing if there are none.
void tellUnconvertedClips(std::string const& file, TimelineDocument const& document, Streams const& streams);

} // namespace ORL_0_81::tool

#endif // ORL_LOSS_REPORT_H
