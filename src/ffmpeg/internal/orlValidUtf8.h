// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_VALID_UTF8_H
#define ORL_VALID_UTF8_H

#include <string>

namespace ORL_0_81::media {

/// The text with a replacement character in the place of each byte that is no part of valid UTF-8.
std::string toValidUtf8(std::string const& text);

} // namespace ORL_0_81::media

#endif // ORL_VALID_UTF8_H
