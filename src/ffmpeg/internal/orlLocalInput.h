// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_LOCAL_INPUT_H
#define ORL_LOCAL_INPUT_H

#include "internal/orlReadLimits.h"

#include <memory>
#include <string>
#include <utility>

struct AVIOContext;

namespace ORL_0_81::media {

/// An open file of the system's, closed at the end.
class FileDescriptor {
public:
    /// \param number Negative for none.
    explicit FileDescriptor(int number) : m_number(number) {}

    FileDescriptor(FileDescriptor&& other) noexcept : m_number(std::exchange(other.m_number, -1)) {}
    FileDescriptor& operator=(FileDescriptor&&) = delete;
    ~FileDescriptor();

    int get() const { return m_number; }

private:
    int m_number;
};

/// A local file for FFmpeg to read, opened by us: FFmpeg's own way of opening one waits for the writer of a
/// named pipe for ever, and takes names with a colon for URLs.
class LocalInput {
public:
    /// Opens a regular file or a named pipe, and nothing else: to open a device can already do something.
    /// Does not wait for the writer of a pipe.
    ///
    /// \param limits Are asked at each read, and must outlive the input. Are told if there may be waiting.
    /// \param error Receives FFmpeg's code of a failure.
    /// \returns null after a failure.
    static std::unique_ptr<LocalInput> open(std::string const& path, ReadLimits& limits, int& error);

    LocalInput(LocalInput const&) = delete;
    LocalInput& operator=(LocalInput const&) = delete;

    /// Closes the file and frees the context.
    ~LocalInput();

    /// What FFmpeg reads from. Owned by this object.
    AVIOContext* context() const { return m_context; }

private:
    LocalInput(FileDescriptor descriptor, bool isRegular, ReadLimits& limits);

    static int readPacket(void* opaque, unsigned char* buffer, int size);
    static long long seek(void* opaque, long long offset, int whence);

    bool waitForData();

    FileDescriptor m_descriptor;
    bool m_isRegular;
    ReadLimits& m_limits;
    AVIOContext* m_context = nullptr;
};

} // namespace ORL_0_81::media

#endif // ORL_LOCAL_INPUT_H
