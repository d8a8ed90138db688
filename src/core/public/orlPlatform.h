// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_PLATFORM_H
#define ORL_PLATFORM_H

#include "orlExport.h"
#include "orlString.h"

#include <cstdio>

namespace ORL_0_81 {

/// The calls of the operating system that the rest of the library may use.
///
/// The operations have no state. Most hand the system's own result through: an `int` in the system's
/// convention, no Status. Paths, names and texts are NUL-terminated and must not be null, except where told.
///
/// Thread safety is that of the call beneath: getenv() and setEnvVar() must not run at the same time,
/// strerror() reads the calling thread's errno, and the operations on thread names concern the calling thread
/// only.
class ORL_CORE_EXPORT Platform {
public:
    /// \returns the directory of the running executable, with symbolic links resolved and without the
    ///     executable's own name; "." if it cannot be had.
    static String getExecutablePath();

    /// \returns the value of an environment variable, owned by the environment, or null if it is not set.
    static char const* getenv(char const* name);

    /// Sets an environment variable, over any value that it has. \returns 0, or -1 with errno set.
    static int setEnvVar(char const* name, char const* value);

    /// \returns the real user id in decimal.
    static String getuid();

    /// \returns the login name of the real user id, empty if the password database has no entry for it.
    static String getUserName();

    /// \returns the id of this process.
    static int getpid();

    /// Names the calling thread.
    ///
    /// \returns 0 or the system's error number. A name of more than 15 bytes is refused with 34 (ERANGE), and
    ///     the thread keeps its name.
    static int setThreadName(String const& name);

    /// Reads the name of the calling thread. \returns 0, or the system's error number with `name` unchanged.
    static int getThreadName(String& name);

    /// @{
    /// Compare without regard to case, as the system's functions of these names.
    static int strcasecmp(char const* left, char const* right);
    static int strncasecmp(char const* left, char const* right, unsigned long length);
    /// @}

    /// Makes one directory; those above it must exist.
    ///
    /// \param path The directory to be made.
    /// \param mode Permission bits, before the process's mask.
    /// \returns 0, or -1 with errno set.
    static int mkdir(char const* path, int mode);

    /// True if the path, with symbolic links followed, is a directory that can be asked about.
    static bool isdir(char const* path);

    /// Removes the files of a directory.
    ///
    /// A symbolic link to a directory counts as that directory, so that `recursive` deletes what it holds. A
    /// dangling link is a file.
    ///
    /// \param path The directory.
    /// \param removeSelf Removes the directory, too, in the end. It is handed down, so that a recursive call
    ///     without it keeps all directories.
    /// \param recursive Enters subdirectories; without it they are left alone, and so is what holds them.
    /// \returns -1 if the directory cannot be read. Otherwise the first failure to remove a file, at which
    ///     the operation stops at once and leaves the handle of the directory open; else the result of
    ///     removing or closing the directory. A failure below a subdirectory goes unnoticed.
    static int rmfiles(char const* path, bool removeSelf, bool recursive);

    /// \returns the system's text for the calling thread's errno. It may change with the next call.
    static char const* strerror();

    /// @{
    /// Keep memory out of the swap space, or no longer. \returns 0, or -1 with errno set, as when the process
    /// is at its limit of locked memory.
    static int mlock(void const* address, unsigned long length);
    static int munlock(void const* address, unsigned long length);
    /// @}

    /// Fills memory in a way that no optimiser takes away.
    ///
    /// \returns 0, or EINVAL for a null address.
    static int memset_s(void* address, char value, unsigned long count);

    /// Opens a file as the system's function of this name.
    ///
    /// \param file Receives the open file, which the caller closes, or null.
    /// \param path, mode As there.
    /// \returns 0 or errno.
    static int fopen(FILE*& file, char const* path, char const* mode);
};

} // namespace ORL_0_81

#endif // ORL_PLATFORM_H
