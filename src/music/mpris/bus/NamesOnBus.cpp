// SPDX-License-Identifier: MIT
#include "music/mpris/bus/NamesOnBus.h"

#include "music/mpris/bus/BusCall.h"
#include "music/mpris/bus/BusValue.h"
#include "music/mpris/bus/MprisNames.h"

#include <QMap>

#include <algorithm>
#include <tuple>
#include <utility>

namespace tunedeck {

namespace {

constexpr qsizetype maximumNames = 4'000;
/// A bus with thousands of names is asked for them little by little.
constexpr int maximumQuestions = 16;
/// On a busy machine thousands of changes pile up before the program takes them in.
constexpr qsizetype mostChangesInATurn = 200;

/// The bus numbers its connections: ":1.9" came before ":1.10".
bool cameBefore(const QString &connection, const QString &other)
{
    return std::tuple(connection.size(), connection) < std::tuple(other.size(), other);
}

} // namespace

NamesOnBus::NamesOnBus(const QDBusConnection &bus, QObject *parent)
    : QObject(parent)
    , m_bus(bus)
{
    m_application.setSingleShot(true);
    m_application.setInterval(0);
    connect(&m_application, &QTimer::timeout, this, &NamesOnBus::applyChanges);
    // Watched first and listed second, so that no player that comes in between is missed.
    connect(&m_watcher, &QDBusServiceWatcher::serviceOwnerChanged, this,
        [this](const QString &name, const QString &, const QString &owner) { noteChange(name, owner); });
    m_watcher.setConnection(m_bus);
    m_watcher.setWatchMode(QDBusServiceWatcher::WatchForOwnerChange);
    m_watcher.addWatchedService(mpris::rootInterface + u'*');
    list();
}

QStringList NamesOnBus::names() const
{
    QMap<quint64, QString> names;
    for (const auto &[name, record] : m_records.asKeyValueRange()) {
        if (record.order > 0) {
            names.insert(record.order, name);
        }
    }
    return names.values();
}

std::optional<NamesOnBus::Owner> NamesOnBus::owner(const QString &name) const
{
    const auto record = m_records.constFind(name);
    if (record == m_records.constEnd() || !m_processes.contains(record->connection)) {
        return std::nullopt;
    }
    return Owner{.connection = record->connection,
        .processId = m_processes.value(record->connection),
        .cameLater = record->cameLater};
}

bool NamesOnBus::isOwnedBy(const QString &name, const QString &connection) const
{
    const auto record = m_records.constFind(name);
    return record != m_records.constEnd() && record->connection == connection;
}

void NamesOnBus::list()
{
    m_hasMissed = false;
    if (!m_bus.isConnected()) {
        QMetaObject::invokeMethod(this, [this] { handleList({}); }, Qt::QueuedConnection);
        return;
    }
    bus::send(m_bus, bus::daemonCall(QStringLiteral("ListNames")), this,
        [this](const bus::Answer &answer) { handleList(answer.argument(0).toStringList()); });
}

void NamesOnBus::handleList(const QStringList &names)
{
    m_isListed = true;
    for (const QString &busName : names) {
        const QString name = busName.mid(mpris::namePrefix.size());
        if (busName.startsWith(mpris::namePrefix) && !m_records.contains(name)) {
            m_unresolved.append(name);
        }
    }
    m_hasMissed |= m_unresolved.size() > maximumNames;
    m_unresolved = m_unresolved.mid(0, maximumNames);
    askMore();
}

void NamesOnBus::noteChange(const QString &busName, const QString &connection)
{
    if (!busName.startsWith(mpris::namePrefix)) {
        return;
    }
    // A name may change hands hundreds of times within a turn of the event loop: only the last owner counts.
    if (m_changes.isEmpty()) {
        m_application.start();
    }
    const QString name = busName.mid(mpris::namePrefix.size());
    if (!m_changes.contains(name)) {
        m_changedNames.append(name);
    }
    m_changes.insert(name, connection);
}

void NamesOnBus::applyChanges()
{
    const QStringList names = m_changedNames.mid(0, mostChangesInATurn);
    m_changedNames.remove(0, names.size());
    for (const QString &name : names) {
        applyChange(name, m_changes.take(name));
    }
    if (!m_changes.isEmpty()) {
        m_application.start();
    }
}

void NamesOnBus::applyChange(const QString &name, const QString &connection)
{
    if (isOwnedBy(name, connection) || (connection.isEmpty() && !m_records.contains(name))) {
        return;
    }
    remove(name);
    if (!connection.isEmpty()) {
        add(name, {.connection = connection, .cameLater = true});
    }
    Q_EMIT ownerChanged(name);
    askMore();
    if (m_hasMissed && m_records.size() < maximumNames / 2) {
        list();
    }
}

void NamesOnBus::askMore()
{
    while (m_questions < maximumQuestions && !m_unresolved.isEmpty()) {
        askForOwner(m_unresolved.takeFirst());
    }
    while (m_questions < maximumQuestions && !m_unidentified.isEmpty()) {
        askForProcess(m_unidentified.takeFirst());
    }
    updateComplete();
}

void NamesOnBus::askForOwner(const QString &name)
{
    ++m_questions;
    const auto handleOwner = [this, name](const bus::Answer &answer) {
        --m_questions;
        // A name that has changed hands since then has been announced.
        if (!answer.isError() && !m_records.contains(name)) {
            add(name, {.connection = answer.argument(0).toString(), .cameLater = m_isComplete});
        }
        askMore();
    };
    bus::send(m_bus, bus::daemonCall(QStringLiteral("GetNameOwner"), {mpris::namePrefix + name}), this, handleOwner);
}

void NamesOnBus::askForProcess(const QString &connection)
{
    ++m_questions;
    const auto handleProcess = [this, connection](const bus::Answer &answer) {
        --m_questions;
        if (m_namesOf.contains(connection)) {
            const std::optional<double> number = bus::number(answer.argument(0));
            m_processes.insert(connection, number && !answer.isError() ? std::optional(qint64(*number)) : std::nullopt);
            const QSet<QString> names = m_isComplete ? m_namesOf.value(connection) : QSet<QString>();
            for (const QString &name : names) {
                announce(name);
            }
        }
        askMore();
    };
    bus::send(m_bus, bus::daemonCall(QStringLiteral("GetConnectionUnixProcessID"), {connection}), this, handleProcess);
}

void NamesOnBus::add(const QString &name, const Record &record)
{
    if (m_records.size() >= maximumNames) {
        m_hasMissed = true;
        return;
    }
    m_records.insert(name, record);
    QSet<QString> &names = m_namesOf[record.connection];
    names.insert(name);
    if (names.size() == 1) {
        m_unidentified.append(record.connection);
    } else if (m_isComplete && m_processes.contains(record.connection)) {
        // First ownerChanged() is emitted.
        QMetaObject::invokeMethod(this, [this, name] { announce(name); }, Qt::QueuedConnection);
    }
}

void NamesOnBus::remove(const QString &name)
{
    if (!m_records.contains(name)) {
        return;
    }
    const QString connection = m_records.take(name).connection;
    QSet<QString> &names = m_namesOf[connection];
    names.remove(name);
    if (names.isEmpty()) {
        m_namesOf.remove(connection);
        m_processes.remove(connection);
        m_unidentified.removeOne(connection);
    }
}

void NamesOnBus::announce(const QString &name)
{
    const auto record = m_records.find(name);
    if (record != m_records.end() && record->order == 0 && m_processes.contains(record->connection)) {
        record->order = ++m_lastOrder;
        Q_EMIT owned(name);
    }
}

void NamesOnBus::updateComplete()
{
    if (m_isComplete || !m_isListed || m_questions > 0) {
        return;
    }
    m_isComplete = true;
    QStringList names = m_records.keys();
    std::ranges::sort(names, [this](const QString &name, const QString &other) {
        const QString &connection = m_records[name].connection;
        const QString &otherConnection = m_records[other].connection;
        return connection == otherConnection ? name < other : cameBefore(connection, otherConnection);
    });
    for (const QString &name : std::as_const(names)) {
        announce(name);
    }
    Q_EMIT completed();
}

} // namespace tunedeck
