// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project

// The peak of the heap in one walk with output, beside what RapidJSON itself holds for the same two
// documents.
#include "support/orlHeapPeak.h"
#include "support/orlTimelineGenerator.h"

#include "rapidotio/orlOtioNodeVisitor.h"
#include "rapidotio/orlOtioVisitorHelper.h"

#include <rapidjson/document.h>

#include <cstdio>
#include <string>

namespace {

using ORL_0_81::rapidotio::NodeVisitor;
using ORL_0_81::rapidotio::VisitorHelper;

class Idle : public NodeVisitor {};

double mebibytes(std::size_t bytes) { return static_cast<double>(bytes) / (1024.0 * 1024.0); }

} // namespace

int main() {
    std::printf("%-10s %12s %12s %8s\n", "clips", "RapidJSON", "visit", "ratio");
    for (int const clipCount : {100, 10000, 100000}) {
        std::string const input = generateTimeline(clipCount);
        std::string expected;
        {
            Idle visitor;
            VisitorHelper::visit(input, visitor, &expected);
        }

        HeapPeak::reset();
        {
            rapidjson::Document read;
            read.Parse(input.c_str());
            rapidjson::Document written;
            written.Parse(expected.c_str());
        }
        std::size_t const rapidJson = HeapPeak::bytes();

        HeapPeak::reset();
        std::string output;
        {
            Idle visitor;
            VisitorHelper::visit(input, visitor, &output);
        }
        std::size_t const visit = HeapPeak::bytes();
        if (output != expected) {
            std::fprintf(stderr, "the text differs from one walk to the next\n");
            return 1;
        }
        std::printf("%-10d %8.1f MiB %8.1f MiB %8.2f\n", clipCount, mebibytes(rapidJson), mebibytes(visit),
                    static_cast<double>(visit) / static_cast<double>(rapidJson));
    }
    return 0;
}
