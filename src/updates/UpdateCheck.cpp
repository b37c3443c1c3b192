// SPDX-License-Identifier: MIT
#include "updates/UpdateCheck.h"

#include "platform/shortened.h"
#include "updates/feed/FeedSignature.h"
#include "updates/inBackground.h"
#include "updates/updatesLog.h"

#include <QDateTime>

namespace tunedeck {

namespace {
constexpr qint64 maximumFeed = 1'048'576;
constexpr qint64 maximumSignatures = 4'096;

Transfer::Sink appendingTo(const std::shared_ptr<QByteArray> &bytes)
{
    return [bytes](QByteArrayView more) {
        *bytes += more;
        return true;
    };
}

UpdateFailure failureOfFeed(UpdateFailure failure)
{
    return failure == UpdateFailure::tooLong ? UpdateFailure::feedTooLong : failure;
}

UpdateFailure failureOfSignature(UpdateFailure failure)
{
    switch (failure) {
    case UpdateFailure::missing:
        return UpdateFailure::feedNotSigned;
    case UpdateFailure::refused:
        return UpdateFailure::signatureRefused;
    case UpdateFailure::tooLong:
        return UpdateFailure::feedWronglySigned;
    default:
        return failure;
    }
}
} // namespace

UpdateCheck::UpdateCheck(const Terms &terms, QObject *parent)
    : QObject(parent)
    , m_terms(terms)
    , m_feedTransfer(terms.transferRules, maximumFeed, appendingTo(m_feed))
    , m_signatureTransfer(terms.transferRules, maximumSignatures, appendingTo(m_signatures))
{
    connect(
        &m_feedTransfer, &Transfer::finished, this, [this] { m_signatureTransfer.start(signatureAddress(m_address)); });
    connect(&m_feedTransfer, &Transfer::failed, this, [this](UpdateFailure failure) { fail(failureOfFeed(failure)); });
    connect(&m_signatureTransfer, &Transfer::finished, this, &UpdateCheck::startReading);
    connect(&m_signatureTransfer, &Transfer::failed, this,
        [this](UpdateFailure failure) { fail(failureOfSignature(failure)); });
    connect(&m_reading, &QFutureWatcherBase::finished, this, &UpdateCheck::report);
    m_deadline.setSingleShot(true);
    connect(&m_deadline, &QTimer::timeout, this, [this] { fail(UpdateFailure::stalled); });
}

void UpdateCheck::start(const QUrl &feed)
{
    qCDebug(updatesLog) << "check" << shortened(feed.toDisplayString());
    m_address = feed;
    m_deadline.start(m_terms.deadline);
    m_feedTransfer.start(feed);
}

UpdateCheck::Reading UpdateCheck::read(
    const QByteArray &feed, const QByteArray &signatures, const QList<PublicKey> &keys, qint64 newestSerial)
{
    if (!isSignedFeed(feed, signatures, keys)) {
        return {UpdateFailure::feedWronglySigned, {}};
    }
    const std::optional<Appcast> appcast = readAppcast(feed);
    if (!appcast || appcast->serial == 0 || !appcast->expiry.isValid()) {
        return {UpdateFailure::feedNotUnderstood, {}};
    }
    if (appcast->serial < newestSerial) {
        return {UpdateFailure::feedOutdated, {}};
    }
    if (appcast->expiry <= QDateTime::currentDateTimeUtc()) {
        return {UpdateFailure::feedExpired, {}};
    }
    return {std::nullopt, *appcast};
}

void UpdateCheck::startReading()
{
    m_reading.setFuture(
        inBackground([feed = *m_feed, signatures = *m_signatures, keys = m_terms.keys,
                         newestSerial = m_terms.newestSerial] { return read(feed, signatures, keys, newestSerial); }));
}

void UpdateCheck::report()
{
    m_deadline.stop();
    const Reading reading = m_reading.result();
    if (reading.failure) {
        fail(*reading.failure);
        return;
    }
    const QList<AppcastItem> &items = reading.appcast.items;
    qCDebug(updatesLog) << "feed read:" << m_feed->size() << "bytes," << items.size() << "versions";
    Q_EMIT believed(reading.appcast.serial);
    if (const auto update = newestUpdate(items, m_terms.program)) {
        Q_EMIT found(*update);
    } else if (const auto newest = newestForNewerSystem(items, m_terms.program)) {
        Q_EMIT foundForNewerSystem(*newest);
    } else {
        Q_EMIT upToDate();
    }
}

void UpdateCheck::fail(UpdateFailure failure)
{
    m_deadline.stop();
    m_feedTransfer.disconnect(this);
    m_signatureTransfer.disconnect(this);
    m_reading.disconnect(this);
    Q_EMIT failed(failure);
}

} // namespace tunedeck
