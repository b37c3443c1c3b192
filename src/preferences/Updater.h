// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

namespace tunedeck {

/// What looks for a newer version of the program, as far as the preferences know it.
class Updater : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

public Q_SLOTS:
    /// The user asks whether there is a newer version. Answers in windows of its own; while it is at work, brings
    /// those forward.
    virtual void checkForUpdates() = 0;
};

} // namespace tunedeck
