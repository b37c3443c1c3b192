// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <gio/gdesktopappinfo.h>

#include <memory>

namespace tunedeck {

struct UnrefDesktopEntry {
    void operator()(GDesktopAppInfo *entry) const;
};
/// A desktop entry that GIO has read. Null if there is none.
using DesktopEntry = std::unique_ptr<GDesktopAppInfo, UnrefDesktopEntry>;

/// The same object. Every desktop entry is an application to GIO.
[[nodiscard]] GAppInfo *asAppInfo(GDesktopAppInfo *entry);

/// The installed desktop entry with this identifier, such as "vlc", with or without ".desktop". Null for an identifier
/// with a slash, and if GIO is not installed. Reads files, so call it on a worker thread.
[[nodiscard]] DesktopEntry findDesktopEntry(const QString &identifier);

/// Whether the desktop shows the entry, and its application plays audio: a player, a browser, or any application that
/// opens audio files.
[[nodiscard]] bool isShownAudioApplication(const DesktopEntry &entry);

/// `identifier` without ".desktop" at its end.
[[nodiscard]] QString withoutDesktopSuffix(const QString &identifier);

} // namespace tunedeck
