// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project

// The first byte chooses a canvas; then come lines, a name and the documents. The layout must be what plain rules
// make of them: the tracks as they come, and each clip in the cell that its number says.
#include "internal/orlJson.h"
#include "orlLines.h"
#include "orlMediaMetadataReader.h"
#include "rapidotio/orlOtioNode.h"
#include "rapidotio/orlOtioNodeIterator.h"
#include "rapidotio/orlOtioNodeVisitor.h"
#include "rapidotio/orlOtioVisitorHelper.h"

#include <rapidjson/document.h>

#include <cfloat>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

using namespace ORL_0_81;
using namespace ORL_0_81::rapidotio;

double const CANVASES[][4] = {{0.0, 0.0, 2.0, 2.0},       {0.5, -1.0, 1.7777777777777777, 1.0},
                              {1e3, 1e3, 1.7, 0.7},       {0.0, 0.0, 0.0, 0.0},
                              {0.0, 0.0, 0.0, 1.0},       {-1.0, 0.0, 3.0, -2.0},
                              {1e308, 1e308, 1e308, 1.0}, {0.1, 0.2, 5e-324, 1e308}};

// Puts each clip into its cell as it comes.
class Placer : public NodeVisitor {
public:
    Placer(double const* canvas, std::size_t clips) : m_canvas(canvas) {
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
        double const height = m_canvas[3] / rows;
        double const width = m_canvas[2] / cells;
        clip.m_boundsCenterX =
            static_cast<double>(m_index % m_columns) * width + (m_canvas[0] + (cells - 1) * -0.5 * width);
        clip.m_boundsCenterY = static_cast<double>(row) * height + (m_canvas[1] + (rows - 1) * -0.5 * height);
        double const aspect =
            clip.m_boundsSizeY > DBL_EPSILON ? clip.m_boundsSizeX / clip.m_boundsSizeY : 1.0;
        bool const isFree = width / height > DBL_EPSILON && aspect > DBL_EPSILON;
        bool const isWide = width / height > aspect;
        clip.m_boundsSizeX = isFree && isWide ? aspect * height : width;
        clip.m_boundsSizeY = isFree && !isWide ? width / aspect : height;
        ++m_index;
    }

private:
    double const* m_canvas;
    std::size_t m_columns = 0;
    std::size_t m_rows = 0;
    std::size_t m_last = 0;
    std::size_t m_index = 0;
};

// Writes each track of a document where they all shall stand.
class Mover : public NodeVisitor {
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

Status plainLayout(std::vector<std::string> const& documents, std::string const& name, double const* canvas,
                   std::string& layout) {
    rapidjson::Document merged(rapidjson::kObjectType);
    auto& allocator = merged.GetAllocator();
    rapidjson::Value children(rapidjson::kArrayType);
    rapidotio::Time start;
    for (std::size_t i = 0; i < documents.size(); ++i) {
        Mover mover;
        if (!VisitorHelper::visit(documents[i], mover, nullptr)) {
            return Status::kOTIOJsonReadError;
        }
        for (auto const& track : mover.tracks) {
            track->toJson(children, allocator);
        }
        start = i == 0 ? mover.start : start;
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

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    if (size == 0) {
        return 0;
    }
    double const* const canvas = CANVASES[data[0] % (sizeof CANVASES / sizeof *CANVASES)];
    std::vector<std::string> lines = orlFuzz::linesOf(data + 1, size - 1);
    std::string const name = lines[0].c_str();
    lines.erase(lines.begin());

    Vector<String> documents;
    for (std::string const& line : lines) {
        documents.push_back(String(line.data(), line.size()));
    }
    String layout("untouched");
    Status const status =
        MediaMetadata::getLayoutFromOTIOs(documents, MediaMetadata::kGrid, name.c_str(),
                                          Bounds(canvas[0], canvas[1], canvas[2], canvas[3]), layout);
    std::string expected = "untouched";
    Status const expectedStatus = plainLayout(lines, name, canvas, expected);
    if (status != expectedStatus || layout != expected.c_str()) {
        std::fprintf(stderr, "library: %s %s\nrules:   %s %s\n", status.getStr(), layout.asChar(),
                     expectedStatus.getStr(), expected.c_str());
        std::abort();
    }
    return 0;
}
