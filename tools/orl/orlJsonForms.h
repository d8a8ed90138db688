// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_JSON_FORMS_H
#define ORL_JSON_FORMS_H

#include "orlLossTables.h"

#include <rapidjson/document.h>

#include <string>
#include <string_view>

/// \file
/// Questions to single JSON values, as the reader of the library asks them.

namespace ORL_0_81::tool {

/// True for null, an empty text, and lists and objects of nothing but such values.
bool saysNothing(rapidjson::Value const& value);

/// True when nothing is left of a range but the schemas that every range and every time carries.
bool isEmptyRange(rapidjson::Value const& value);

/// The text by which the factory dispatches; empty when there is none.
std::string_view schemaOf(rapidjson::Value const& json);

/// The whole text of a string, zero bytes too.
std::string_view wholeText(rapidjson::Value const& value);

/// True when the string holds a zero byte, at which the reader stops.
bool isCut(rapidjson::Value const& value);

/// True when the reader takes the scalar value in this form.
bool isTaken(rapidjson::Value const& value, Form form);

/// What the value is, as in "an integer"; `form` tells what would have been in range.
std::string describe(rapidjson::Value const& value, Form form);

/// What a form takes, as in "a fraction".
char const* expectation(Form form);

} // namespace ORL_0_81::tool

#endif // ORL_JSON_FORMS_H
