// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <cstdint>

namespace tunedeck {

/// The origin of a stream, as the stream and its client claim it. Every client may claim what it likes.
struct StreamOrigin {
    std::uint32_t stream = 0; ///< the stream's index on the server
    std::uint32_t client = 0; ///< its client's
    /// The process as the client's or the stream's own claim, as its PID namespace counts; 0 if there is none.
    qint64 claimedProcess = 0;
    /// The process as the kernel told the server, as this machine counts; 0 if the server does not report it.
    qint64 vouchedProcess = 0;
    QString sandbox = {}; ///< identifier of the Flatpak that the server found it in; empty if there is none
    QString application = {}; ///< the application's name for people
    QString binary = {}; ///< file name of the program

    bool operator==(const StreamOrigin &) const = default;
};

} // namespace tunedeck
