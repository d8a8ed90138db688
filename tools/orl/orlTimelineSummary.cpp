// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "orlTimelineSummary.h"

#include <cmath>

namespace ORL_0_81::tool {

using rapidotio::ClipNode;
using rapidotio::EffectNode;
using rapidotio::GapNode;
using rapidotio::Time;
using rapidotio::TimelineNode;
using rapidotio::TrackNode;

namespace {

std::optional<double> rateOf(ClipNode const& clip) {
    if (clip.m_frameRate > 0.0) {
        return clip.m_frameRate;
    }
    for (Time const* time : {&clip.m_sourceRange.duration, &clip.m_sourceRange.start_time}) {
        if (time->isDefined()) {
            return time->rate;
        }
    }
    return std::nullopt;
}

ClipSummary summarize(ClipNode const& clip) {
    ClipSummary summary;
    summary.name = clip.m_name;
    summary.rate = rateOf(clip);
    summary.start = toMoment(clip.m_sourceRange.start_time, summary.rate);
    summary.length = toMoment(clip.m_sourceRange.duration, summary.rate);
    if (clip.m_pixelWidth > 0 && clip.m_pixelHeight > 0) {
        summary.resolution = Resolution{clip.m_pixelWidth, clip.m_pixelHeight};
    }
    summary.url = clip.m_targetUrl;
    summary.framesPath = clip.m_pathToFrames;
    summary.moviePath = clip.m_pathToMovie;
    summary.uploadedMovie = clip.m_uploadedMovie;
    return summary;
}

} // namespace

std::optional<Moment> toMoment(Time const& time, std::optional<double> rate) {
    if (!time.isDefined()) {
        return std::nullopt;
    }
    double const seconds = time.value / time.rate;
    // A time that is counted at that rate already keeps its count exactly.
    double const frames = !rate || *rate == time.rate ? time.value : seconds * *rate;
    if (!std::isfinite(seconds) || !std::isfinite(frames)) {
        return std::nullopt;
    }
    return Moment{seconds, frames};
}

void TimelineSummary::visitTimelineNode(TimelineNode& node) {
    if (m_hasTimeline) {
        return; // one within another; the outermost names the document
    }
    m_hasTimeline = true;
    name = node.m_name;
    start = toMoment(node.m_globalStartTime);
    if (start) {
        startRate = node.m_globalStartTime.rate;
    }
}

void TimelineSummary::visitTrackNode(TrackNode& node) {
    TrackSummary track;
    track.name = node.m_name;
    track.kind = node.m_kind;
    track.depth = m_openTracks.size();
    m_openTracks.push_back(tracks.size());
    tracks.push_back(std::move(track));
}

void TimelineSummary::postVisitTrackNode(TrackNode&) { m_openTracks.pop_back(); }

void TimelineSummary::visitClipNode(ClipNode& node) {
    ++current().counts.clips;
    current().clips.push_back(summarize(node));
}

void TimelineSummary::visitGapNode(GapNode&) { ++current().counts.gaps; }

void TimelineSummary::visitEffectNode(EffectNode&) { ++current().counts.effects; }

Counts TimelineSummary::total() const {
    Counts total = outside.counts;
    for (TrackSummary const& track : tracks) {
        total.clips += track.counts.clips;
        total.gaps += track.counts.gaps;
        total.effects += track.counts.effects;
    }
    return total;
}

TrackSummary& TimelineSummary::current() {
    return m_openTracks.empty() ? outside : tracks[m_openTracks.back()];
}

} // namespace ORL_0_81::tool
