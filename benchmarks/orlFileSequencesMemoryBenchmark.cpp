// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project

// The peak of the heap while sequences are detected, results included, beside what the list of names holds.
#include "support/orlHeapPeak.h"
#include "support/orlNameGenerator.h"

#include <orlFileSequenceUtils.h>

#include <cstdio>
#include <string>
#include <vector>

namespace {

using ORL_0_81::FileSequenceUtils;
using ORL_0_81::List;
using ORL_0_81::String;
using ORL_0_81::Vector;

double mebibytes(std::size_t bytes) { return static_cast<double>(bytes) / (1024.0 * 1024.0); }

} // namespace

int main() {
    std::printf("%-20s %10s %12s %12s %8s\n", "shape", "names", "list", "detection", "ratio");
    for (NameShape const shape : NAME_SHAPES) {
        for (std::size_t const count : {1000U, 10000U, 100000U, 1000000U}) {
            std::vector<std::string> const names = generateNames(shape, count);

            HeapPeak::reset();
            List<String> list;
            for (std::string const& name : names) {
                list.append(String(name.data(), name.size()));
            }
            std::size_t const own = HeapPeak::bytes();

            HeapPeak::reset();
            Vector<String> sequences;
            FileSequenceUtils::getSequencesInFileList(list, sequences, "");
            std::size_t const detection = HeapPeak::bytes();
            std::printf("%-20s %10zu %8.1f MiB %8.1f MiB %8.2f\n", nameOf(shape), count, mebibytes(own),
                        mebibytes(detection), static_cast<double>(detection) / static_cast<double>(own));
        }
    }
    return 0;
}
