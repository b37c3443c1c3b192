// SPDX-License-Identifier: MIT
#include "above/KeptAbove.h"

#include "platform/windowLog.h"

#include <utility>

namespace tunedeck {

KeptAbove::KeptAbove(bool canWindowAsk, QObject *parent)
    : QObject(parent)
    , m_canWindowAsk(canWindowAsk)
{
    m_patience.setObjectName(QStringLiteral("patience"));
    m_patience.setSingleShot(true);
    m_patience.setInterval(patience);
    connect(&m_patience, &QTimer::timeout, this, &KeptAbove::giveUp);
    m_retry.setObjectName(QStringLiteral("retry"));
    m_retry.setSingleShot(true);
    m_retry.setInterval(retryInterval);
    connect(&m_retry, &QTimer::timeout, this, &KeptAbove::sendQuestion);
    m_secondTry.setObjectName(QStringLiteral("secondTry"));
    m_secondTry.setSingleShot(true);
    m_secondTry.setInterval(secondTryDelay);
    connect(&m_secondTry, &QTimer::timeout, this, &KeptAbove::tryAgain);
}

void KeptAbove::setRoad(std::unique_ptr<AboveRoad> road)
{
    m_road = std::move(road);
    if (m_road) {
        connect(m_road.get(), &AboveRoad::answered, this, &KeptAbove::handle);
    }
}

void KeptAbove::setWanted(bool isWanted)
{
    m_isWanted = isWanted;
    m_isWishNew = isWanted;
    m_hasTriedTwice = false;
    if (isQuestionDue()) {
        ask();
    } else {
        m_isRefused = false;
    }
    Q_EMIT wayChanged();
}

void KeptAbove::whenAnswered(std::function<void(bool isRefused)> done)
{
    if (!m_patience.isActive()) {
        done(m_isRefused);
    } else {
        (m_asksAgain ? m_waitingForNext : m_waiting).append(std::move(done));
    }
}

/// A window that is not on the screen is asked for when it appears. A minimised one may still be kept above.
bool KeptAbove::isQuestionDue() const
{
    return m_isWanted ? m_isSeen : m_mayBeAbove;
}

void KeptAbove::setSeen(bool isSeen)
{
    m_isSeen = isSeen;
    m_hasTriedTwice = false;
    if (isSeen && m_isWanted) {
        ask();
    }
}

AboveWay KeptAbove::way() const
{
    if (m_canWindowAsk) {
        return AboveWay::Window;
    }
    if (m_road && !m_isRefused) {
        return m_road->way();
    }
    if (m_canRestart && !m_isWanted) {
        return AboveWay::Restart;
    }
    if (m_road) {
        return AboveWay::Refused;
    }
    return m_isInSandbox ? AboveWay::Sandbox : AboveWay::None;
}

void KeptAbove::ask()
{
    if (!m_road) {
        return;
    }
    if (m_patience.isActive()) {
        m_asksAgain = true;
        return;
    }
    m_isAskedFor = m_isWanted;
    m_mayBeAbove |= m_isWanted;
    m_secondTry.stop();
    m_patience.start();
    sendQuestion();
}

void KeptAbove::sendQuestion()
{
    qCDebug(windowLog) << "asks the compositor to keep the window above:" << m_isAskedFor;
    m_road->ask(m_isAskedFor);
}

void KeptAbove::handle(AboveAnswer answer)
{
    const bool awaitsWindow = m_isAskedFor && m_isSeen && !m_asksAgain;
    if (answer == AboveAnswer::NoWindow && awaitsWindow) {
        m_retry.start();
    } else {
        const bool isForWish = isAnswerForWish();
        finish(answer == AboveAnswer::Refused);
        if (m_isRefused && isForWish) {
            reportRefusal();
        }
    }
}

void KeptAbove::giveUp()
{
    m_retry.stop();
    m_road->abandon();
    m_waiting += std::exchange(m_waitingForNext, {});
    const bool isForWish = isAnswerForWish();
    finish(true);
    if (!m_hasTriedTwice && !m_patience.isActive()) {
        m_secondTry.start();
    } else if (isForWish) {
        reportRefusal();
    }
}

/// The wish may have changed since the question that is answered.
bool KeptAbove::isAnswerForWish() const
{
    return m_isAskedFor && m_isWanted && !m_asksAgain;
}

void KeptAbove::reportRefusal()
{
    if (std::exchange(m_isWishNew, false)) {
        Q_EMIT refused();
    }
}

void KeptAbove::tryAgain()
{
    if (isQuestionDue()) {
        m_hasTriedTwice = true;
        ask();
    }
}

void KeptAbove::finish(bool isRefused)
{
    qCDebug(windowLog) << "the compositor" << (isRefused ? "refuses" : "does not refuse");
    const QList<std::function<void(bool)>> waiting = std::exchange(m_waiting, std::exchange(m_waitingForNext, {}));
    m_patience.stop();
    m_isRefused = isRefused;
    m_mayBeAbove = m_isAskedFor || isRefused;
    if (std::exchange(m_asksAgain, false)) {
        ask();
    }
    for (const std::function<void(bool)> &done : waiting) {
        done(isRefused);
    }
    Q_EMIT wayChanged();
}

} // namespace tunedeck
