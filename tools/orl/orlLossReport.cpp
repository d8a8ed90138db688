// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "orlLossReport.h"

#include "orlJsonPath.h"
#include "orlTimelineDocument.h"

namespace ORL_0_81::tool {

LossReport::LossReport(TimelineDocument const& document, LossScope scope) {
    findLosses(document.json(), document.root(), scope,
               [this](LossKind kind, std::string const& what, JsonPath const& place) {
                   ++m_count;
                   auto const [position, isNew] = m_positions.emplace(what, m_groups.size());
                   if (isNew) {
                       m_groups.push_back({kind, what, 1, place.toPointer()});
                   } else {
                       ++m_groups[position->second].count;
                   }
               });
}

std::string LossReport::line(LossGroup const& group) {
    return std::to_string(group.count) + " x " + group.what +
           (group.first.empty() ? ", at the top" : ", first at " + group.first);
}

} // namespace ORL_0_81::tool
