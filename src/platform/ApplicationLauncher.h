// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QPointer>
#include <QStringList>

class QThread;

namespace tunedeck {

/// Launches applications by the identifier of their desktop entry. A thread does the work, because reading the entries
/// and activating over D-Bus may block.
class ApplicationLauncher : public QObject {
    Q_OBJECT

public:
    /// Which entries are launched. Players name their own entries, and may name any, so of theirs only those of
    /// players, browsers and other applications that open audio files are, if the desktop shows them in menus.
    enum class Accepts { EntriesOfPlayers, AnyEntry };

    explicit ApplicationLauncher(Accepts accepts = Accepts::EntriesOfPlayers, QObject *parent = nullptr);
    /// Waits up to half a second for a launch that is under way, then leaves its thread running.
    ~ApplicationLauncher() override;

    /// Whether launch() may launch anything: not in a sandbox.
    [[nodiscard]] virtual bool canLaunch() const;
    /// Launches the first of `desktopEntries` (identifiers such as "vlc", with or without ".desktop") that is installed
    /// and accepted, else the desktop's default application for `contentType` (such as "audio/mpeg"; empty for none).
    /// Returns at once; one of the two signals follows. Ignores identifiers with a slash. A call while a launch is
    /// under way does nothing and emits no signal of its own.
    virtual void launch(const QStringList &desktopEntries, const QString &contentType);

Q_SIGNALS:
    /// `desktopEntry` is the identifier without ".desktop". An application that D-Bus starts counts as launched as soon
    /// as the request is sent.
    void launched(const QString &desktopEntry);
    /// No application was found, or it did not start.
    void failed();

private:
    Accepts m_accepts;
    QPointer<QThread> m_thread; ///< null while no launch is under way
};

} // namespace tunedeck
