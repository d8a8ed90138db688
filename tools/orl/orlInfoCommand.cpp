// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "orlInfoCommand.h"

#include "orlDocumentFile.h"
#include "orlLossReport.h"
#include "orlTimelineDocument.h"
#include "orlTimelineSummary.h"

namespace ORL_0_81::tool {

namespace {

std::string tellOf(std::string const& file, Streams const& streams, bool isJson) {
    TimelineSummary summary;
    TimelineDocument const document(file, readDocument(file, streams.in), summary);
    if (!document.timeline()) {
        throw InputError(file, "holds no timeline");
    }
    LossReport const losses(document, LossScope::kReading);
    return isJson ? toJsonLine(file, summary, losses) : toTable(file, summary, losses, streams.outStyle);
}

} // namespace

bool InfoCommand::run(Streams const& streams, std::function<void(InputError const&)> const& tell) const {
    bool isGood = true;
    bool isFirst = true;
    for (std::string const& file : files) {
        std::string text;
        try {
            text = tellOf(file, streams, isJson);
        } catch (InputError const& error) {
            tell(error);
            isGood = false;
            continue;
        }
        writeToStream(streams.out, isFirst || isJson ? text : '\n' + text);
        isFirst = false;
    }
    return isGood;
}

} // namespace ORL_0_81::tool
