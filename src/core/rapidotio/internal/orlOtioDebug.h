// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_OTIO_DEBUG_H
#define ORL_OTIO_DEBUG_H

namespace ORL_0_81 {

/// Prints a diagnostic line on the standard error stream if the environment variable ZK_DEBUG_OTIO exists,
/// with whatever value, the empty one too.
///
/// The variable is read once, at the first call from any thread. Nothing is added to the text: no prefix, no
/// newline, no flush. With diagnostics off a call costs the test of a flag.
///
/// May be called from any thread; lines of several threads may mix.
void printDebug(char const* format, ...) __attribute__((format(printf, 1, 2)));

} // namespace ORL_0_81

#endif // ORL_OTIO_DEBUG_H
