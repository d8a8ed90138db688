// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project

// An even first byte: the delimiters, then lines; the first is a text, the others are names and values of tokens
// by turns. An odd one: each further byte decides something that becomes of a few resolvers and producers. The
// library must do what the plain model of the tests does.
#include "orlChoices.h"
#include "orlLines.h"
#include "support/orlResolverModel.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

using namespace ORL_0_81;
using namespace orlTest;

[[noreturn]] void fail(std::string const& what, std::string const& library, std::string const& model) {
    std::fprintf(stderr, "%s\nlibrary: %s\nmodel:   %s\n", what.c_str(), library.c_str(), model.c_str());
    std::abort();
}

void resolve(char open, char close, std::vector<std::string> const& lines) {
    ProducerPtr const producer = fixedProducer({});
    Values values;
    for (std::size_t i = 1; i + 1 < lines.size(); i += 2) {
        std::string const name = lines[i].c_str(); // a name ends at its first NUL
        values[name] = lines[i + 1];
        producer->m_tokens.push_back(fixedToken(name, lines[i + 1]));
    }
    ResolverPtr const resolver = TokenResolver::create(open, close);
    resolver->add(producer);
    std::string const model = plainlyResolved(lines[0], open, close, values);
    std::string const library = libraryResolved(*resolver, lines[0]);
    if (library != model) {
        fail("text: " + lines[0], library, model);
    }
}

void play(orlFuzz::Choices choices) {
    ResolverPlay play([&](std::size_t count) { return choices(count); });
    for (int step = 0; choices.areLeft(); ++step) {
        play.step();
        if (play.textOfTheLibrary() != play.textOfTheModel()) {
            fail("step " + std::to_string(step), play.textOfTheLibrary(), play.textOfTheModel());
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    if (size > 0 && data[0] % 2 != 0) {
        play({data + 1, size - 1});
    } else if (size > 3) {
        resolve(static_cast<char>(data[1]), static_cast<char>(data[2]), orlFuzz::linesOf(data + 3, size - 3));
    }
    return 0;
}
