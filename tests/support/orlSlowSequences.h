// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_TEST_SUPPORT_SLOW_SEQUENCES_H
#define ORL_TEST_SUPPORT_SLOW_SEQUENCES_H

#include <orlStatus.h>

#include <string>
#include <vector>

namespace orlTest {

/// The rules of file sequences as plainly as they can be written: every pattern is a regular expression of
/// the standard library, every search a walk over a list. What the library must agree with, name by name.
///
/// The standard library's engine recurses for each character, so names must be short: some thousand bytes at
/// most.
class SlowSequences {
public:
    static ORL_0_81::Status isSequenceName(std::string const& name, bool& result);

    static ORL_0_81::Status removeFrameSymbols(std::string const& name, std::string& result);

    static ORL_0_81::Status getSequencesInFileList(std::vector<std::string> const& names,
                                                   std::vector<std::string>& sequences,
                                                   std::string const& filter);

    /// Which sequence a file belongs to, in a directory that lists these names.
    static ORL_0_81::Status getSequenceName(std::string const& fileName,
                                            std::vector<std::string> const& directory, std::string& name);
};

} // namespace orlTest

#endif // ORL_TEST_SUPPORT_SLOW_SEQUENCES_H
