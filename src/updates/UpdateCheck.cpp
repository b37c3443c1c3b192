// SPDX-License-Identifier: MIT
#include "updates/UpdateCheck.h"

#include "platform/shortened.h"
#include "updates/inBackground.h"
#include "updates/updatesLog.h"

namespace tunedeck {

namespace {
constexpr qint64 maximumFeed = 1'048'576;
} // namespace

UpdateCheck::UpdateCheck(const TransferRules &rules, const RunningProgram &program, QObject *parent)
    : QObject(parent)
    , m_program(program)
    , m_transfer(rules, maximumFeed, [this](QByteArrayView bytes) {
        m_feed += bytes;
        return true;
    })
{
    connect(&m_transfer, &Transfer::finished, this, &UpdateCheck::readFeed);
    connect(&m_transfer, &Transfer::failed, this, [this](UpdateFailure failure) {
        fail(failure == UpdateFailure::tooLong ? UpdateFailure::feedTooLong : failure);
    });
    m_deadline.setSingleShot(true);
    connect(&m_deadline, &QTimer::timeout, this, [this] { fail(UpdateFailure::stalled); });
    connect(&m_items, &QFutureWatcherBase::finished, this, &UpdateCheck::report);
}

void UpdateCheck::start(const QUrl &feed, std::chrono::milliseconds deadline)
{
    m_deadline.start(deadline);
    qCDebug(updatesLog) << "check" << shortened(feed.toDisplayString());
    m_transfer.start(feed);
}

void UpdateCheck::readFeed()
{
    m_items.setFuture(inBackground([feed = m_feed] { return readAppcast(feed); }));
}

void UpdateCheck::report()
{
    m_deadline.stop();
    const std::optional<QList<AppcastItem>> items = m_items.result();
    if (!items) {
        fail(UpdateFailure::feedNotUnderstood);
        return;
    }
    qCDebug(updatesLog) << "feed read:" << m_feed.size() << "bytes," << items->size() << "versions";
    if (const auto update = newestUpdate(*items, m_program)) {
        Q_EMIT found(*update);
    } else if (const auto newest = newestForNewerSystem(*items, m_program)) {
        Q_EMIT foundForNewerSystem(*newest);
    } else {
        Q_EMIT upToDate();
    }
}

void UpdateCheck::fail(UpdateFailure failure)
{
    m_deadline.stop();
    m_transfer.disconnect(this);
    m_items.disconnect(this);
    Q_EMIT failed(failure);
}

} // namespace tunedeck
