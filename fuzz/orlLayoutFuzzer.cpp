// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project

// The first byte chooses a canvas; then come lines, a name and the documents. The layout must be what plain rules
// make of them: the tracks as they come, and each clip in the cell that its number says.
#include "orlLines.h"
#include "orlMediaMetadataReader.h"
#include "orlPlainLayout.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

using namespace ORL_0_81;

Bounds const CANVASES[] = {Bounds(0.0, 0.0, 2.0, 2.0),       Bounds(0.5, -1.0, 1.7777777777777777, 1.0),
                           Bounds(1e3, 1e3, 1.7, 0.7),       Bounds(0.0, 0.0, 0.0, 0.0),
                           Bounds(0.0, 0.0, 0.0, 1.0),       Bounds(-1.0, 0.0, 3.0, -2.0),
                           Bounds(1e308, 1e308, 1e308, 1.0), Bounds(0.1, 0.2, 5e-324, 1e308)};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    if (size == 0) {
        return 0;
    }
    Bounds const& canvas = CANVASES[data[0] % (sizeof CANVASES / sizeof *CANVASES)];
    std::vector<std::string> lines = orlFuzz::linesOf(data + 1, size - 1);
    std::string const name = lines[0].c_str();
    lines.erase(lines.begin());

    Vector<String> documents;
    for (std::string const& line : lines) {
        documents.push_back(String(line.data(), line.size()));
    }
    String layout("untouched");
    Status const status =
        MediaMetadata::getLayoutFromOTIOs(documents, MediaMetadata::kGrid, name.c_str(), canvas, layout);
    std::string expected = "untouched";
    Status const expectedStatus = orlFuzz::plainLayout(lines, name, canvas, expected);
    if (status != expectedStatus || layout != expected.c_str()) {
        std::fprintf(stderr, "library: %s %s\nrules:   %s %s\n", status.getStr(), layout.asChar(),
                     expectedStatus.getStr(), expected.c_str());
        std::abort();
    }
    return 0;
}
