// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_HIDDEN_H
#define ORL_HIDDEN_H

/// Marks what stands behind the one pointer of a public class, where it is defined: it is declared inside of that
/// class, and would be exported with it.
#define ORL_HIDDEN __attribute__((visibility("hidden")))

#endif // ORL_HIDDEN_H
