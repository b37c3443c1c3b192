// SPDX-License-Identifier: MIT
#pragma once

#include <QCache>
#include <QHash>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QStringList>

#include <memory>
#include <optional>

class QImage;
class QThread;

namespace tunedeck {

/// The facts of a desktop entry about its application. All is empty if no such entry is installed.
struct DesktopEntryFacts {
    QString iconName; ///< a name in the icon themes, or the path of a file
    /// At most 64 × 64 pixels; null if no picture of the application itself is installed.
    std::shared_ptr<const QImage> icon;
    bool isDBusActivatable = false; ///< it may be activated over D-Bus, by its identifier as the name on the bus
};

/// Facts of installed desktop entries. A thread reads the files, and the last 128 entries asked for are kept until the
/// program ends.
class DesktopEntries : public QObject {
    Q_OBJECT

public:
    explicit DesktopEntries(QObject *parent = nullptr);
    /// Waits up to half a second for a read that is under way, then leaves its thread running.
    ~DesktopEntries() override;

    /// `identifier` is that of a desktop entry, such as "vlc", with or without ".desktop". Returns at once: no value if
    /// the entry has not been read yet; factsKnown() follows. At most 128 entries wait to be read, others are ignored.
    [[nodiscard]] std::optional<DesktopEntryFacts> facts(const QString &identifier);

Q_SIGNALS:
    /// facts() has a value for `identifier`, which is written as it was asked for.
    void factsKnown(const QString &identifier);

private:
    void readWaiting();
    void keep(const QHash<QString, DesktopEntryFacts> &read);

    QCache<QString, DesktopEntryFacts> m_known; ///< by identifier
    QStringList m_waiting; ///< for the next thread
    QStringList m_underWay;
    QPointer<QThread> m_thread; ///< null while nothing is read
};

} // namespace tunedeck
