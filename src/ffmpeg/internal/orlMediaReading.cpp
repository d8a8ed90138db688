// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "orlMediaReading.h"

#include "internal/orlFrameFiles.h"
#include "internal/orlFrameRate.h"
#include "internal/orlFrameTiming.h"
#include "internal/orlOpenMedium.h"
#include "internal/orlReadLimits.h"
#include "internal/orlStoredName.h"
#include "internal/orlStreamDescription.h"

#include <limits>
#include <new>
#include <utility>

namespace ORL_0_81::media {

namespace {

constexpr AVRational RATE_OF_NOTHING = {24, 1};

AVRational rateFor(Rational const& rate) {
    constexpr auto LARGEST = static_cast<unsigned>(std::numeric_limits<int>::max());
    if (rate.getNumerator() <= 0 || rate.getDenominator() == 0 || rate.getDenominator() > LARGEST) {
        return RATE_OF_NOTHING;
    }
    return AVRational{rate.getNumerator(), static_cast<int>(rate.getDenominator())};
}

std::string lastPartOf(std::string const& path) { return path.substr(path.rfind('/') + 1); } // npos + 1 is 0

// Settles what a location means: the file that exists, or the frames of a sequence. Other paths are dropped.
//
// \returns kFound for a sequence.
FrameSearch settle(MediaLocation& location, std::string& name, FrameFiles& frames) {
    for (std::string const& path : location.localPaths) {
        if (exists(path)) {
            name = lastPartOf(path);
            location.localPaths = {std::string(path)};
            return FrameSearch::kNoSequenceName;
        }
    }
    for (std::string const& path : location.localPaths) {
        if (std::string stored = findStoredPath(path); !stored.empty()) {
            name = lastPartOf(path);
            location.localPaths = {std::move(stored)};
            return FrameSearch::kNoSequenceName;
        }
    }
    FrameSearch result = FrameSearch::kNoSequenceName;
    for (std::string const& path : location.localPaths) {
        FrameSearch const search = findFrameFiles(path, frames);
        if (search == FrameSearch::kFound) {
            name = lastPartOf(path);
            location.localPaths = {frames.firstPath};
            return search;
        }
        result = result == FrameSearch::kNoSequenceName ? search : result;
    }
    return result;
}

void setRange(MediaDescription& description, AVRational rate, std::int64_t start, std::int64_t count) {
    description.rate = av_q2d(rate);
    description.start = start;
    description.frameCount = count;
}

Status describeMovie(OpenMedium& medium, MediaStreams const& streams, MediaDescription& description) {
    FrameTiming timing;
    Status const status = findFrameTiming(medium, *streams.picture, timing);
    if (!status) {
        return status;
    }
    setRange(description, timing.rate, 0, timing.count);
    describeTags(medium.format(), streams.picture, timing.rate, description);
    return Status::kSuccess;
}

Status describeStreams(OpenMedium& medium, FrameFiles const* frames, AVRational rate,
                       MediaDescription& description) {
    MediaStreams const streams = chooseStreams(medium.format());
    if (!streams.picture && !streams.sound) {
        return Status::kUnsupportedFormat;
    }
    if (frames && !medium.isStillImage()) {
        return Status::kUnsupportedFormat;
    }
    description.fileSize = medium.fileSize();
    if (streams.sound) {
        Status const status = describeSound(medium, *streams.sound, description);
        if (!status && !streams.picture) {
            return status;
        }
    }
    if (!streams.picture) {
        setRange(description, rate, 0, statedFrameCount(medium, *streams.sound, rate));
        describeTags(medium.format(), nullptr, rate, description);
        return Status::kSuccess;
    }
    Status status = describePicture(medium, *streams.picture, description);
    if (!status) {
        return status;
    }
    if (frames) {
        setRange(description, rate, frames->first, std::int64_t{frames->last} - frames->first + 1);
    } else if (medium.isStillImage()) {
        setRange(description, rate, 0, 1);
    } else {
        status = describeMovie(medium, streams, description);
    }
    description.frameRate = description.rate;
    return status;
}

} // namespace

Status describeMedium(std::string const& text, ReadingOptions const& options, Rational const& rate,
                      MediaDescription& description) {
    if (text.empty() || text.find('\0') != std::string::npos) {
        return Status::kFileNotFound; // a name ends at its first zero byte; another file could be meant
    }
    MediaLocation location = findLocation(text, options.allowed);
    description.name = lastPartOf(text);
    FrameFiles frames;
    FrameSearch const search = settle(location, description.name, frames);
    if (search == FrameSearch::kNoFrames) {
        return Status::kFileNotFound;
    }
    if (search == FrameSearch::kNoAccess) {
        return Status::kIOAccess;
    }
    bool const isSequence = search == FrameSearch::kFound;

    ReadLimits limits(options.timeLimit);
    OpenMedium medium(options.allowed, limits);
    Status status = medium.open(location, text);
    if (status) {
        status = medium.findStreamParameters();
    }
    if (status) {
        status = describeStreams(medium, isSequence ? &frames : nullptr, rateFor(rate), description);
    }
    if (medium.hasLackedMemory()) {
        throw std::bad_alloc(); // whatever FFmpeg has made of the rest
    }
    return status;
}

} // namespace ORL_0_81::media
