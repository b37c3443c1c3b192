// SPDX-License-Identifier: MIT
#pragma once

#include "updates/Transfer.h"
#include "updates/feed/Appcast.h"

#include <QByteArray>
#include <QFutureWatcher>
#include <QList>
#include <QObject>
#include <QTimer>

#include <chrono>
#include <optional>

namespace tunedeck {

/// Looks in a feed, of at most a megabyte, for a version above the running one. Emits exactly one of its signals, or
/// none if it is deleted before.
class UpdateCheck : public QObject {
    Q_OBJECT

public:
    UpdateCheck(const TransferRules &rules, const RunningProgram &program, QObject *parent = nullptr);

    /// Call it once.
    void start(const QUrl &feed, std::chrono::milliseconds deadline);

Q_SIGNALS:
    void upToDate();
    void found(const tunedeck::AppcastItem &update);
    /// All newer versions need a newer system. `newest` is the highest of them.
    void foundForNewerSystem(const tunedeck::AppcastItem &newest);
    void failed(tunedeck::UpdateFailure failure);

private:
    void readFeed();
    void report();
    void fail(UpdateFailure failure);

    const RunningProgram m_program;
    QByteArray m_feed;
    Transfer m_transfer; ///< appends to m_feed
    QFutureWatcher<std::optional<QList<AppcastItem>>> m_items;
    QTimer m_deadline;
};

} // namespace tunedeck
