// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "rapidotio/orlOtioVisitorHelper.h"

#include "internal/orlJson.h"
#include "rapidotio/internal/orlOtioParsing.h"
#include "rapidotio/orlOtioNode.h"
#include "rapidotio/orlOtioNodeIterator.h"

#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

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
        rapidjson::Document written(rapidjson::kObjectType);
        root.toJson(written, written.GetAllocator());

        constexpr std::size_t kInitialCapacity = 256;
        rapidjson::StringBuffer buffer(nullptr, kInitialCapacity);
        rapidjson::Writer<rapidjson::StringBuffer> writer(buffer);
        written.Accept(writer);
        output->assign(buffer.GetString(), buffer.GetSize());
    }
    return true;
}

} // namespace ORL_0_81::rapidotio
