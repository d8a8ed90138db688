// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "orlNormalizeCommand.h"

#include "orlDocumentFile.h"
#include "orlInputError.h"
#include "orlLossReport.h"
#include "orlPrintable.h"
#include "orlTimelineDocument.h"

#include <ostream>

namespace ORL_0_81::tool {

namespace {

void print(LossReport const& report, std::string const& file, std::ostream& error) {
    if (report.groups().empty()) {
        return;
    }
    error << "orl: " << inQuotes(file) << ": not in the normal form:\n";
    for (LossGroup const& group : report.groups()) {
        error << "  " << LossReport::line(group) << '\n';
    }
}

} // namespace

void NormalizeCommand::run(Streams const& streams) const {
    TimelineDocument const document(file, readDocument(file, streams.in));
    LossReport const report(document);
    if (!isQuiet) {
        print(report, file, streams.error);
    }
    if (isStrict && report.count() > 0) {
        throw InputError(file, "the normal form would lose something in " + std::to_string(report.count()) +
                                   (report.count() == 1 ? " place" : " places"));
    }

    writeOutput(output, document.normalForm() + '\n', streams.out);
}

} // namespace ORL_0_81::tool
