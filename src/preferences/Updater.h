// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

namespace tunedeck {

/// The interface through which the preferences look for a newer version of the program.
class Updater : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// Whether this copy of the program looks for newer versions itself. The others are kept up to date by the system,
    /// or by the user who built them.
    [[nodiscard]] virtual bool looksForUpdates() const = 0;

public Q_SLOTS:
    /// The user asks for a newer version. Answers in windows of its own, and brings them to the front while a check is
    /// under way.
    virtual void checkForUpdates() = 0;
};

} // namespace tunedeck
