// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_TIMELINE_GENERATOR_H
#define ORL_TIMELINE_GENERATOR_H

#include <string>

/// \returns the text of a timeline with that many clips in eight video tracks, as a conform tool would write
/// it:
///     ranges, URLs, format blocks, every tenth clip with a colour decision, a gap behind every twentieth.
///     The same text for the same count.
std::string generateTimeline(int clipCount);

#endif // ORL_TIMELINE_GENERATOR_H
