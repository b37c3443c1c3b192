// SPDX-License-Identifier: MIT
#include "portal/SessionStart.h"

#include "portal/PortalConnection.h"

#include <QCoreApplication>
#include <QPointer>
#include <QThread>

#include <utility>

namespace tunedeck {

namespace {
/// A command line of the desktop entry specification.
QString quoted(const QStringList &commandLine)
{
    QStringList words;
    for (QString word : commandLine) {
        // The backslash first, and twice: for the string and for the quotes around it.
        word.replace(u'\\', QStringLiteral("\\\\\\\\"));
        for (const QChar special : {u'"', u'`', u'$'}) {
            word.replace(special, QStringLiteral("\\\\") + special);
        }
        words.append(u'"' + word.replace(u'%', QStringLiteral("%%")) + u'"');
    }
    return words.join(u' ');
}

SessionStart::Result resultOf(AutostartChange change)
{
    switch (change) {
    case AutostartChange::Done:
        return SessionStart::Result::Done;
    case AutostartChange::KeptUsersEntry:
        return SessionStart::Result::KeptUsersEntry;
    case AutostartChange::NotWritable:
        break;
    }
    return SessionStart::Result::NotWritable;
}

} // namespace

SessionStart::SessionStart(QStringList commandLine, QString folder, QString address, QObject *parent, bool isInSandbox)
    : QObject(parent)
    , m_commandLine(std::move(commandLine))
    , m_folder(std::move(folder))
    , m_address(std::move(address))
    , m_isInSandbox(isInSandbox)
{
}

SessionStart::~SessionStart() = default;

void SessionStart::setWanted(bool isWanted, const QString &reason)
{
    ++m_call;
    m_portal.reset();
    // A portal would write over the entry.
    inBackground<bool>([folder = m_folder] { return hasUsersAutostartEntry(folder); },
        [this, isWanted, reason](bool isUsers) {
            if (isUsers) {
                Q_EMIT finished(isWanted, Result::KeptUsersEntry);
            } else {
                openPortal(isWanted, reason);
            }
        });
}

template <typename Found> void SessionStart::inBackground(std::function<Found()> work, std::function<void(Found)> done)
{
    QThread *thread =
        QThread::create([start = QPointer(this), call = m_call, work = std::move(work), done = std::move(done)] {
            const Found found = work();
            QMetaObject::invokeMethod(
                QCoreApplication::instance(),
                [start, call, found, done] {
                    if (start && start->m_call == call) {
                        done(found);
                    }
                },
                Qt::QueuedConnection);
        });
    connect(thread, &QThread::finished, thread, &QObject::deleteLater);
    thread->start();
}

void SessionStart::openPortal(bool isWanted, const QString &reason)
{
    m_portal = std::make_unique<PortalConnection>(m_address, this);
    connect(m_portal.get(), &PortalConnection::opened, this, [this, isWanted, reason] { askPortal(isWanted, reason); });
    connect(m_portal.get(), &PortalConnection::failed, this,
        [this, isWanted](PortalAnswer answer) { handleAnswer(isWanted, answer, {}); });
    connect(m_portal.get(), &PortalConnection::lost, this,
        [this, isWanted] { handleAnswer(isWanted, PortalAnswer::Failed, {}); });
    m_portal->open();
}

void SessionStart::askPortal(bool isWanted, const QString &reason)
{
    // A portal knows the identifier of a program in a sandbox.
    if (!m_portal->isIdentified() && !m_isInSandbox) {
        // The portal would make an entry without a name, and say that all is well.
        handleAnswer(isWanted, PortalAnswer::Missing, {});
        return;
    }
    auto *request = new PortalRequest(m_portal->bus(), m_portal.get());
    connect(request, &PortalRequest::finished, this,
        [this, isWanted](PortalAnswer answer, const QVariantMap &results) { handleAnswer(isWanted, answer, results); });
    QDBusMessage call = PortalConnection::callTo(
        QStringLiteral("org.freedesktop.portal.Background"), QStringLiteral("RequestBackground"));
    call << QString();
    request->send(call,
        {{QStringLiteral("autostart"), isWanted}, {QStringLiteral("commandline"), m_commandLine},
            {QStringLiteral("reason"), reason}},
        std::nullopt);
}

void SessionStart::handleAnswer(bool isWanted, PortalAnswer answer, const QVariantMap &results)
{
    PortalConnection::letGo(std::move(m_portal), this);
    const bool isDone =
        answer == PortalAnswer::Granted && results.value(QStringLiteral("autostart")).toBool() == isWanted;
    if (isDone) {
        Q_EMIT finished(isWanted, Result::Done);
    } else if (answer == PortalAnswer::Declined || m_isInSandbox) {
        Q_EMIT finished(isWanted, Result::Declined);
    } else {
        changeEntry(isWanted);
    }
}

void SessionStart::changeEntry(bool isWanted)
{
    const auto change = [isWanted, folder = m_folder, command = quoted(m_commandLine)] {
        return isWanted ? addAutostartEntry(folder, command) : removeAutostartEntry(folder);
    };
    inBackground<AutostartChange>(
        change, [this, isWanted](AutostartChange done) { Q_EMIT finished(isWanted, resultOf(done)); });
}

} // namespace tunedeck
