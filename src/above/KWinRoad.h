// SPDX-License-Identifier: MIT
#pragma once

#include "above/AboveRoad.h"

#include <QDBusConnection>
#include <QDBusContext>
#include <QString>
#include <QTemporaryFile>

#include <memory>

class QDBusMessage;

namespace tunedeck {

/// Keeps the window above others in KWin, by a script that runs there once. KWin finds the window by the program's
/// identifier and the title, because the process may have another number there. Only the script's own call proves that
/// it has run: KWin accepts scripts that it never runs, and files that do not exist.
class KWinRoad : public AboveRoad, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.tunedeck.KeepAbove")

public:
    /// The window is the one with the title `title`. `bus` must outlive this object, and may become another connection.
    KWinRoad(const QDBusConnection &bus, QString title, QObject *parent = nullptr);
    ~KWinRoad() override;

    [[nodiscard]] AboveWay way() const override { return AboveWay::KWin; }
    void ask(bool isAbove) override;
    void abandon() override { cleanUp(); }

public Q_SLOTS:
    /// The script calls this over D-Bus. `token` is the one that the script was given, `result` is "done", "refused" or
    /// "none", if there is no such window.
    Q_SCRIPTABLE void Report(const QString &token, const QString &result);

private:
    [[nodiscard]] bool writeScript(bool isAbove);
    void call(const QDBusMessage &message, void (KWinRoad::*handle)(const QDBusMessage &reply));
    [[nodiscard]] QDBusMessage scriptingCall(const QString &method) const;
    void loadScript(const QDBusMessage &owner);
    void runScript(const QDBusMessage &loaded);
    void runScriptAt(const QString &path, void (KWinRoad::*handle)(const QDBusMessage &reply));
    void runOldScript(const QDBusMessage &reply);
    void checkRun(const QDBusMessage &reply);
    void cleanUp();
    void finish(AboveAnswer answer);

    const QDBusConnection &m_bus;
    const QString m_title;
    QDBusConnection m_askedBus; ///< the connection of the open question
    QString m_token; ///< empty while no question is open
    QString m_kwin; ///< KWin's unique name; empty until the bus has told it
    int m_scriptNumber = 0;
    std::unique_ptr<QTemporaryFile> m_script;
};

} // namespace tunedeck
