// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project

// Loads the shared library and does nothing with it that can be seen.
#include <orlStatus.h>

int main() { return ORL_0_81::Status().getStr()[0] == 'k' ? 0 : 1; }
