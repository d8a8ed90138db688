// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_TEST_SUPPORT_LIBRARY_SEQUENCES_H
#define ORL_TEST_SUPPORT_LIBRARY_SEQUENCES_H

#include <orlFileSequenceUtils.h>

#include <string>
#include <vector>

namespace orlTest {

inline ORL_0_81::String toString(std::string const& text) { return {text.data(), text.size()}; }
inline std::string toStandard(ORL_0_81::String const& text) { return {text.data(), text.size()}; }

inline std::vector<std::string> toStandard(ORL_0_81::Vector<ORL_0_81::String> const& texts) {
    std::vector<std::string> result;
    result.reserve(texts.size());
    for (unsigned long i = 0; i < texts.size(); ++i) {
        result.push_back(toStandard(texts[i]));
    }
    return result;
}

/// FileSequenceUtils with the standard library's types, to stand beside SlowSequences in a test of both.
class LibrarySequences {
public:
    static ORL_0_81::Status isSequenceName(std::string const& name, bool& result) {
        return ORL_0_81::FileSequenceUtils::isSequenceName(toString(name), result);
    }

    static ORL_0_81::Status removeFrameSymbols(std::string const& name, std::string& result) {
        ORL_0_81::String text = toString(result);
        ORL_0_81::Status const status = ORL_0_81::FileSequenceUtils::removeFrameSymbols(toString(name), text);
        result = toStandard(text);
        return status;
    }

    static ORL_0_81::Status getSequencesInFileList(std::vector<std::string> const& names,
                                                   std::vector<std::string>& sequences,
                                                   std::string const& filter) {
        ORL_0_81::List<ORL_0_81::String> list;
        for (std::string const& name : names) {
            list.append(toString(name));
        }
        ORL_0_81::Vector<ORL_0_81::String> found(1, "what was here before");
        ORL_0_81::Status const status =
            ORL_0_81::FileSequenceUtils::getSequencesInFileList(list, found, toString(filter));
        sequences = toStandard(found);
        return status;
    }

    static ORL_0_81::Status getSequencesInDirectory(std::string const& path,
                                                    std::vector<std::string>& sequences,
                                                    std::string const& filter) {
        ORL_0_81::Vector<ORL_0_81::String> found(1, "what was here before");
        ORL_0_81::Status const status =
            ORL_0_81::FileSequenceUtils::getSequencesInDirectory(toString(path), found, toString(filter));
        sequences = toStandard(found);
        return status;
    }

    static ORL_0_81::Status getSequenceName(std::string const& path, std::string& name) {
        ORL_0_81::String found("what was here before");
        ORL_0_81::Status const status = ORL_0_81::FileSequenceUtils::getSequenceName(toString(path), found);
        name = toStandard(found);
        return status;
    }
};

} // namespace orlTest

#endif // ORL_TEST_SUPPORT_LIBRARY_SEQUENCES_H
