// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project

// Walks a timeline document and lists the media that it names. The document model is not part of the library's interface:
// a program that wants it is built with the sources, and links orlCoreObjects instead of orlCore.
//
//     visitDocument docs/examples/cut.otio
#include "rapidotio/orlOtioNode.h"
#include "rapidotio/orlOtioNodeVisitor.h"
#include "rapidotio/orlOtioVisitorHelper.h"

#include <fstream>
#include <iostream>
#include <sstream>

using namespace ORL_0_81::rapidotio;

namespace {

class MediaLister : public NodeVisitor {
public:
    // Visited before its clips.
    void visitTrackNode(TrackNode&) override { std::cout << "track " << ++m_tracks << '\n'; }

    void visitClipNode(ClipNode& clip) override {
        std::cout << "  " << (clip.m_targetUrl.empty() ? "(no media)" : clip.m_targetUrl) << '\n';
    }

private:
    int m_tracks = 0;
};

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: visitDocument FILE\n";
        return 2;
    }
    std::ifstream file(argv[1]);
    std::stringstream text;
    if (!(text << file.rdbuf())) {
        std::cerr << argv[1] << ": cannot be read\n";
        return 1;
    }
    MediaLister lister;
    if (!VisitorHelper::visit(text.str(), lister, nullptr)) {
        std::cerr << argv[1] << ": no JSON\n";
        return 1;
    }
    return 0;
}
