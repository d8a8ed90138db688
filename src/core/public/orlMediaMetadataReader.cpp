// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "orlMediaMetadataReader.h"

#include "internal/orlClipGrid.h"
#include "internal/orlFloatUtils.h"
#include "internal/orlJson.h"
#include "internal/orlLocaleGuard.h"
#include "internal/orlSemaphore.h"
#include "internal/orlThread.h"
#include "orlFPSUtils.h"
#include "orlPlatform.h"
#include "rapidotio/internal/orlOtioParsing.h"
#include "rapidotio/internal/orlOtioWriting.h"
#include "rapidotio/orlOtioNode.h"
#include "rapidotio/orlOtioNodeIterator.h"
#include "rapidotio/orlOtioNodeVisitor.h"
#include "rapidotio/orlOtioVisitorHelper.h"

#include <rapidjson/prettywriter.h>

#include <algorithm>
#include <atomic>
#include <cfloat>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <exception>
#include <future>
#include <map>
#include <mutex>
#include <string>
#include <thread>
#include <tuple>
#include <utility>
#include <vector>

// The three roads of MediaMetadata share two small visitors and the diagnostics, which are nobody else's:
// that keeps them in one file.

namespace ORL_0_81 {

namespace {

// One of many reads. Written by its own thread, and by others only when that has ended.
struct PendingRead {
    std::thread thread;
    String metadata;
    Status status;
    std::exception_ptr exception;
};

void joinAll(std::vector<PendingRead>& reads) {
    for (PendingRead& read : reads) {
        if (read.thread.joinable()) {
            read.thread.join();
        }
    }
}

unsigned long countRead(std::vector<PendingRead> const& reads) {
    auto const count = std::count_if(reads.begin(), reads.end(),
                                     [](PendingRead const& read) { return read.status.success(); });
    return static_cast<unsigned long>(count);
}

using rapidotio::ClipNode;
using rapidotio::Node;
using rapidotio::NodeIterator;
using rapidotio::NodeVisitor;
using rapidotio::RootNode;
using rapidotio::StackNode;
using rapidotio::TimelineNode;
using rapidotio::TimeRange;
using rapidotio::TrackNode;
using rapidotio::VisitorHelper;

// Whether the documents on their way are to be printed, for whoever looks for the place where one goes wrong.
bool isDebugging() { return Platform::getenv("ORL_DEBUG_MEDIAMETADATA") != nullptr; }

void DEBUG_PRETTY_PRINT(std::string const& label, rapidjson::Document const& document) {
    if (isDebugging()) {
        rapidjson::StringBuffer buffer;
        rapidjson::PrettyWriter<rapidjson::StringBuffer> writer(buffer);
        document.Accept(writer);
        std::printf("%s = %s\n", label.c_str(), buffer.GetString());
    }
}

// What a tree writes into an empty document.
void toDocument(Node const& root, rapidjson::Document& document) {
    document.SetObject();
    root.toJson(document, document.GetAllocator());
}

// The same as text. Its values are only made when they are to be printed.
String toText(Node const& root, std::string const& label, std::size_t sizeHint) {
    if (isDebugging()) {
        rapidjson::Document document;
        toDocument(root, document);
        DEBUG_PRETTY_PRINT(label, document);
    }
    return String(rapidotio::Writing::toText(root, sizeHint).c_str());
}

// The timeline of a document: its object "timeline", or itself.
rapidjson::Value const& timelineOf(rapidjson::Document const& document) {
    rapidjson::Value const* const timeline = rapidotio::Parsing::findObject(document, "timeline");
    return timeline ? *timeline : document;
}

// Collects the tracks of a tree, and the start of its timeline.
class TrackNodesGetter : public NodeVisitor {
public:
    void visitTimelineNode(TimelineNode& node) override { m_startTime = node.m_globalStartTime; }
    void visitTrackNode(TrackNode& node) override { m_tracks.emplace_back(&node); }

    std::vector<SharedPtr<Node>> m_tracks;
    rapidotio::Time m_startTime{0.0, 0.0};
};

// Collects the clips of a tree.
class ClipNodesGetter : public NodeVisitor {
public:
    void visitClipNode(ClipNode& node) override { m_clips.emplace_back(&node); }

    std::vector<SharedPtr<ClipNode>> m_clips;
};

// True for a size, an aspect or a rate that counts as one.
bool isPositive(double value) { return value > DBL_EPSILON; }

bool hasBounds(ClipNode const& clip) {
    return isPositive(clip.m_boundsSizeX) && isPositive(clip.m_boundsSizeY);
}

void copyBounds(ClipNode const& from, ClipNode& to) {
    to.m_boundsCenterX = from.m_boundsCenterX;
    to.m_boundsCenterY = from.m_boundsCenterY;
    to.m_boundsSizeX = from.m_boundsSizeX;
    to.m_boundsSizeY = from.m_boundsSizeY;
}

void copyBounds(Bounds const& from, ClipNode& to) {
    to.m_boundsCenterX = from.getCenterX();
    to.m_boundsCenterY = from.getCenterY();
    to.m_boundsSizeX = from.getSizeX();
    to.m_boundsSizeY = from.getSizeY();
}

void copyFormat(ClipNode const& from, ClipNode& to) {
    to.m_pixelWidth = from.m_pixelWidth;
    to.m_pixelHeight = from.m_pixelHeight;
    to.m_dataType = from.m_dataType;
    to.m_numVideoChannels = from.m_numVideoChannels;
    to.m_pixelAspect = from.m_pixelAspect;
    to.m_frameRate = from.m_frameRate;
    to.m_hasAudio = from.m_hasAudio;
    to.m_audioSampleRate = from.m_audioSampleRate;
    to.m_numAudioChannels = from.m_numAudioChannels;
    to.m_videoCodec = from.m_videoCodec;
    to.m_audioCodec = from.m_audioCodec;
    to.m_fileSizeInBytes = from.m_fileSizeInBytes;
    to.m_extraData = from.m_extraData;
}

// The first clip of a document of the reader's. Its tree is gone.
//
// \returns kOTIOJsonReadError for a text that does not parse, kSourceNotFound for one without a clip.
Status readFirstClip(std::string const& metadata, SharedPtr<ClipNode>& clip) {
    ClipNodesGetter getter;
    if (!VisitorHelper::visit(metadata, getter, nullptr)) {
        return Status::kOTIOJsonReadError;
    }
    if (getter.m_clips.empty()) {
        return Status::kSourceNotFound;
    }
    clip = getter.m_clips.front();
    return Status::kSuccess;
}

bool hasTimecodeStart(std::string const& metadata) {
    SharedPtr<ClipNode> clip;
    if (!readFirstClip(metadata, clip)) {
        return false;
    }
    return std::any_of(clip->m_extraData.begin(), clip->m_extraData.end(),
                       [](auto const& entry) { return entry.first == "Timecode/Start"; });
}

// What came of the sources of a clip.
struct ClipSources {
    std::map<std::string, std::string> metadata; // by URL; what could be read
    std::string firstUrl;                        // the first that could be read, where bounds come from
    std::string selected;                        // where the ranges come from
    bool startTrusted = false;                   // whether the selected one knows where its media start
};

// Reads until a source is found whose start can be relied on. A movie that was uploaded for review has been
// made anew, so its start means something only when it carries a timecode.
ClipSources readSources(ClipNode const& clip, Bounds const& bounds, Time const& time) {
    std::string const& movieUrl = clip.m_uploadedMovie;
    std::vector<std::string> urls{clip.m_targetUrl};
    for (std::string const* const url : {&clip.m_pathToFrames, &clip.m_pathToMovie, &clip.m_uploadedMovie}) {
        if (*url != clip.m_targetUrl) {
            urls.push_back(*url);
        }
    }

    ClipSources sources;
    bool hasTimecode = false;
    auto isSettled = [&] {
        return !sources.selected.empty() && (sources.selected != movieUrl || hasTimecode);
    };
    for (std::string const& url : urls) {
        if (url.empty()) {
            continue;
        }
        String text;
        if (MediaMetadata::getMediaMetadata(String(url.c_str()), bounds, time, text)) {
            std::string const& metadata = sources.metadata[url] = text.c_str();
            if (url == movieUrl) {
                hasTimecode = hasTimecodeStart(metadata);
            }
            if (sources.firstUrl.empty()) {
                sources.firstUrl = url;
            }
            if (sources.selected.empty() || (sources.selected == movieUrl && !hasTimecode)) {
                sources.selected = url;
            }
        }
        if (isSettled()) {
            break;
        }
    }
    sources.startTrusted = isSettled();
    return sources;
}

// A clip's ranges when its media have been read.
struct SanitizedRange {
    TimeRange sourceRange;
    TimeRange availableRange;
};

// Fills what the clip leaves open from what the media offer, and brings all of it to one rate.
SanitizedRange completeRanges(ClipNode& clip, ClipNode const& media, bool startTrusted) {
    TimeRange const& offered = media.m_availableRange;
    double const rate = isPositive(clip.m_sourceRange.start_time.rate) ? clip.m_sourceRange.start_time.rate
                                                                       : offered.start_time.rate;

    auto complete = [&](TimeRange& range) {
        if (startTrusted && !range.start_time.isDefined()) {
            range.start_time = offered.start_time;
        }
        if (!range.duration.isDefined()) {
            range.duration = offered.duration;
        }
        for (rapidotio::Time* const time : {&range.start_time, &range.duration}) {
            if (time->isDefined()) {
                *time = {time->value / time->rate * rate, rate};
            }
        }
    };
    complete(clip.m_availableRange);
    complete(clip.m_sourceRange);
    return {clip.m_sourceRange, clip.m_availableRange};
}

// One of the places that a limiter has to give.
class LimiterSlot {
public:
    explicit LimiterSlot(Semaphore& limiter) : m_limiter(limiter) { m_limiter.acquire(); }
    LimiterSlot(LimiterSlot const&) = delete;
    LimiterSlot& operator=(LimiterSlot const&) = delete;
    ~LimiterSlot() { m_limiter.release(); }

private:
    Semaphore& m_limiter;
};

// Has the clips of a document completed while it is being walked, each on a thread of its own, and gives the
// timeline its start when all are done.
class OTIOMetadataSanitizer : public NodeVisitor {
public:
    OTIOMetadataSanitizer(Bounds const& referenceBounds, Time const& time)
        : m_referenceBounds(referenceBounds), m_time(time) {}

    OTIOMetadataSanitizer(OTIOMetadataSanitizer const&) = delete;
    OTIOMetadataSanitizer& operator=(OTIOMetadataSanitizer const&) = delete;

    // The tasks need the limiter to their end.
    ~OTIOMetadataSanitizer() override { m_results.clear(); }

    void visitTimelineNode(TimelineNode& node) override;
    void postVisitTimelineNode(TimelineNode& node) override;
    void visitClipNode(ClipNode& node) override;

private:
    // The outcome, the final ranges, and whether the start of the media could be relied on.
    using Result = std::tuple<Status, SanitizedRange, bool>;

    Result sanitizeClip(ClipNode& clip, Time const& time) const;
    rapidotio::Time collectResults();

    Bounds const& m_referenceBounds;
    Time m_time;
    std::atomic<std::int32_t> m_clipCount{0};
    std::vector<std::future<Result>> m_results;
    Semaphore m_limiter{10};
};

// A start that is complete is cut to whole ticks; one without a value is found by rounding.
void OTIOMetadataSanitizer::visitTimelineNode(TimelineNode& node) {
    rapidotio::Time const& start = node.m_globalStartTime;
    if (!start.hasRate()) {
        if (start.hasValue()) {
            m_time.setNbTicks(truncateTo<long long>(start.value + 0.5));
        }
        return;
    }
    Rational rate;
    if (!FPSUtils::getFPSFromValue(start.rate, rate)) {
        return;
    }
    if (start.hasValue()) {
        m_time.setNbTicks(truncateTo<long long>(start.value));
        m_time.setRate(rate);
    } else {
        m_time = FPSUtils::convertToRate(m_time, rate, FPSUtils::kRoundNearest);
    }
}

void OTIOMetadataSanitizer::visitClipNode(ClipNode& node) {
    // The task has a time of its own: a timeline within the timeline changes m_time while tasks run.
    m_results.push_back(Async::run([this, &node, time = m_time] {
        LimiterSlot const slot(m_limiter);
        ++m_clipCount;
        return sanitizeClip(node, time);
    }));
}

OTIOMetadataSanitizer::Result OTIOMetadataSanitizer::sanitizeClip(ClipNode& clip, Time const& time) const {
    bool const hadBounds = hasBounds(clip);
    ClipSources const sources = readSources(clip, m_referenceBounds, time);
    if (sources.metadata.empty()) {
        if (!hadBounds) {
            copyBounds(m_referenceBounds, clip);
        }
        return {Status::kSuccess, SanitizedRange(), false};
    }

    SanitizedRange range;
    for (auto const& [url, metadata] : sources.metadata) {
        SharedPtr<ClipNode> media;
        Status const status = readFirstClip(metadata, media);
        if (!status) {
            return {status, range, sources.startTrusted};
        }
        if (url == sources.firstUrl && !hadBounds) {
            copyBounds(*media, clip);
        }
        if (url == sources.selected) {
            range = completeRanges(clip, *media, sources.startTrusted);
        }
        if (url == clip.m_targetUrl) {
            copyFormat(*media, clip);
        }
    }
    return {Status::kSuccess, range, sources.startTrusted};
}

// Waits for all tasks. \returns the start that they suggest; each half may be undefined.
rapidotio::Time OTIOMetadataSanitizer::collectResults() {
    // How many there are is only known when all have counted themselves.
    for (std::future<Result> const& result : m_results) {
        result.wait();
    }
    rapidotio::Time start;
    for (std::future<Result>& result : m_results) {
        auto const [status, range, startTrusted] = result.get();
        if (!status) {
            continue;
        }
        if (m_clipCount != 1) {
            start = {static_cast<double>(m_time.getNbTicks()), m_time.getRate().getValue()};
        } else if (startTrusted) {
            start = range.sourceRange.start_time;
        } else {
            start.rate = range.sourceRange.duration.rate;
        }
    }
    m_results.clear();
    return start;
}

void OTIOMetadataSanitizer::postVisitTimelineNode(TimelineNode& node) {
    rapidotio::Time start = collectResults();
    rapidotio::Time& timelineStart = node.m_globalStartTime;
    if (timelineStart.isDefined()) {
        return;
    }
    if (!start.isDefined()) {
        auto const ticks = static_cast<double>(m_time.getNbTicks());
        double const rate = m_time.getRate().getValue();
        if (std::fabs(start.rate) > DBL_EPSILON) {
            start.value = ticks / rate * start.rate;
        } else {
            start = {ticks, rate};
        }
    }
    if (std::fabs(timelineStart.rate) > DBL_EPSILON) {
        start = {start.value / start.rate * timelineStart.rate, timelineStart.rate};
    }
    timelineStart = start;
}

} // namespace

MediaMetadataReader::MediaMetadataReader() : Service(kMediaMetadataReaderService) {}

MediaMetadataReader::~MediaMetadataReader() = default;

SharedPtr<MediaMetadataReader> MediaMetadata::getMediaMetadataReader() {
    return staticPointerCast<MediaMetadataReader>(Service::getService(Service::kMediaMetadataReaderService));
}

Status MediaMetadata::getMediaMetadata(String const& path, Bounds const& bounds, Time const& time,
                                       String& metadata) {
    if (time.isUndefined()) {
        return Status::kUndefinedTime;
    }
    SharedPtr<MediaMetadataReader> const reader = getMediaMetadataReader();
    if (!reader) {
        return Status::kMediaReaderUnavailable;
    }
    LocaleGuard const locale;
    return reader->readMediaMetadata(path, bounds, time, metadata);
}

Status MediaMetadata::getMultipleMediaMetadata(Vector<String> const& paths, Bounds const& bounds,
                                               Time const& time, Vector<String>& metadata) {
    // The reads are never moved once a thread knows its own.
    std::vector<PendingRead> reads(paths.size());
    try {
        for (unsigned long i = 0; i < reads.size(); ++i) {
            PendingRead& read = reads[i];
            read.thread = std::thread([&read, &bounds, &time, path = paths[i]] {
                try {
                    read.status = getMediaMetadata(path, bounds, time, read.metadata);
                } catch (...) {
                    read.exception = std::current_exception();
                }
            });
        }
    } catch (...) {
        joinAll(reads);
        throw;
    }

    joinAll(reads);
    for (PendingRead const& read : reads) {
        if (read.exception) {
            std::rethrow_exception(read.exception);
        }
    }

    // Room for all first, so that a lack of memory leaves the result as it was. Copies of texts need none.
    unsigned long const size = metadata.size() + countRead(reads);
    if (size > metadata.capacity()) {
        metadata.reserve(std::max(size, 2 * metadata.capacity()));
    }
    Status result;
    for (PendingRead const& read : reads) {
        if (read.status) {
            metadata.push_back(read.metadata);
        } else if (result && read.status != Status::kErrorOpeningMediaFile) {
            result = read.status;
        }
    }
    return result;
}

Status MediaMetadata::sanitizeOTIOMetadata(String const& document, String& sanitized, Bounds const& bounds,
                                           Time const& time) {
    rapidjson::Document source;
    if (document.empty() || parseJson(document.c_str(), source).IsError()) {
        return Status::kOTIOJsonReadError;
    }
    RootNode root(timelineOf(source));
    DEBUG_PRETTY_PRINT("otioSourceDoc", source);
    {
        OTIOMetadataSanitizer sanitizer(bounds, time);
        NodeIterator(root, sanitizer).iterate();
        // A document without a timeline has its clips completed here.
    }
    sanitized = toText(root, "sanitizedDoc", document.size());
    return Status::kSuccess;
}

Status MediaMetadata::getLayoutFromOTIOs(Vector<String> const& documents, LayoutType /*type*/,
                                         String const& name, Bounds const& bounds, String& layout) {
    RootNode merged;
    SharedPtr<TimelineNode> const timeline(new TimelineNode(name.c_str()));
    timeline->m_parent = &merged;
    merged.m_children.push_back(timeline);
    SharedPtr<StackNode> const stack(new StackNode);
    stack->m_parent = timeline.get();
    timeline->m_children.push_back(stack);

    std::size_t sizeHint = 0;
    for (unsigned long i = 0; i < documents.size(); ++i) {
        rapidjson::Document source;
        if (parseJson(documents[i].c_str(), source).IsError()) {
            return Status::kOTIOJsonReadError;
        }
        DEBUG_PRETTY_PRINT("otioSourceDoc", source);
        RootNode root(timelineOf(source));
        TrackNodesGetter getter;
        NodeIterator(root, getter).iterate();
        for (SharedPtr<Node> const& track : getter.m_tracks) {
            track->m_parent = stack.get();
            stack->m_children.push_back(track);
        }
        if (i == 0) {
            timeline->m_globalStartTime = getter.m_startTime;
        }
        sizeHint += documents[i].size();
    }

    // Written and read once more, the clips of all tracks stand in one tree of one normal form; what a text
    // leaves out takes no cell.
    rapidjson::Document flattened;
    toDocument(merged, flattened);
    RootNode root(timelineOf(flattened));
    ClipNodesGetter getter;
    NodeIterator(root, getter).iterate();
    placeInGrid(getter.m_clips, bounds);

    layout = toText(root, "finalLayoutDoc", sizeHint);
    return Status::kSuccess;
}

Status MediaMetadata::getLayoutFromFilepaths(Vector<String>& paths, LayoutType type, String const& name,
                                             Bounds const& bounds, Time const& time, String& layout) {
    if (type != kGrid) {
        return Status::kInvalidLayoutType;
    }
    Vector<String> documents;
    Status const status = getMultipleMediaMetadata(paths, bounds, time, documents);
    if (!status) {
        return status;
    }
    if (documents.empty()) {
        layout = "{}";
        return Status::kSuccess;
    }
    return getLayoutFromOTIOs(documents, type, name, bounds, layout);
}

} // namespace ORL_0_81
