// SPDX-License-Identifier: Apache-2.0
// Copyright Contributors to the orlCore project
#ifndef ORL_DIRECTORY_LISTING_H
#define ORL_DIRECTORY_LISTING_H

#include <string>

namespace ORL_0_81 {

/// Receives names one by one.
class NameReceiver {
public:
    virtual ~NameReceiver() = default;

    virtual void addName(char const* name) = 0;

protected:
    NameReceiver() = default;
    NameReceiver(NameReceiver const&) = default;
    NameReceiver& operator=(NameReceiver const&) = default;
};

/// Lists the regular files of a directory, and the links to such, hidden ones included, in the file system's
/// order.
///
/// The system is asked for the status of an entry only where the listing itself does not tell it. An entry
/// that can't be asked about is passed over; so in a directory that may not be searched there is none,
/// whatever the listing tells. A directory that may not be read is like an empty one.
///
/// \param path of an existing directory, without a NUL.
///
/// Throws `std::filesystem::filesystem_error` if the directory can't be opened or read for any other reason,
/// and whatever the receiver throws.
void listRegularFiles(std::string const& path, NameReceiver& receiver);

} // namespace ORL_0_81

#endif // ORL_DIRECTORY_LISTING_H
