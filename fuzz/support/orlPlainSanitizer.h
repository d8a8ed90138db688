// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_FUZZ_SUPPORT_ORL_PLAIN_SANITIZER_H
#define ORL_FUZZ_SUPPORT_ORL_PLAIN_SANITIZER_H

#include "orlBounds.h"
#include "orlStatus.h"
#include "orlTime.h"
#include "rapidotio/orlOtioNode.h"
#include "rapidotio/orlOtioNodeVisitor.h"

#include <functional>
#include <string>
#include <vector>

namespace orlFuzz {

/// Completes the clips of a document one after the other, rule by rule, without any thread.
class PlainSanitizer : public ORL_0_81::rapidotio::NodeVisitor {
public:
    /// Reads one medium at that time. May throw.
    using Read =
        std::function<ORL_0_81::Status(std::string const& url, ORL_0_81::Time const&, std::string& metadata)>;

    PlainSanitizer(ORL_0_81::Bounds const& bounds, ORL_0_81::Time const& time, Read read);

    void visitTimelineNode(ORL_0_81::rapidotio::TimelineNode& node) override;
    void postVisitTimelineNode(ORL_0_81::rapidotio::TimelineNode& node) override;
    void visitClipNode(ORL_0_81::rapidotio::ClipNode& clip) override;

private:
    struct Result {
        bool hasThrown = false;
        bool isSuccess = true;
        bool startTrusted = false;
        ORL_0_81::rapidotio::TimeRange sourceRange;
    };

    Result complete(ORL_0_81::rapidotio::ClipNode& clip) const;

    ORL_0_81::Bounds const& m_bounds;
    ORL_0_81::Time m_time;
    Read m_read;
    int m_clipCount = 0;
    std::vector<Result> m_results;
};

/// What a reader throws.
struct ReaderFailure {};

} // namespace orlFuzz

#endif // ORL_FUZZ_SUPPORT_ORL_PLAIN_SANITIZER_H
