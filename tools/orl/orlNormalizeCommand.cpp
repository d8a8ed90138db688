// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "orlNormalizeCommand.h"

#include "orlDocumentFile.h"
#include "orlLossReport.h"
#include "orlTimelineDocument.h"

namespace ORL_0_81::tool {

void NormalizeCommand::run(Streams const& streams) const {
    TimelineDocument const document(file, readDocument(file, streams.in));
    LossReport const report(document);
    if (!isQuiet) {
        report.print(file, "normal form", streams);
    }
    if (isStrict) {
        report.refuseLosses(file, "normal form");
    }
    writeOutput(output, document.normalForm() + '\n', streams.out);
}

} // namespace ORL_0_81::tool
