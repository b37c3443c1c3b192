// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QVariantMap>

#include <optional>

namespace tunedeck {

/// The token with which the desktop lets a program that it starts take the keyboard focus. X11 and Wayland have
/// different ones; either may be empty.
///
/// A second process hands its token to the running one over the session bus, where anyone can send anything: a text
/// of more than 1,000 characters, or with control characters, is dropped.
struct ActivationToken {
    QString x11StartupId; ///< $DESKTOP_STARTUP_ID
    QString waylandToken; ///< $XDG_ACTIVATION_TOKEN

    /// Removes both variables, so that neither Qt nor a program that this one starts uses them too. Call it before the
    /// QApplication is made, which would use them up.
    [[nodiscard]] static ActivationToken takeFromEnvironment();
    [[nodiscard]] static ActivationToken fromPlatformData(const QVariantMap &platformData);
    /// The arguments that org.freedesktop.Application hands on, without the texts that are empty.
    [[nodiscard]] QVariantMap platformData() const;

    /// When the user asked for the start, in milliseconds of the X server's clock, which is at `now` and starts again
    /// at zero every 49 days. No value if the startup id does not say, or if that was not in the last ten minutes.
    [[nodiscard]] std::optional<quint32> userTime(quint32 now) const;

    bool operator==(const ActivationToken &) const = default;
};

} // namespace tunedeck
