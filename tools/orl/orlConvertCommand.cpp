// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "orlConvertCommand.h"

#include "orlDialectConversion.h"
#include "orlDocumentFile.h"
#include "orlLossReport.h"
#include "orlTimelineDocument.h"

namespace ORL_0_81::tool {

void ConvertCommand::run(Streams const& streams) const {
    std::string const text = withoutByteOrderMark(readDocument(file, streams.in));
    {
        rapidjson::Document document;
        parseDocument(file, text, document);
    }

    LossReport losses;
    std::string const converted = toDialect(text, losses);
    if (!isQuiet) {
        losses.print(file, "dialect", streams);
    }
    if (isStrict) {
        losses.refuseLosses(file, "dialect");
    }
    writeOutput(output, converted, streams.out);
}

} // namespace ORL_0_81::tool
