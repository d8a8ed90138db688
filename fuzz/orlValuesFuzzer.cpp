// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project

// A text is read as each kind of value, by the library and by the plain readers of the tests. Both must say the
// same of it, and hold the same afterwards; what is then written must be read alike as well.
#include "support/orlPlainValues.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

using namespace ORL_0_81;
using namespace orlTest;

[[noreturn]] void fail(std::string const& text, std::string const& library, std::string const& plain) {
    std::fprintf(stderr, "text:    %s\nlibrary: %s\nplain:   %s\n", text.c_str(), library.c_str(),
                 plain.c_str());
    std::abort();
}

// Lets both read; the texts that they then write are the same.
template <class Value, class Model>
Status readByBoth(std::string const& text, Value& value, Model& model) {
    Status const status = value.fromJson(String(text.data(), text.size()));
    Status const expected = model.fromJson(text);
    if (status != expected || value.toJson() != String(model.toJson().c_str())) {
        fail(text, status.getStr() + (" " + std::string(value.toJson().asChar())),
             expected.getStr() + (" " + model.toJson()));
    }
    return status;
}

// Integers come back as they were, but not all of them: an unsigned field is read as a signed one. Fractions all
// come back, but the parser may move one of 17 digits by a unit in the last place.
template <class Model>
void compare(std::string const& text, bool isOfIntegers) {
    Model model;
    auto value = Model::makeValue();
    readByBoth(text, value, model);
    std::string const first = model.toJson();

    Model again;
    auto other = Model::makeValue();
    bool const isRead = readByBoth(first, other, again).success();
    if (isOfIntegers ? isRead && again.toJson() != first : !isRead) {
        fail(first, other.toJson().asChar(), "its own text");
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    std::string const text(reinterpret_cast<char const*>(data), size);
    compare<RationalModel>(text, true);
    compare<TimeModel>(text, true);
    compare<BoundsModel>(text, false);
    compare<ResolutionModel>(text, false);
    return 0;
}
