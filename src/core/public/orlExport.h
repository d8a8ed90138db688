// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_EXPORT_H
#define ORL_EXPORT_H

/// Marks a declaration that applications may link against. Every other symbol of the library is hidden.
#define ORL_CORE_EXPORT __attribute__((visibility("default")))

#endif // ORL_EXPORT_H
