// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

namespace tunedeck {

/// Looks for a newer version of the program. The preferences know no more about the updater than this.
class Updater : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

public Q_SLOTS:
    /// The user asks for a newer version. Answers in windows of its own, and brings them to the front while a check is
    /// under way.
    virtual void checkForUpdates() = 0;
};

} // namespace tunedeck
