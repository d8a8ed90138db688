// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "orlJsonPath.h"

#include "orlPrintable.h"

#include <vector>

namespace ORL_0_81::tool {

namespace {

void appendPointerToken(std::string& pointer, std::string_view name) {
    pointer += '/';
    for (char const character : name) {
        if (character == '~') {
            pointer += "~0";
        } else if (character == '/') {
            pointer += "~1";
        } else {
            pointer += character;
        }
    }
}

} // namespace

std::string JsonPath::toPointer() const {
    std::vector<JsonPath const*> steps;
    for (JsonPath const* step = this; step->m_parent; step = step->m_parent) {
        steps.push_back(step);
    }
    std::string pointer;
    for (auto step = steps.rbegin(); step != steps.rend(); ++step) {
        if ((*step)->m_isElement) {
            pointer += '/' + std::to_string((*step)->m_index);
        } else {
            appendPointerToken(pointer, (*step)->m_name);
        }
    }
    return printable(pointer);
}

std::string JsonPath::label() const {
    std::string members;
    JsonPath const* step = this;
    for (; step->m_schema.empty() && step->m_parent; step = step->m_parent) {
        if (!step->m_isElement) {
            members.insert(0, members.empty() ? "" : "/");
            members.insert(0, inQuotes(step->m_name));
        }
    }
    std::string label = printable(step->m_schema);
    return members.empty() ? label : label + ' ' + members;
}

} // namespace ORL_0_81::tool
