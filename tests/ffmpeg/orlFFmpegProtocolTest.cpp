// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "support/Damage.h"
#include "support/Reading.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <chrono>
#include <thread>

namespace {

using namespace Reading;

// A port of this machine that answers as told, or not at all.
class Port {
public:
    Port() : m_socket(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
        sockaddr_in address = {};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof address;
        EXPECT_EQ(bind(m_socket, reinterpret_cast<sockaddr*>(&address), size), 0);
        EXPECT_EQ(listen(m_socket, 8), 0);
        EXPECT_EQ(getsockname(m_socket, reinterpret_cast<sockaddr*>(&address), &size), 0);
        m_url = "http://127.0.0.1:" + std::to_string(ntohs(address.sin_port)) + "/medium.mkv";
    }

    Port(Port const&) = delete;
    Port& operator=(Port const&) = delete;
    ~Port() { close(m_socket); }

    std::string const& url() const { return m_url; }

    bool wasCalled(int milliseconds = 0) const {
        pollfd question = {m_socket, POLLIN, 0};
        return poll(&question, 1, milliseconds) > 0;
    }

    // Takes one call.
    void answer(std::string const& text) const {
        if (!wasCalled(5000)) {
            return;
        }
        int const call = accept(m_socket, nullptr, nullptr);
        char request[4096];
        EXPECT_GT(recv(call, request, sizeof request, 0), 0);
        EXPECT_EQ(send(call, text.data(), text.size(), MSG_NOSIGNAL), static_cast<ssize_t>(text.size()));
        close(call);
    }

private:
    int m_socket;
    std::string m_url;
};

std::string playlistOf(std::string const& url) {
    return "#EXTM3U\n#EXT-X-TARGETDURATION:1\n#EXTINF:1,\n" + url + "\n#EXT-X-ENDLIST\n";
}

std::string response(std::string const& body) {
    return "HTTP/1.1 200 OK\r\nContent-Length: " + std::to_string(body.size()) +
           "\r\nConnection: close\r\n\r\n" + body;
}

TEST(ProtocolTest, ASchemeThatIsNotAllowedIsNoAccessAndNotTried) {
    Port const port;
    Reader const reader;
    for (std::string const& url : {port.url(), std::string("rtsp://127.0.0.1/x"), std::string("nosuch://x"),
                                   std::string("smb://server/share/x.mov"), std::string("pipe://0")}) {
        EXPECT_EQ(reader.statusOf(url), Status::kIOAccess) << url;
    }
    EXPECT_FALSE(port.wasCalled(50));
}

TEST(ProtocolTest, AProtocolWithoutSlashesIsAFileNameUntilItIsAllowed) {
    Reader const reader;
    std::string const image = Damage::load(medium("still.png"));
    for (std::string const url :
         {"data:image/png;base64,AAAA", "concat:a|b", "pipe:0", "subfile,,start,0,end,1,,:x"}) {
        EXPECT_EQ(reader.statusOf(url), Status::kFileNotFound) << url;
    }
    reader->setAllowedProtocols("data");
    EXPECT_EQ(reader.statusOf("data:text/plain,hello"), Status::kUnsupportedFormat);
}

TEST(ProtocolTest, WhatAPlaylistRefersToMustBeAllowedToo) {
    Port const port;
    Damage::Folder const folder;
    std::string const list = folder.write("list.m3u8", playlistOf(port.url()));
    Reader const reader;
    EXPECT_EQ(reader.statusOf(list), Status::kIOAccess);
    EXPECT_FALSE(port.wasCalled(50));
}

TEST(ProtocolTest, APlaylistOfAPlaylistThatIsMissingIsAFileNotFound) {
    Damage::Folder const folder;
    std::string const list = folder.write("list.m3u8", "#EXTM3U\n#EXT-X-STREAM-INF:BANDWIDTH=1\nno.m3u8\n");
    EXPECT_EQ(Reader().statusOf(list), Status::kFileNotFound);
}

TEST(ProtocolTest, APlaylistOfMediaThatAreMissingHasNoUsableFrame) {
    Damage::Folder const folder;
    std::string const list = folder.write("list.m3u8", playlistOf("no.ts"));
    EXPECT_EQ(Reader().statusOf(list), Status::kErrorOpeningMediaFile);
}

TEST(ProtocolTest, APlaylistThatIsStillBeingWrittenEndsWithTheTimeLimit) {
    Damage::Folder const folder;
    std::string const list = folder.write(
        "list.m3u8", "#EXTM3U\n#EXT-X-TARGETDURATION:1\n#EXTINF:0.4,\nfile://" + medium("list0.ts") + "\n");
    Reader const reader;
    reader->setTimeLimit(0.5);
    auto const start = std::chrono::steady_clock::now();
    EXPECT_EQ(reader.statusOf(list), Status::kIOAccess);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(10));
}

TEST(ProtocolTest, AnAllowedUrlIsRead) {
    Port const port;
    Reader const reader;
    reader->setAllowedProtocols("http,tcp");
    std::thread server([&] { port.answer(response(Damage::load(medium("rate60.mkv")))); });
    std::string text;
    EXPECT_EQ(reader.read(port.url(), text), Status::kSuccess);
    server.join();
    Document const document(text);
    EXPECT_EQ(document.duration(), 60.0);
    EXPECT_EQ(document.rate(), 60.0);
    EXPECT_STREQ(document.at("/name").GetString(), "medium.mkv");
    EXPECT_EQ(document.at("/media_reference/target_url").GetString(), port.url());
}

TEST(ProtocolTest, WhatComesFromElsewhereDoesNotLeadToLocalFiles) {
    Port const port;
    Reader const reader;
    reader->setAllowedProtocols("http,tcp");
    std::thread server([&] { port.answer(response(playlistOf("file://" + medium("list0.ts")))); });
    EXPECT_EQ(reader.statusOf(port.url()), Status::kIOAccess);
    server.join();
}

TEST(ProtocolTest, AServersRefusalHasAStatusOfItsOwn) {
    struct Row {
        char const* line;
        Status::Type status;
    };
    for (Row const& row :
         {Row{"404 Not Found", Status::kFileNotFound}, Row{"403 Forbidden", Status::kIOAccess},
          Row{"500 Internal Server Error", Status::kIOAccess}}) {
        Port const port;
        Reader const reader;
        reader->setAllowedProtocols("http,tcp");
        std::thread server([&] {
            port.answer(std::string("HTTP/1.1 ") + row.line +
                        "\r\nContent-Length: 0\r\nConnection: close\r\n\r\n");
        });
        EXPECT_EQ(reader.statusOf(port.url()), row.status) << row.line;
        server.join();
    }
}

TEST(ProtocolTest, AServerThatNeverAnswersEndsWithTheTimeLimit) {
    Port const port;
    Reader const reader;
    reader->setAllowedProtocols("http,tcp");
    reader->setTimeLimit(0.3);
    auto const start = std::chrono::steady_clock::now();
    EXPECT_EQ(reader.statusOf(port.url()), Status::kIOAccess);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
    EXPECT_TRUE(port.wasCalled());
}

} // namespace
