// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "orlLossReport.h"

#include "orlInputError.h"
#include "orlJsonPath.h"
#include "orlPrintable.h"
#include "orlTimelineDocument.h"

#include <ostream>

namespace ORL_0_81::tool {

LossReport::LossReport(TimelineDocument const& document, LossScope scope) {
    findLosses(
        document.json(), document.root(), scope,
        [this](LossKind kind, std::string const& what, JsonPath const& place) { add(kind, what, place); });
}

void LossReport::add(LossKind kind, std::string const& what, JsonPath const& place) {
    ++m_count;
    auto const [position, isNew] = m_positions.emplace(what, m_groups.size());
    if (isNew) {
        m_groups.push_back({kind, what, 1, place.toPointer()});
    } else {
        ++m_groups[position->second].count;
    }
}

void LossReport::print(std::string const& file, std::string const& form, Streams const& streams) const {
    if (m_groups.empty()) {
        return;
    }
    streams.error << streams.errorStyle.warning("orl:") << ' ' << inQuotes(file) << ": not in the " << form
                  << ":\n";
    for (LossGroup const& group : m_groups) {
        streams.error << "  " << line(group) << '\n';
    }
}

void LossReport::refuseLosses(std::string const& file, std::string const& form) const {
    if (m_count > 0) {
        throw InputError(file, "the " + form + " would lose something in " + std::to_string(m_count) +
                                   (m_count == 1 ? " place" : " places"));
    }
}

void tellUnconvertedClips(std::string const& file, TimelineDocument const& document, Streams const& streams) {
    LossReport const report(document, LossScope::kReading);
    for (LossGroup const& group : report.groups()) {
        if (group.kind == LossKind::kSchemaNotHandled && group.what.find("\"Clip.") != std::string::npos) {
            streams.error << streams.errorStyle.warning("orl:") << ' ' << inQuotes(file) << ": "
                          << LossReport::line(group) << "; orl convert makes clips of them that are read\n";
        }
    }
}

std::string LossReport::line(LossGroup const& group) {
    return std::to_string(group.count) + " x " + group.what +
           (group.first.empty() ? ", at the top" : ", first at " + group.first);
}

} // namespace ORL_0_81::tool
