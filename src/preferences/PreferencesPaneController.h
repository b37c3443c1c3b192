// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QString>

class QWidget;

namespace tunedeck {

/// The controller of one pane of the preferences window.
class PreferencesPaneController : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// The pane's contents, which the controller owns.
    [[nodiscard]] virtual QWidget &view() = 0;

Q_SIGNALS:
    /// The user wants to read the page at `anchor` in the help book `book`.
    void helpRequested(const QString &anchor, const QString &book);
};

} // namespace tunedeck
