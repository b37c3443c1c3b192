// SPDX-License-Identifier: MIT
#pragma once

#include "updates/Appcast.h"
#include "updates/Transfer.h"

#include <QByteArray>
#include <QFutureWatcher>
#include <QList>
#include <QObject>

#include <optional>

namespace tunedeck {

/// Asks a feed, of a megabyte at most, for a version above the one that runs. Ends with exactly one of its signals;
/// deleted before, silently.
class UpdateCheck : public QObject {
    Q_OBJECT

public:
    UpdateCheck(const TransferRules &rules, const RunningProgram &program, QObject *parent = nullptr);

    /// May be called once.
    void start(const QUrl &feed);

Q_SIGNALS:
    void upToDate();
    void found(const tunedeck::AppcastItem &update);
    /// There are newer versions, but all of them need a newer system. `newest` is the highest.
    void foundForNewerSystem(const tunedeck::AppcastItem &newest);
    void failed(tunedeck::UpdateFailure failure);

private:
    void readFeed();
    void answer();

    const RunningProgram m_program;
    Transfer m_transfer;
    QByteArray m_feed;
    QFutureWatcher<std::optional<QList<AppcastItem>>> m_items;
};

} // namespace tunedeck
