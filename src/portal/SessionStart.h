// SPDX-License-Identifier: MIT
#pragma once

#include "platform/isInSandbox.h"
#include "portal/AutostartEntry.h"
#include "portal/PortalRequest.h"

#include <QObject>
#include <QString>
#include <QStringList>

#include <functional>
#include <memory>

namespace tunedeck {

class PortalConnection;

/// Has the session start the program: by the desktop's portal if it can do that, otherwise by an entry in the autostart
/// folder.
class SessionStart : public QObject {
    Q_OBJECT

public:
    enum class Result {
        Done,
        Declined, ///< the user or the desktop says no
        KeptUsersEntry, ///< the user has changed the entry in the autostart folder, so it stays as it is
        NotWritable, ///< the autostart folder
    };

    /// The program and the arguments that the session starts it with. `address` is that of the session bus; the usual
    /// one if empty. In a sandbox, the portal knows the program, and the autostart folder is not the session's.
    explicit SessionStart(QStringList commandLine, QString folder = autostartFolder(), QString address = {},
        QObject *parent = nullptr, bool isInSandbox = tunedeck::isInSandbox());
    ~SessionStart() override;

    /// Emits finished() later, unless another call comes before. `reason` says to the user what the program is started
    /// for.
    void setWanted(bool isWanted, const QString &reason);

Q_SIGNALS:
    void finished(bool isWanted, tunedeck::SessionStart::Result result);

private:
    /// Calls `work` on a thread, and `done` with its result on this one unless setWanted() has been called meanwhile.
    template <typename Found> void inBackground(std::function<Found()> work, std::function<void(Found)> done);
    void openPortal(bool isWanted, const QString &reason);
    void askPortal(bool isWanted, const QString &reason);
    void handleAnswer(bool isWanted, PortalAnswer answer, const QVariantMap &results);
    void changeEntry(bool isWanted);

    const QStringList m_commandLine;
    const QString m_folder;
    const QString m_address;
    const bool m_isInSandbox;
    std::unique_ptr<PortalConnection> m_portal;
    int m_call = 0; ///< the number of calls so far: an answer to an earlier one is too late
};

} // namespace tunedeck
