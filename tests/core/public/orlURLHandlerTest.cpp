// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "support/VirtualSlot.h"

#include <orlURLHandler.h>

#include <gtest/gtest.h>

#include <limits>
#include <type_traits>

namespace {

using namespace ORL_0_81;

class Handler : public URLHandler {
public:
    Status resolveUrl(String const& url, ResolvedUrl& resolved) override {
        if (url.empty()) {
            return Status::kExpiredUrl;
        }
        resolved.setResolvedPath(String("/local/") + url);
        return Status::kSuccess;
    }
};

class Writer : public Service {
public:
    Writer() : Service(kMediaWriterService) {}
};

TEST(ResolvedUrlTest, IsEmptyAtFirst) {
    URLHandler::ResolvedUrl const resolved;
    EXPECT_TRUE(resolved.getResolvedPath().empty());
    EXPECT_TRUE(resolved.getOriginalFilename().empty());
    EXPECT_EQ(resolved.getExpirationTime(), 0);
}

TEST(ResolvedUrlTest, KeepsWhatIsSet) {
    URLHandler::ResolvedUrl resolved;
    resolved.setResolvedPath("/path");
    resolved.setOriginalFilename("name.mov");
    for (long long const time : {7LL, -7LL, std::numeric_limits<long long>::max()}) {
        resolved.setExpirationTime(time);
        EXPECT_EQ(resolved.getExpirationTime(), time);
    }
    EXPECT_STREQ(resolved.getResolvedPath().c_str(), "/path");
    EXPECT_STREQ(resolved.getOriginalFilename().c_str(), "name.mov");
    resolved.setResolvedPath(resolved.getOriginalFilename());
    EXPECT_STREQ(resolved.getResolvedPath().c_str(), "name.mov");
}

TEST(ResolvedUrlTest, ACopyIsIndependent) {
    URLHandler::ResolvedUrl source;
    source.setResolvedPath("/path");
    source.setOriginalFilename("name.mov");
    source.setExpirationTime(12);
    URLHandler::ResolvedUrl copy(source);
    EXPECT_STREQ(copy.getResolvedPath().c_str(), "/path");
    EXPECT_STREQ(copy.getOriginalFilename().c_str(), "name.mov");
    EXPECT_EQ(copy.getExpirationTime(), 12);
    copy.setResolvedPath("/other");
    copy.setOriginalFilename("");
    copy.setExpirationTime(13);
    EXPECT_STREQ(source.getResolvedPath().c_str(), "/path");
    EXPECT_STREQ(source.getOriginalFilename().c_str(), "name.mov");
    EXPECT_EQ(source.getExpirationTime(), 12);
}

TEST(ResolvedUrlTest, AssignmentCopiesAllFields) {
    URLHandler::ResolvedUrl source;
    source.setResolvedPath("/path");
    source.setOriginalFilename("name.mov");
    source.setExpirationTime(12);
    URLHandler::ResolvedUrl target;
    target.setResolvedPath("/old");
    EXPECT_EQ(&(target = source), &target);
    source.setResolvedPath("/changed");
    EXPECT_STREQ(target.getResolvedPath().c_str(), "/path");
    EXPECT_STREQ(target.getOriginalFilename().c_str(), "name.mov");
    EXPECT_EQ(target.getExpirationTime(), 12);
    URLHandler::ResolvedUrl const& self = target;
    target = self;
    EXPECT_STREQ(target.getResolvedPath().c_str(), "/path");
}

TEST(ResolvedUrlTest, AnRvalueIsCopiedToo) {
    URLHandler::ResolvedUrl source;
    source.setResolvedPath("/path");
    URLHandler::ResolvedUrl const copy(static_cast<URLHandler::ResolvedUrl&&>(source));
    EXPECT_STREQ(source.getResolvedPath().c_str(), "/path");
    EXPECT_STREQ(copy.getResolvedPath().c_str(), "/path");
    EXPECT_EQ(sizeof(URLHandler::ResolvedUrl), sizeof(void*));
}

TEST(URLHandlerTest, IsNullUntilOneExistsAndAfterItsEnd) {
    EXPECT_FALSE(URLHandler::getURLHandler());
    SharedPtr<URLHandler> handler(new Handler);
    EXPECT_EQ(URLHandler::getURLHandler().get(), handler.get());
    EXPECT_EQ(Service::getService(Service::kUrlHandlerService).get(), handler.get());
    handler.reset();
    EXPECT_FALSE(URLHandler::getURLHandler());
}

TEST(URLHandlerTest, IsNullWhenOnlyOtherServicesExist) {
    SharedPtr<Service> const writer(new Writer);
    EXPECT_FALSE(URLHandler::getURLHandler());
}

TEST(URLHandlerTest, ALookupTakesExactlyOneShare) {
    SharedPtr<URLHandler> const handler(new Handler);
    {
        SharedPtr<URLHandler> const found = URLHandler::getURLHandler();
        EXPECT_EQ(handler->refcount(), 2);
    }
    EXPECT_EQ(handler->refcount(), 1);
}

TEST(URLHandlerTest, ResolvesThroughWhatIsRegistered) {
    SharedPtr<URLHandler> const handler(new Handler);
    URLHandler::ResolvedUrl resolved;
    EXPECT_TRUE(URLHandler::getURLHandler()->resolveUrl("a.mov", resolved).success());
    EXPECT_STREQ(resolved.getResolvedPath().c_str(), "/local/a.mov");
    EXPECT_EQ(URLHandler::getURLHandler()->resolveUrl("", resolved), Status::kExpiredUrl);
}

TEST(URLHandlerTest, HasTheLayoutThatProgramsRelyOn) {
    EXPECT_TRUE(std::is_abstract_v<URLHandler>);
    EXPECT_TRUE((std::is_base_of_v<Service, URLHandler>));
    EXPECT_EQ(virtualSlot(&URLHandler::resolveUrl), 5U);
}

} // namespace
