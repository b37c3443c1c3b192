// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

namespace tunedeck {

/// Whether a player of this bus name (without "org.mpris.MediaPlayer2.") is one of many that a phone bridge shows:
/// KDE Connect or GSConnect.
[[nodiscard]] bool isOfPhoneBridge(const QString &name);

/// Whether players of one process that call themselves so are those of a phone bridge: there are four or more, no two
/// alike, and each names the same device, as in "Pixel: Podcast" or "Podcast - Pixel".
[[nodiscard]] bool nameOneDevice(const QStringList &identities);

} // namespace tunedeck
