// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QVariantMap>

#include <optional>

namespace tunedeck {

/// The right to take the keyboard, which the desktop gives to a start of the program. A program that runs already gets
/// it handed on, over a bus on which anyone can say anything: what is longer than any desktop makes it, or has control
/// characters, is none.
struct Startup {
    QString id; ///< X11's
    QString token; ///< Wayland's

    /// It is not there any more afterwards, neither for the toolkit nor for the programs that this one starts. Before
    /// there is a QApplication, which would use it up.
    [[nodiscard]] static Startup takeFromEnvironment();
    [[nodiscard]] static Startup fromPlatformData(const QVariantMap &platformData);
    [[nodiscard]] QVariantMap platformData() const;

    /// When the user asked for the start, in milliseconds of the X server's clock. None where the id does not tell.
    [[nodiscard]] std::optional<quint32> userTime() const;

    bool operator==(const Startup &) const = default;
};

} // namespace tunedeck
