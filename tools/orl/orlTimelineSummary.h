// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_TIMELINE_SUMMARY_H
#define ORL_TIMELINE_SUMMARY_H

#include "rapidotio/orlOtioNode.h"
#include "rapidotio/orlOtioNodeVisitor.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace ORL_0_81::tool {

/// A time or a length.
struct Moment {
    double seconds;
    double frames; ///< at the rate that is told beside it
};

/// \returns the moment, or nothing for a time that is not defined or beyond a double.
///
/// \param rate Of the frames, a second; without it the time's own.
std::optional<Moment> toMoment(rapidotio::Time const& time, std::optional<double> rate = std::nullopt);

struct Resolution {
    int width;
    int height;
};

struct ClipSummary {
    std::string name;
    std::optional<Moment> start;  ///< of the source range
    std::optional<Moment> length; ///< of the source range
    std::optional<double> rate;   ///< the frame rate if it is known, else the rate of the source range
    std::optional<Resolution> resolution;
    std::string url;
    std::string framesPath;
    std::string moviePath;
    std::string uploadedMovie;
};

struct Counts {
    std::size_t clips = 0;
    std::size_t gaps = 0;
    std::size_t effects = 0; ///< the layers of effects, too
};

/// What stands in a track and in no track within it.
struct TrackSummary {
    std::string name;
    rapidotio::TrackKind kind = rapidotio::kTrackUnknown;
    std::size_t depth = 0; ///< in how many tracks it stands
    Counts counts;
    std::vector<ClipSummary> clips;
};

/// Collects what `orl info` tells in one walk.
///
/// Tracks stand in the order of the document. A clip counts for the nearest track above it, however many
/// stacks lie between; a clip that stands in no track at all is kept apart.
class TimelineSummary : public rapidotio::NodeVisitor {
public:
    void visitTimelineNode(rapidotio::TimelineNode& node) override;
    void visitTrackNode(rapidotio::TrackNode& node) override;
    void postVisitTrackNode(rapidotio::TrackNode& node) override;
    void visitClipNode(rapidotio::ClipNode& node) override;
    void visitGapNode(rapidotio::GapNode& node) override;
    void visitEffectNode(rapidotio::EffectNode& node) override;

    std::string name;
    std::optional<Moment> start;
    std::optional<double> startRate;
    std::vector<TrackSummary> tracks;
    TrackSummary outside; ///< what stands in no track

    /// Of all tracks and what is outside of them.
    Counts total() const;

private:
    TrackSummary& current();

    std::vector<std::size_t> m_openTracks;
    bool m_hasTimeline = false;
};

} // namespace ORL_0_81::tool

#endif // ORL_TIMELINE_SUMMARY_H
