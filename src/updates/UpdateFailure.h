// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

namespace tunedeck {

Q_NAMESPACE

/// Why a check for updates or a download has failed.
enum class UpdateFailure {
    /// The program was built with an invalid address or key.
    misconfigured,
    /// The system's own software updater did not open.
    noSystemUpdater,

    /// No connection could be made.
    unreachable,
    /// The connection, or the address of a redirect, is not secure.
    insecure,
    /// There were too many redirects.
    tooManyRedirects,
    /// No data, or too little, came for too long.
    stalled,
    /// The server has nothing at the address.
    missing,
    /// The server answered with another error.
    refused,
    /// The connection broke.
    interrupted,

    feedTooLong,
    feedNotUnderstood,
    feedNotSigned,
    /// The server has answered with an error in the place of the feed's signature, which may exist.
    signatureRefused,
    /// The feed was changed, or signed with an unknown key.
    feedWronglySigned,
    /// A feed that was published later has been seen.
    feedOutdated,
    feedExpired,

    /// The feed has no length, no hash or no valid signature of the file, or no secure address.
    notVerifiable,
    incomplete,
    /// The file is longer than the feed says.
    tooLong,
    /// The file has another hash than the feed says.
    notGenuine,
    /// The saved file is no longer the one that was verified.
    changed,
    /// The file could not be written.
    notSaved,
};
/// The log names it in English, whatever the user's language.
Q_ENUM_NS(UpdateFailure)

} // namespace tunedeck
