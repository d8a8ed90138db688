// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_INPUT_ERROR_H
#define ORL_INPUT_ERROR_H

#include <stdexcept>
#include <string>

namespace ORL_0_81::tool {

/// What is at fault with a file, in words for people: `orl ERROR: "FILE" : reason`.
class InputError : public std::runtime_error {
public:
    InputError(std::string file, std::string const& reason)
        : std::runtime_error(reason), m_file(std::move(file)) {}

    std::string const& file() const { return m_file; }

private:
    std::string m_file;
};

} // namespace ORL_0_81::tool

#endif // ORL_INPUT_ERROR_H
