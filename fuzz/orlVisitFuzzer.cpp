// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project

// A document is read, walked and written; what came out is read and written again. The second text must be
// the first, and each must be what the tree's values give.
#include "internal/orlJson.h"
#include "orlSameJson.h"
#include "rapidotio/orlOtioNode.h"
#include "rapidotio/orlOtioNodeIterator.h"
#include "rapidotio/orlOtioNodeVisitor.h"
#include "rapidotio/orlOtioVisitorHelper.h"

#include <rapidjson/document.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

using namespace ORL_0_81;
using namespace ORL_0_81::rapidotio;

class Counter : public NodeVisitor {
public:
    void visitTrackNode(TrackNode& node) override { ask(node); }
    void visitClipNode(ClipNode& node) override { ask(node); }
    void visitEffectNode(EffectNode& node) override { ask(node); }
    void visitGapNode(GapNode& node) override { ask(node); }

    int nodes = 0;
    int kinds = 0;

private:
    void ask(Node const& node) {
        ++nodes;
        kinds += node.getTrackKind();
    }
};

[[noreturn]] void fail(char const* what, std::string const& left, std::string const& right) {
    std::fprintf(stderr, "%s\n%s\n%s\n", what, left.c_str(), right.c_str());
    std::abort();
}

std::string throughValues(std::string const& text) {
    rapidjson::Document document;
    parseJson(text.c_str(), document);
    RootNode root(document);
    Counter counter;
    NodeIterator(root, counter).iterate();
    rapidjson::Document written(rapidjson::kObjectType);
    root.toJson(written, written.GetAllocator());
    return jsonToText(written);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    std::string const input(reinterpret_cast<char const*>(data), size);
    std::string first = "untouched";
    Counter counter;
    if (!VisitorHelper::visit(input, counter, &first)) {
        if (first != "untouched" || counter.nodes != 0) {
            fail("a failure left a trace", input, first);
        }
        return 0;
    }

    // A wrapper within the wrapper would be entered once more than here.
    rapidjson::Document document;
    parseJson(input.c_str(), document);
    bool const isWrapped = document.IsObject() && document.HasMember("timeline");
    if (!isWrapped && throughValues(input) != first) {
        fail("text and values differ", throughValues(input), first);
    }

    std::string second;
    Counter again;
    rapidjson::Document firstValues;
    if (parseJson(first.c_str(), firstValues).Code() == rapidjson::kParseErrorTermination) {
        return 0; // what a node at the deepest level writes may lie below it
    }
    if (!firstValues.HasMember("OTIO_SCHEMA")) {
        return 0; // a stack at the top writes its tracks alone, which are no timeline when they are read
    }
    if (!VisitorHelper::visit(first, again, &second)) {
        fail("its own text does not parse", input, first);
    }
    rapidjson::Document secondValues;
    parseJson(second.c_str(), secondValues);
    if (second != first && !orlFuzz::isSame(firstValues, secondValues)) {
        fail("the second text differs from the first", first, second);
    }
    return 0;
}
