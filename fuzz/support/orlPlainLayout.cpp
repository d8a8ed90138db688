// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "orlPlainLayout.h"

#include "internal/orlJson.h"
#include "rapidotio/orlOtioNode.h"
#include "rapidotio/orlOtioNodeIterator.h"
#include "rapidotio/orlOtioNodeVisitor.h"
#include "rapidotio/orlOtioVisitorHelper.h"

#include <rapidjson/document.h>

#include <cfloat>
#include <cstddef>

using namespace ORL_0_81;
using namespace ORL_0_81::rapidotio;

namespace orlFuzz {

namespace {

// Puts each clip into its cell as it comes.
class Placer : public NodeVisitor {
public:
    Placer(Bounds const& canvas, std::size_t clips) : m_canvas(canvas) {
        while (m_columns * m_columns < clips) {
            ++m_columns;
        }
        m_rows = clips == 0 ? 0 : (clips + m_columns - 1) / m_columns;
        m_last = clips - (m_rows == 0 ? 0 : (m_rows - 1) * m_columns);
    }

    void visitClipNode(ClipNode& clip) override {
        std::size_t const row = m_index / m_columns;
        auto const cells = static_cast<double>(row + 1 == m_rows ? m_last : m_columns);
        auto const rows = static_cast<double>(m_rows);
        double const height = m_canvas.getSizeY() / rows;
        double const width = m_canvas.getSizeX() / cells;
        clip.m_boundsCenterX = static_cast<double>(m_index % m_columns) * width +
                               (m_canvas.getCenterX() + (cells - 1) * -0.5 * width);
        clip.m_boundsCenterY =
            static_cast<double>(row) * height + (m_canvas.getCenterY() + (rows - 1) * -0.5 * height);
        double const aspect =
            clip.m_boundsSizeY > DBL_EPSILON ? clip.m_boundsSizeX / clip.m_boundsSizeY : 1.0;
        bool const isFree = width / height > DBL_EPSILON && aspect > DBL_EPSILON;
        bool const isWide = width / height > aspect;
        clip.m_boundsSizeX = isFree && isWide ? aspect * height : width;
        clip.m_boundsSizeY = isFree && !isWide ? width / aspect : height;
        ++m_index;
    }

private:
    Bounds const& m_canvas;
    std::size_t m_columns = 0;
    std::size_t m_rows = 0;
    std::size_t m_last = 0;
    std::size_t m_index = 0;
};

// Collects what a document gives to the layout.
class Collector : public NodeVisitor {
public:
    void visitTimelineNode(TimelineNode& node) override { start = node.m_globalStartTime; }
    void visitTrackNode(TrackNode& node) override { tracks.emplace_back(&node); }

    rapidotio::Time start{0.0, 0.0};
    std::vector<SharedPtr<TrackNode>> tracks;
};

class Counter : public NodeVisitor {
public:
    void visitClipNode(ClipNode& /*node*/) override { ++clips; }

    std::size_t clips = 0;
};

} // namespace

Status plainLayout(std::vector<std::string> const& documents, std::string const& name, Bounds const& canvas,
                   std::string& layout) {
    rapidjson::Document merged(rapidjson::kObjectType);
    auto& allocator = merged.GetAllocator();
    rapidjson::Value children(rapidjson::kArrayType);
    rapidotio::Time start;
    for (std::size_t i = 0; i < documents.size(); ++i) {
        Collector collector;
        if (!VisitorHelper::visit(documents[i], collector, nullptr)) {
            return Status::kOTIOJsonReadError;
        }
        for (auto const& track : collector.tracks) {
            track->toJson(children, allocator);
        }
        start = i == 0 ? collector.start : start;
    }
    rapidjson::Value stack(rapidjson::kObjectType);
    stack.AddMember("OTIO_SCHEMA", "Stack.1", allocator).AddMember("children", children, allocator);
    rapidjson::Value startTime(rapidjson::kObjectType);
    start.toJson(startTime, allocator);
    merged.AddMember("OTIO_SCHEMA", "Timeline.1", allocator);
    merged.AddMember("name", rapidjson::StringRef(name.c_str()), allocator);
    merged.AddMember("global_start_time", startTime, allocator).AddMember("tracks", stack, allocator);

    RootNode root(merged);
    Counter counter;
    NodeIterator(root, counter).iterate();
    Placer placer(canvas, counter.clips);
    NodeIterator(root, placer).iterate();
    rapidjson::Document written(rapidjson::kObjectType);
    root.toJson(written, written.GetAllocator());
    layout = jsonToText(written).c_str();
    return Status::kSuccess;
}

} // namespace orlFuzz
