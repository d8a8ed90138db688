// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "orlPlainSanitizer.h"

#include "orlFPSUtils.h"
#include "rapidotio/orlOtioVisitorHelper.h"

#include <cfloat>
#include <cmath>
#include <limits>
#include <map>
#include <utility>

using namespace ORL_0_81;
using namespace ORL_0_81::rapidotio;

namespace orlFuzz {

namespace {

class FirstClip : public NodeVisitor {
public:
    void visitClipNode(ClipNode& node) override {
        if (!clip) {
            clip = SharedPtr<ClipNode>(&node);
        }
    }

    SharedPtr<ClipNode> clip;
};

// Null for a text that does not parse, and for one without a clip: both end the work on a clip.
SharedPtr<ClipNode> firstClipOf(std::string const& metadata) {
    FirstClip finder;
    VisitorHelper::visit(metadata, finder, nullptr);
    return finder.clip;
}

bool hasTimecode(std::string const& metadata) {
    SharedPtr<ClipNode> const clip = firstClipOf(metadata);
    if (clip) {
        for (auto const& [name, value] : clip->m_extraData) {
            if (name == "Timecode/Start") {
                return true;
            }
        }
    }
    return false;
}

long long ticksOf(double value) {
    if (std::fabs(value) < 9223372036854775808.0) {
        return static_cast<long long>(value);
    }
    return value < 0.0 ? std::numeric_limits<long long>::min() : std::numeric_limits<long long>::max();
}

void toRate(rapidotio::Time& time, double rate) {
    if (time.isDefined()) {
        time.value = time.value / time.rate * rate;
        time.rate = rate;
    }
}

// The four times of a clip, from those that it has and the available range of its media.
void completeRanges(ClipNode& clip, TimeRange const& media, bool startTrusted) {
    double const sourceRate = clip.m_sourceRange.start_time.rate;
    double const rate = sourceRate > DBL_EPSILON ? sourceRate : media.start_time.rate;
    for (TimeRange* const range : {&clip.m_availableRange, &clip.m_sourceRange}) {
        if (!range->start_time.isDefined() && startTrusted) {
            range->start_time = media.start_time;
        }
        if (!range->duration.isDefined()) {
            range->duration = media.duration;
        }
        toRate(range->start_time, rate);
        toRate(range->duration, rate);
    }
}

void describe(ClipNode& clip, ClipNode const& media) {
    clip.m_pixelWidth = media.m_pixelWidth;
    clip.m_pixelHeight = media.m_pixelHeight;
    clip.m_dataType = media.m_dataType;
    clip.m_numVideoChannels = media.m_numVideoChannels;
    clip.m_pixelAspect = media.m_pixelAspect;
    clip.m_frameRate = media.m_frameRate;
    clip.m_hasAudio = media.m_hasAudio;
    clip.m_audioSampleRate = media.m_audioSampleRate;
    clip.m_numAudioChannels = media.m_numAudioChannels;
    clip.m_videoCodec = media.m_videoCodec;
    clip.m_audioCodec = media.m_audioCodec;
    clip.m_fileSizeInBytes = media.m_fileSizeInBytes;
    clip.m_extraData = media.m_extraData;
}

void place(ClipNode& clip, double centerX, double centerY, double sizeX, double sizeY) {
    clip.m_boundsCenterX = centerX;
    clip.m_boundsCenterY = centerY;
    clip.m_boundsSizeX = sizeX;
    clip.m_boundsSizeY = sizeY;
}

} // namespace

PlainSanitizer::PlainSanitizer(Bounds const& bounds, ORL_0_81::Time const& time, Read read)
    : m_bounds(bounds), m_time(time), m_read(std::move(read)) {}

void PlainSanitizer::visitTimelineNode(TimelineNode& node) {
    rapidotio::Time const& start = node.m_globalStartTime;
    Rational rate;
    bool const isRateKnown = start.hasRate() && FPSUtils::getFPSFromValue(start.rate, rate).success();
    if (start.isDefined() && isRateKnown) {
        m_time = ORL_0_81::Time(ticksOf(start.value), rate);
    } else if (start.hasValue() && !start.hasRate()) {
        m_time = ORL_0_81::Time(ticksOf(start.value + 0.5), m_time.getRate());
    } else if (!start.hasValue() && isRateKnown) {
        m_time = FPSUtils::convertToRate(m_time, rate, FPSUtils::kRoundNearest);
    }
}

void PlainSanitizer::visitClipNode(ClipNode& clip) {
    ++m_clipCount;
    try {
        m_results.push_back(complete(clip));
    } catch (ReaderFailure const&) {
        m_results.emplace_back();
        m_results.back().hasThrown = true;
    }
}

PlainSanitizer::Result PlainSanitizer::complete(ClipNode& clip) const {
    bool const hasBounds = clip.m_boundsSizeX > DBL_EPSILON && clip.m_boundsSizeY > DBL_EPSILON;
    std::string const target = clip.m_targetUrl;
    std::string const movie = clip.m_uploadedMovie;

    std::map<std::string, std::string> texts;
    std::string first;
    std::string selected;
    bool isMovieTimed = false;
    // A source that is the target is asked once more than by the rules, and gives the same once more.
    for (std::string const& url : {target, clip.m_pathToFrames, clip.m_pathToMovie, movie}) {
        std::string text;
        if (url.empty() || !m_read(url, m_time, text)) {
            continue;
        }
        texts[url] = text;
        isMovieTimed = url == movie ? hasTimecode(text) : isMovieTimed;
        first = first.empty() ? url : first;
        if (selected.empty() || (selected == movie && !isMovieTimed)) {
            selected = url;
        }
        if (selected != movie || isMovieTimed) {
            break;
        }
    }

    Result result;
    result.startTrusted = !selected.empty() && (isMovieTimed || selected != movie);
    if (texts.empty()) {
        if (!hasBounds) {
            place(clip, m_bounds.getCenterX(), m_bounds.getCenterY(), m_bounds.getSizeX(),
                  m_bounds.getSizeY());
        }
        return result;
    }
    for (auto const& [url, text] : texts) {
        SharedPtr<ClipNode> const media = firstClipOf(text);
        if (!media) {
            result.isSuccess = false;
            return result;
        }
        if (url == first && !hasBounds) {
            place(clip, media->m_boundsCenterX, media->m_boundsCenterY, media->m_boundsSizeX,
                  media->m_boundsSizeY);
        }
        if (url == selected) {
            completeRanges(clip, media->m_availableRange, result.startTrusted);
            result.sourceRange = clip.m_sourceRange;
        }
        if (url == target) {
            describe(clip, *media);
        }
    }
    return result;
}

void PlainSanitizer::postVisitTimelineNode(TimelineNode& node) {
    rapidotio::Time const given = node.m_globalStartTime;
    auto const ticks = static_cast<double>(m_time.getNbTicks());
    double const rate = m_time.getRate().getValue();
    rapidotio::Time start;
    for (Result const& result : m_results) {
        if (result.hasThrown) {
            throw ReaderFailure();
        }
        if (!result.isSuccess) {
            continue;
        }
        if (m_clipCount != 1) {
            start = {ticks, rate};
        } else if (result.startTrusted) {
            start = result.sourceRange.start_time;
        } else {
            start.rate = result.sourceRange.duration.rate;
        }
    }
    m_results.clear();
    if (given.isDefined()) {
        return;
    }
    if (!start.isDefined()) {
        bool const hasRate = std::fabs(start.rate) > DBL_EPSILON;
        start.value = hasRate ? ticks / rate * start.rate : ticks;
        start.rate = hasRate ? start.rate : rate;
    }
    if (std::fabs(given.rate) > DBL_EPSILON) {
        start.value = start.value / start.rate * given.rate;
        start.rate = given.rate;
    }
    node.m_globalStartTime = start;
}

} // namespace orlFuzz
