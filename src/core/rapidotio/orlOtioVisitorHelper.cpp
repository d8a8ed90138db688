// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "rapidotio/orlOtioVisitorHelper.h"

#include "internal/orlJson.h"
#include "rapidotio/internal/orlOtioParsing.h"
#include "rapidotio/internal/orlOtioWriting.h"
#include "rapidotio/orlOtioNode.h"
#include "rapidotio/orlOtioNodeIterator.h"

namespace ORL_0_81::rapidotio {

bool VisitorHelper::visit(std::string const& json, NodeVisitor& visitor, std::string* output) {
    rapidjson::Document document;
    if (parseJson(json.c_str(), document).IsError()) {
        return false;
    }

    rapidjson::Value const* const timeline = Parsing::findObject(document, "timeline");
    RootNode root(timeline ? *timeline : document);
    NodeIterator(root, visitor).iterate();

    if (output) {
        *output = Writing::toText(root, json.size());
    }
    return true;
}

} // namespace ORL_0_81::rapidotio
