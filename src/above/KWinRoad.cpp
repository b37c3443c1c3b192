// SPDX-License-Identifier: MIT
#include "above/KWinRoad.h"

#include "platform/BundleInfo.h"
#include "platform/shortened.h"
#include "platform/windowLog.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDir>
#include <QUuid>

#include <utility>

namespace tunedeck {

namespace {
/// In milliseconds. Nobody waits any longer by then.
constexpr int deadline = 2'000;
constexpr QLatin1String service("org.kde.KWin");
constexpr QLatin1String ourPath("/org/tunedeck/Tunedeck/KeepAbove");

/// KWin 5 has clientList(), KWin 6 windowList(). Not each of the program's other windows is transient: one whose main
/// window was hidden and shown again no longer belongs to it. KWin adds a number to a title that another window has
/// too, such as "Tunedeck <2>".
constexpr const char *scriptText = R"((function () {
    var windows = workspace.windowList ? workspace.windowList() : workspace.clientList();
    var result = "none";
    for (var i = 0; i < windows.length; ++i) {
        var window = windows[i];
        var caption = String(window.caption).replace(/ <\d+>$/, "");
        if (String(window.desktopFileName) === "%1" && !window.transient && caption === "%6") {
            window.keepAbove = %2;
            result = window.keepAbove === %2 ? "done" : "refused";
        }
    }
    callDBus("%3", "%4", "org.tunedeck.KeepAbove", "Report", "%5", result);
})();
)";

QString scriptName(const QString &token)
{
    return QStringLiteral("tunedeck-%1").arg(token);
}

/// The folder of the user's own that is gone after the session, if there is one.
QString scriptTemplate()
{
    const QString runtime = qEnvironmentVariable("XDG_RUNTIME_DIR");
    return QDir(runtime.isEmpty() ? QDir::tempPath() : runtime).filePath(QStringLiteral("tunedeck-XXXXXX.js"));
}

/// Asks the bus who KWin is. A reply does not say who sent it: Qt 6.8 drops the sender's name.
QDBusMessage ownerCall()
{
    const QString bus = QStringLiteral("org.freedesktop.DBus");
    return QDBusMessage::createMethodCall(
               bus, QStringLiteral("/org/freedesktop/DBus"), bus, QStringLiteral("GetNameOwner"))
        << QString(service);
}
} // namespace

KWinRoad::KWinRoad(const QDBusConnection &bus, QString title, QObject *parent)
    : AboveRoad(parent)
    , m_bus(bus)
    , m_title(std::move(title))
    , m_askedBus(bus)
{
}

KWinRoad::~KWinRoad()
{
    cleanUp();
}

void KWinRoad::ask(bool isAbove)
{
    m_askedBus = m_bus;
    m_token = QUuid::createUuid().toString(QUuid::Id128);
    if (!m_askedBus.registerObject(ourPath, this, QDBusConnection::ExportScriptableSlots) || !writeScript(isAbove)) {
        finish(AboveAnswer::Refused);
        return;
    }
    call(ownerCall(), &KWinRoad::loadScript);
}

void KWinRoad::cleanUp()
{
    if (m_token.isEmpty()) {
        return;
    }
    m_askedBus.unregisterObject(ourPath);
    // KWin reads the file later. It must not run a script that nobody waits for.
    m_script.reset();
    if (!m_kwin.isEmpty()) {
        // KWin carries this out after all that was asked before, even if it answers none of it now.
        m_askedBus.send(scriptingCall(QStringLiteral("unloadScript")) << scriptName(m_token));
    }
    m_token.clear();
    m_kwin.clear();
}

void KWinRoad::Report(const QString &token, const QString &result)
{
    if (m_token.isEmpty() || token != m_token || !calledFromDBus() || message().service() != m_kwin) {
        qCDebug(windowLog) << "a report about the window that KWin has not sent:" << shortened(result);
        return;
    }
    if (result == QStringLiteral("done")) {
        finish(AboveAnswer::Done);
    } else {
        finish(result == QStringLiteral("none") ? AboveAnswer::NoWindow : AboveAnswer::Refused);
    }
}

bool KWinRoad::writeScript(bool isAbove)
{
    m_script = std::make_unique<QTemporaryFile>(scriptTemplate());
    const QString text = QString::fromLatin1(scriptText)
                             .arg(applicationId.toString(), isAbove ? QStringLiteral("true") : QStringLiteral("false"),
                                 m_askedBus.baseService(), ourPath, m_token, m_title);
    return m_script->open() && m_script->write(text.toUtf8()) > 0 && m_script->flush();
}

void KWinRoad::call(const QDBusMessage &message, void (KWinRoad::*handle)(const QDBusMessage &reply))
{
    auto *watcher = new QDBusPendingCallWatcher(m_askedBus.asyncCall(message, deadline), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher, handle, token = m_token] {
        watcher->deleteLater();
        if (token == m_token) {
            (this->*handle)(watcher->reply());
        }
    });
}

QDBusMessage KWinRoad::scriptingCall(const QString &method) const
{
    return QDBusMessage::createMethodCall(
        m_kwin, QStringLiteral("/Scripting"), QStringLiteral("org.kde.kwin.Scripting"), method);
}

void KWinRoad::loadScript(const QDBusMessage &owner)
{
    m_kwin = owner.type() == QDBusMessage::ReplyMessage ? owner.arguments().value(0).toString() : QString();
    if (m_kwin.isEmpty()) {
        qCDebug(windowLog) << "KWin is not there:" << shortened(owner.errorMessage());
        finish(AboveAnswer::Refused);
        return;
    }
    call(scriptingCall(QStringLiteral("loadScript")) << m_script->fileName() << scriptName(m_token),
        &KWinRoad::runScript);
}

void KWinRoad::runScript(const QDBusMessage &loaded)
{
    const QVariant number = loaded.arguments().value(0);
    const bool isNumber = loaded.type() == QDBusMessage::ReplyMessage && number.typeId() == QMetaType::Int;
    if (!isNumber || number.toInt() < 0) {
        qCDebug(windowLog) << "KWin loads no script:" << shortened(loaded.errorMessage());
        finish(AboveAnswer::Refused);
        return;
    }
    m_scriptNumber = number.toInt();
    runScriptAt(QStringLiteral("/Scripting/Script%1").arg(m_scriptNumber), &KWinRoad::runOldScript);
}

void KWinRoad::runScriptAt(const QString &path, void (KWinRoad::*handle)(const QDBusMessage &reply))
{
    call(QDBusMessage::createMethodCall(m_kwin, path, QStringLiteral("org.kde.kwin.Script"), QStringLiteral("run")),
        handle);
}

/// KWin 5 has its scripts in another place.
void KWinRoad::runOldScript(const QDBusMessage &reply)
{
    if (reply.type() == QDBusMessage::ErrorMessage) {
        runScriptAt(QStringLiteral("/%1").arg(m_scriptNumber), &KWinRoad::checkRun);
    }
}

void KWinRoad::checkRun(const QDBusMessage &reply)
{
    if (reply.type() == QDBusMessage::ErrorMessage) {
        qCDebug(windowLog) << "KWin runs no script:" << shortened(reply.errorMessage());
        finish(AboveAnswer::Refused);
    }
}

void KWinRoad::finish(AboveAnswer answer)
{
    cleanUp();
    Q_EMIT answered(answer);
}

} // namespace tunedeck
