// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_EXACT_NUMBER_H
#define ORL_EXACT_NUMBER_H

#include <string>

namespace ORL_0_81::media {

/// A decimal fraction that both a correct parser and the library's own quick one turn into exactly this
/// double.
///
/// The library parses with RapidJSON's default, which gets some doubles wrong by their last bit where all 17
/// digits are needed; 24000/1001 is one of them, as RapidJSON writes it. Another text of the same double
/// often is read right. Where there is none, the text suits the correct parser.
///
/// \param value Any finite number.
std::string toExactText(double value);

} // namespace ORL_0_81::media

#endif // ORL_EXACT_NUMBER_H
