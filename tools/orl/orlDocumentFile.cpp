// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#include "orlDocumentFile.h"

#include "orlInputError.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <istream>
#include <memory>
#include <ostream>
#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace ORL_0_81::tool {

namespace {

constexpr std::size_t kBlock = std::size_t{64} * 1024;

[[noreturn]] void fail(std::string const& file, int error) {
    throw InputError(file, std::generic_category().message(error));
}

std::string readStream(std::istream& in) {
    std::string text;
    std::array<char, kBlock> block{};
    while (in.read(block.data(), static_cast<std::streamsize>(block.size())) || in.gcount() > 0) {
        text.append(block.data(), static_cast<std::size_t>(in.gcount()));
    }
    if (in.bad()) {
        throw InputError(kStandardStream, "cannot be read");
    }
    return text;
}

/// A descriptor that is closed, and a temporary file that is removed, unless it took its place.
class OutputFile {
public:
    OutputFile(std::string const& shownName, std::string path, int flags, mode_t mode)
        : m_shownName(shownName),
          m_path(std::move(path)),
          m_descriptor(::open(m_path.c_str(), flags, mode)),
          m_isTemporary((flags & O_EXCL) != 0 && m_descriptor >= 0) {}

    ~OutputFile() {
        if (m_descriptor >= 0) {
            ::close(m_descriptor);
        }
        if (m_isTemporary) {
            ::unlink(m_path.c_str());
        }
    }

    OutputFile(OutputFile const&) = delete;
    OutputFile& operator=(OutputFile const&) = delete;

    bool isOpen() const { return m_descriptor >= 0; }

    void write(std::string const& text) {
        for (std::size_t written = 0; written < text.size();) {
            ssize_t const count = ::write(m_descriptor, text.data() + written, text.size() - written);
            if (count >= 0) {
                written += static_cast<std::size_t>(count);
            } else if (errno != EINTR) {
                fail(m_shownName, errno);
            }
        }
    }

    void setMode(mode_t mode) {
        if (::fchmod(m_descriptor, mode) != 0) {
            fail(m_shownName, errno);
        }
    }

    void sync() {
        if (::fsync(m_descriptor) != 0) {
            fail(m_shownName, errno);
        }
    }

    void close() {
        int const descriptor = m_descriptor;
        m_descriptor = -1;
        if (::close(descriptor) != 0) {
            fail(m_shownName, errno);
        }
    }

    void takePlaceOf(std::string const& path) {
        if (std::rename(m_path.c_str(), path.c_str()) != 0) {
            fail(m_shownName, errno);
        }
        m_isTemporary = false;
    }

private:
    std::string const& m_shownName;
    std::string m_path;
    int m_descriptor;
    bool m_isTemporary;
};

/// Where a symbolic link leads in the end, whether or not something is there.
std::filesystem::path followLinks(std::string const& file) {
    constexpr int kMostLinks = 40;
    std::filesystem::path path(file);
    std::error_code error;
    for (int links = 0; std::filesystem::is_symlink(path, error); ++links) {
        if (links == kMostLinks) {
            fail(file, ELOOP);
        }
        path = path.parent_path() / std::filesystem::read_symlink(path, error);
        if (error) {
            fail(file, error.value());
        }
    }
    return path;
}

std::unique_ptr<OutputFile> createTemporary(std::string const& file, std::filesystem::path const& folder) {
    constexpr mode_t kReadWriteForAll = 0666; // what of it stays, the process's mask says
    constexpr int kMostAttempts = 1000;
    for (int attempt = 0;; ++attempt) {
        // The name is short whatever the file's own, which may be as long as the file system takes.
        std::string const name =
            ".orl-" + std::to_string(::getpid()) + '-' + std::to_string(attempt) + ".tmp";
        auto temporary = std::make_unique<OutputFile>(
            file, (folder / name).string(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, kReadWriteForAll);
        if (temporary->isOpen()) {
            return temporary;
        }
        if (errno != EEXIST || attempt == kMostAttempts) {
            fail(file, errno);
        }
    }
}

/// So that the new name, too, survives a loss of power. The text is whole either way; failing is no error.
void syncFolder(std::filesystem::path const& folder) {
    int const descriptor = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor >= 0) {
        ::fsync(descriptor);
        ::close(descriptor);
    }
}

void writeInPlace(std::string const& file, std::string const& path, std::string const& text) {
    OutputFile output(file, path, O_WRONLY | O_CLOEXEC, 0);
    if (!output.isOpen()) {
        fail(file, errno);
    }
    output.write(text);
    output.close();
}

} // namespace

std::string readDocument(std::string const& file, std::istream& standardInput) {
    if (file == kStandardStream) {
        return readStream(standardInput);
    }
    std::unique_ptr<std::FILE, int (*)(std::FILE*)> const input(std::fopen(file.c_str(), "rb"), &std::fclose);
    if (!input) {
        fail(file, errno);
    }
    std::string text;
    std::array<char, kBlock> block{};
    while (std::size_t const count = std::fread(block.data(), 1, block.size(), input.get())) {
        text.append(block.data(), count);
    }
    if (std::ferror(input.get()) != 0) {
        fail(file, errno);
    }
    return text;
}

void writeDocument(std::string const& file, std::string const& text) {
    std::filesystem::path const path = followLinks(file);
    struct stat status {};
    bool const exists = ::stat(path.c_str(), &status) == 0;
    if (exists && S_ISDIR(status.st_mode)) {
        fail(file, EISDIR);
    }
    if (exists && !S_ISREG(status.st_mode)) {
        writeInPlace(file, path.string(), text);
        return;
    }
    // A folder that may be written would let any file in it be replaced; a protected one is meant to stay.
    if (exists && ::access(path.c_str(), W_OK) != 0) {
        fail(file, errno);
    }

    std::filesystem::path const folder = path.has_parent_path() ? path.parent_path() : ".";
    std::unique_ptr<OutputFile> const temporary = createTemporary(file, folder);
    temporary->write(text);
    if (exists) {
        constexpr mode_t kPermissions = 0777;
        temporary->setMode(status.st_mode & kPermissions);
    }
    temporary->sync();
    temporary->close();
    temporary->takePlaceOf(path.string());
    syncFolder(folder);
}

void writeToStream(std::ostream& out, std::string const& text) {
    errno = 0;
    if (!(out.write(text.data(), static_cast<std::streamsize>(text.size())) && out.flush())) {
        int const error = errno;
        throw InputError("standard output",
                         error != 0 ? std::generic_category().message(error) : "cannot be written");
    }
}

void writeOutput(std::string const& file, std::string const& text, std::ostream& out) {
    if (file == kStandardStream) {
        writeToStream(out, text);
    } else {
        writeDocument(file, text);
    }
}

} // namespace ORL_0_81::tool
