// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QPointer>
#include <QStringList>

class QThread;

namespace tunedeck {

/// Launches applications by the identifier of their desktop entry, on a thread of its own: reading the entries and
/// activating over D-Bus may wait, the window may not.
class ApplicationLauncher : public QObject {
    Q_OBJECT

public:
    explicit ApplicationLauncher(QObject *parent = nullptr);
    /// Gives a launch under way half a second to be done, then leaves it to itself.
    ~ApplicationLauncher() override;

    /// Launches the first of `desktopEntries` (identifiers such as "vlc", with or without ".desktop") that is
    /// installed, else the desktop's default application for `contentType` (such as "audio/mpeg"; empty for none).
    /// Returns at once; one of the two signals follows. An identifier with a slash is never looked up. A launch asked
    /// for while one is under way is ignored.
    virtual void launch(const QStringList &desktopEntries, const QString &contentType);

Q_SIGNALS:
    /// With the identifier of what was launched, without ".desktop". An application that is started over D-Bus counts
    /// as launched once it has been asked to start.
    void launched(const QString &desktopEntry);
    /// There was nothing to launch, or it did not start.
    void failed();

private:
    /// While a launch is under way.
    QPointer<QThread> m_thread;
};

} // namespace tunedeck
