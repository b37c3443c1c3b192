// SPDX-License-Identifier: MIT
#pragma once

namespace tunedeck {

/// Why there is no answer to whether there is an update, or no file that could be trusted.
enum class UpdateFailure {
    /// The program was built with an address or a key that cannot be used.
    misconfigured,
    /// The system's own software updater did not open.
    noSystemUpdater,

    /// No connection came about.
    unreachable,
    /// The connection, or the address that it was sent on to, is not secure.
    insecure,
    /// Sent on from address to address.
    sentAround,
    /// Nothing came for too long.
    stalled,
    /// The server has an error for an answer.
    refused,
    /// The connection broke.
    interrupted,

    feedTooLong,
    feedNotUnderstood,

    /// The feed offers a file without what is needed to check it.
    notVerifiable,
    incomplete,
    /// The file is longer than the feed says.
    tooLong,
    wronglySigned,
    /// The file could not be written.
    notSaved,
};

} // namespace tunedeck
