// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include <orlURLHandler.h>

#include <gtest/gtest.h>

#include <cstring>

namespace {

using namespace ORL_0_81;

using ResolvedUrl = URLHandler::ResolvedUrl;

// Takes the record's fields away for as long as it lives.
class WithoutFields {
public:
    explicit WithoutFields(ResolvedUrl& url) : m_url(&url) {
        std::memcpy(&m_fields, m_url, sizeof m_fields);
        std::memset(m_url, 0, sizeof m_fields);
    }
    WithoutFields(WithoutFields const&) = delete;
    WithoutFields& operator=(WithoutFields const&) = delete;
    ~WithoutFields() { std::memcpy(m_url, &m_fields, sizeof m_fields); }

    bool hasNone() const {
        void* fields = m_url;
        std::memcpy(&fields, m_url, sizeof fields);
        return fields == nullptr;
    }

private:
    void* m_url;
    void* m_fields = nullptr;
};

ResolvedUrl resolved(char const* path, char const* name, long long expiration) {
    ResolvedUrl url;
    url.setResolvedPath(path);
    url.setOriginalFilename(name);
    url.setExpirationTime(expiration);
    return url;
}

void expectFields(ResolvedUrl const& url, char const* path, char const* name, long long expiration) {
    EXPECT_EQ(url.getResolvedPath(), path);
    EXPECT_EQ(url.getOriginalFilename(), name);
    EXPECT_EQ(url.getExpirationTime(), expiration);
}

TEST(ResolvedUrlContract, AnAssignmentDoesNothingWhenEitherSideHasNoFields) {
    ResolvedUrl full = resolved("/a/path", "a name", 7);
    ResolvedUrl other = resolved("/b/path", "b name", 8);
    {
        WithoutFields const without(other);
        full = other;
        expectFields(full, "/a/path", "a name", 7);
        other = full;
        EXPECT_TRUE(without.hasNone());
        ResolvedUrl third;
        WithoutFields const withoutToo(third);
        third = other;
        EXPECT_TRUE(withoutToo.hasNone());
    }
    expectFields(other, "/b/path", "b name", 8);
}

} // namespace
