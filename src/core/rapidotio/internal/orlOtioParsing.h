// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_OTIO_PARSING_H
#define ORL_OTIO_PARSING_H

#include <rapidjson/document.h>

#include <cstddef>
#include <cstring>
#include <string>
#include <vector>

namespace ORL_0_81::rapidotio {

struct TimeRange;

/// Typed lookups of an object's members: the one vocabulary in which a timeline document is read.
///
/// A lookup never stops its reader. It returns true and stores the result, or it returns false and leaves the
/// result as it was, so that a field keeps its default. What happened is told through printDebug: that the
/// member was not found, that it has another type, or that it was found.
///
/// The members are searched in document order; of duplicate names only the first is ever seen. A value that
/// is no object has no members. The lookups only read and may run on several threads at once.
namespace Parsing {

/// A member's name, NUL-terminated. At a call with a literal its length is known to the compiler.
struct Name {
    Name(char const* nulTerminated) : text(nulTerminated), length(std::strlen(nulTerminated)) {}

    char const* text;
    std::size_t length;
};

/// The words for the types of a JSON value, by RapidJSON's number of the type.
extern char const* const types[7];

/// A string, up to its first zero byte.
bool getString(rapidjson::Value const& object, Name name, std::string& result);

/// An integer number in the range of a signed 32-bit integer.
bool getInt(rapidjson::Value const& object, Name name, int& result);

/// An integer number in the range of an unsigned 32-bit integer.
bool getUInt(rapidjson::Value const& object, Name name, unsigned& result);

/// A finite number that the parser holds as a double: one with a fraction or an exponent, 24.0 and 24e0, but
/// not 24; and an integer beyond 64 bits.
bool getDouble(rapidjson::Value const& object, Name name, double& result);

/// As getDouble, within plus or minus 3.4028234e38, narrowed to float.
bool getFloat(rapidjson::Value const& object, Name name, float& result);

bool getBool(rapidjson::Value const& object, Name name, bool& result);

/// The member whose value is an object. The caller initialises its iterator to an empty one.
bool getObject(rapidjson::Value const& object, Name name, rapidjson::Value::ConstMemberIterator& result);

/// The member whose value is an array. The caller initialises its iterator to an empty one.
bool getArray(rapidjson::Value const& object, Name name, rapidjson::Value::ConstMemberIterator& result);

/// getObject for a reader that wants the value only: null when the lookup failed.
rapidjson::Value const* findObject(rapidjson::Value const& object, Name name);

/// getArray for a reader that wants the value only: null when the lookup failed.
rapidjson::Value const* findArray(rapidjson::Value const& object, Name name);

/// The member "start_time" and "duration" of the object `name`, each as Time::setTime takes it.
///
/// The schema of the range itself is not looked at. What is missing leaves its half as it was.
void getTimeRange(rapidjson::Value const& object, Name name, TimeRange& result);

/// Reads the text of a string member without a word in the diagnostics: an optional name, a schema.
///
/// \returns the NUL-terminated text, owned by the document, or null when there is no such string.
char const* peekString(rapidjson::Value const& object, Name name);

/// True when the object's "OTIO_SCHEMA" is that text.
bool hasSchema(rapidjson::Value const& object, char const* schema);

/// The numbers of an array, whichever number form each has.
///
/// \param limit No number may be beyond plus or minus this.
/// \param result Receives the numbers; unspecified after a failure.
/// \returns false when an element is anything but a finite number within the limit.
bool toNumbers(rapidjson::Value const& array, double limit, std::vector<double>& result);

} // namespace Parsing

} // namespace ORL_0_81::rapidotio

#endif // ORL_OTIO_PARSING_H
