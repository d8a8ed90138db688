// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_JSON_H
#define ORL_JSON_H

#include "orlString.h"

#include <rapidjson/document.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <cstddef>
#include <cstdint>
#include <string>

/// \file
/// The way in and out of RapidJSON for the whole library.

namespace ORL_0_81 {

/// The deepest nesting that a text may have; the outermost bracket is level 1.
///
/// RapidJSON's parser and its writer recurse once a level. A limit keeps a hostile text from the end of the
/// stack, on the small stacks of threads too.
constexpr unsigned kMaxJsonDepth = 1000;

/// Parses a NUL-terminated text with RapidJSON's default flags.
///
/// \param text What stands behind the one root value must be white space.
/// \param document Receives the root value; null after a failure.
/// \returns what RapidJSON says, with the place of a failure in bytes. A text nested deeper than
///     kMaxJsonDepth fails with kParseErrorTermination at the bracket that is one too many.
rapidjson::ParseResult parseJson(char const* text, rapidjson::Document& document);

/// The memory of a SmallDocument, which has to exist before it.
class SmallDocumentMemory {
protected:
    SmallDocumentMemory() = default;

    static constexpr std::size_t kStackBytes = 1024;
    static constexpr std::size_t kPoolOverhead = 64;

    alignas(std::max_align_t) char m_valueMemory[2048];
    alignas(std::max_align_t) char m_stackMemory[kStackBytes + kPoolOverhead];
    rapidjson::MemoryPoolAllocator<> m_values{m_valueMemory, sizeof m_valueMemory};
    rapidjson::MemoryPoolAllocator<> m_stack{m_stackMemory, sizeof m_stackMemory};
};

/// A document for texts of some hundred bytes. It goes to the heap only when the memory within it is full,
/// while an ordinary document takes 64 KiB from there for the smallest object.
class SmallDocument : private SmallDocumentMemory,
                      public rapidjson::GenericDocument<rapidjson::UTF8<>, rapidjson::MemoryPoolAllocator<>,
                                                        rapidjson::MemoryPoolAllocator<>> {
public:
    using Base = GenericDocument;

    SmallDocument() : Base(&m_values, kStackBytes, &m_stack) {}
};

/// As above.
rapidjson::ParseResult parseJson(char const* text, SmallDocument& document);

/// \returns the compact text of a value. A number that is not finite ends the text at that point.
std::string jsonToText(rapidjson::Value const& value);

/// What writes compact text. Its operations return false at a number that is not finite; the text must then
/// end, so nothing more may be written.
using JsonWriter = rapidjson::Writer<rapidjson::StringBuffer>;

/// \returns the text that `write(JsonWriter&)` writes.
template <class Write>
String writeJson(Write write) {
    rapidjson::StringBuffer buffer;
    JsonWriter writer(buffer);
    write(writer);
    return String(buffer.GetString());
}

/// jsonToText for a String.
inline String writeJson(rapidjson::Value const& value) {
    return writeJson([&value](JsonWriter& writer) { value.Accept(writer); });
}

/// Looks a member up without a word in the diagnostics; the first of several with that name counts.
///
/// \returns null when there is no such member, or no object at all.
rapidjson::Value const* findMember(rapidjson::Value const& object, char const* name);

/// Reads a member that is an integer number in the range of a signed 32-bit integer, by findMember.
///
/// \returns false when there is no such member; `result` stays as it was.
bool readInt(rapidjson::Value const& object, char const* name, std::int32_t& result);

} // namespace ORL_0_81

#endif // ORL_JSON_H
