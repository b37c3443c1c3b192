// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QHash>
#include <QObject>
#include <QSet>
#include <QString>
#include <QStringList>
#include <QTimer>

#include <optional>

namespace tunedeck {

/// The names of players on the bus, and the connections and processes that own them. All names are given without
/// "org.mpris.MediaPlayer2.". At most 4,000 names are kept; the others are looked for when half of these are gone.
class NamesOnBus : public QObject {
    Q_OBJECT

public:
    struct Owner {
        QString connection; ///< unique bus name
        std::optional<qint64> processId; ///< none if the bus does not know
        bool cameLater = false; ///< whether the name was not there yet when the program looked
    };

    explicit NamesOnBus(const QDBusConnection &bus, QObject *parent = nullptr);

    /// Whether the names that were there at the start, and their owners, are known.
    [[nodiscard]] bool isComplete() const { return m_isComplete; }
    /// The names whose owners are known, in the order in which they came.
    [[nodiscard]] QStringList names() const;
    /// None if nobody owns the name, or its owner is not known yet.
    [[nodiscard]] std::optional<Owner> owner(const QString &name) const;
    /// Whether anybody owns the name, also if owner() does not know the process yet.
    [[nodiscard]] bool hasOwner(const QString &name) const { return m_records.contains(name); }
    /// Whether the name is owned by this connection, also if owner() does not know its process yet.
    [[nodiscard]] bool isOwnedBy(const QString &name, const QString &connection) const;
    /// Whether the connection owns several names of players.
    [[nodiscard]] bool ownsSeveral(const QString &connection) const { return m_namesOf.value(connection).size() > 1; }

Q_SIGNALS:
    /// The name has this owner() from now on. Names that were there at the start come in the order in which their
    /// owners came to the bus.
    void owned(const QString &name);
    /// The name has changed hands, or has an owner again, or has none any more: see isOwnedBy(). The process of the
    /// owner may not be known yet.
    void ownerChanged(const QString &name);
    /// isComplete() is true now, and the names that were there at the start have been announced.
    void completed();

private:
    struct Record {
        QString connection;
        bool cameLater = false;
        quint64 order = 0; ///< grows with time; 0 until the name has been announced
    };

    void list();
    void handleList(const QStringList &names);
    void noteChange(const QString &busName, const QString &connection);
    void applyChanges();
    void applyChange(const QString &name, const QString &connection);
    void askMore();
    void askForOwner(const QString &name);
    void askForProcess(const QString &connection);
    void add(const QString &name, const Record &record);
    void remove(const QString &name);
    void announce(const QString &name);
    void updateComplete();

    QDBusConnection m_bus;
    QDBusServiceWatcher m_watcher{this};
    QHash<QString, Record> m_records; ///< by name
    QHash<QString, QString> m_changes; ///< connections that own names from now on, by name; not applied yet
    QStringList m_changedNames; ///< the keys of m_changes, in the order in which they changed
    QTimer m_application{this}; ///< applies what has changed
    quint64 m_lastOrder = 0;
    QHash<QString, QSet<QString>> m_namesOf; ///< by connection
    QHash<QString, std::optional<qint64>> m_processes; ///< by connection; missing until the bus has answered
    QStringList m_unresolved; ///< names whose owner has not been asked for yet
    QStringList m_unidentified; ///< connections whose process has not been asked for yet
    int m_questions = 0; ///< calls that the bus has not answered yet
    bool m_isListed = false;
    bool m_isComplete = false;
    bool m_hasMissed = false; ///< whether there are more names than are kept
};

} // namespace tunedeck
