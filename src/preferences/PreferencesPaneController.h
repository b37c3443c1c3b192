// SPDX-License-Identifier: MIT
#pragma once

#include <QLatin1String>
#include <QObject>
#include <QString>

class QAction;
class QWidget;

namespace tunedeck {

/// The controller of one pane of the preferences window.
class PreferencesPaneController : public QObject {
    Q_OBJECT

public:
    /// The identifier of the one menu item that panes answer to.
    static constexpr QLatin1String closeWindowItem{"File_CloseWindow"};

    using QObject::QObject;

    /// The pane's contents, which the controller owns.
    [[nodiscard]] virtual QWidget &view() = 0;
    /// Returns whether `item` is enabled while the pane is on show.
    [[nodiscard]] virtual bool validateMenuItem(const QAction &item) const;
    /// Closes the window that holds the pane's contents.
    virtual void closeWindow();

Q_SIGNALS:
    /// The user wants to read the page at `anchor` in the help book `book`.
    void helpRequested(const QString &anchor, const QString &book);
};

} // namespace tunedeck
