// SPDX-License-Identifier: MIT
#include "support/registerTest.h"

#include <QCoreApplication>
#include <QEvent>
#include <QFuture>
#include <QMetaObject>
#include <QObject>
#include <QProcess>
#include <QPromise>
#include <QRegularExpression>
#include <QTest>
#include <QThread>
#include <QThreadPool>

#include <memory>
#include <thread>
#include <utility>

using namespace Qt::StringLiterals;

namespace tunedeck {

namespace {

/// Has a value that it shows to whoever it is handed to, without a lock.
class Courier : public QObject {
    Q_OBJECT

public:
    bool event(QEvent *event) override
    {
        if (event->type() == QEvent::User) {
            ++value;
        }
        return QObject::event(event);
    }

    int value = 0;

Q_SIGNALS:
    void sent(int *value);
};

constexpr int rounds = 200;

} // namespace

/// The thread sanitizer fails this test if it takes what Qt hands over to another thread for a race.
class HandOversTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(u".*"_s));
        m_thread.start();
    }
    void cleanup()
    {
        m_thread.quit();
        m_thread.wait();
    }

    void anEventHandsOver()
    {
        auto *const courier = new Courier;
        courier->moveToThread(&m_thread);
        for (int round = 0; round < rounds; ++round) {
            QCoreApplication::postEvent(courier, new QEvent(QEvent::User));
        }
        int value = 0;
        QMetaObject::invokeMethod(
            courier,
            [&] {
                const int counted = courier->value;
                QMetaObject::invokeMethod(this, [&value, counted] { value = counted; });
            },
            Qt::QueuedConnection);
        QTRY_COMPARE(value, rounds);
        courier->deleteLater();
    }

    void aSignalHandsOver()
    {
        Courier sender;
        auto *const receiver = new Courier;
        receiver->moveToThread(&m_thread);
        int returned = 0;
        connect(&sender, &Courier::sent, receiver, [receiver](int *value) { Q_EMIT receiver->sent(&++*value); });
        connect(receiver, &Courier::sent, this, [&returned](const int *value) { returned = *value; });
        for (int round = 0; round < rounds; ++round) {
            sender.value = round;
            Q_EMIT sender.sent(&sender.value);
            QTRY_COMPARE(returned, round + 1);
        }
        receiver->deleteLater();
    }

    void aFunctionHandsOverAndBack()
    {
        auto *const receiver = new QObject;
        receiver->moveToThread(&m_thread);
        int value = 0;
        for (int round = 0; round < rounds; ++round) {
            QMetaObject::invokeMethod(receiver, [&value] { ++value; }, Qt::BlockingQueuedConnection);
            QCOMPARE(value, round + 1);
        }
        receiver->deleteLater();
    }

    void aThreadThatHasStartedAProgramHandsOver()
    {
        auto *const courier = new Courier;
        courier->value = 1;
        courier->moveToThread(&m_thread);
        QCOMPARE(QProcess::execute(u"true"_s), 0);
        int value = 0;
        QMetaObject::invokeMethod(courier, [&] { value = ++courier->value; }, Qt::BlockingQueuedConnection);
        QCOMPARE(value, 2);
        courier->deleteLater();
    }

    void aThreadPoolIsHandedItsWork()
    {
        QThreadPool pool;
        pool.setMaxThreadCount(1);
        QList<int> values(rounds, 0);
        int done = 0;
        for (int &value : values) {
            value = 1;
            pool.start([this, &value, &done] {
                ++value;
                QMetaObject::invokeMethod(this, [&done, &value] { done += value; });
            });
        }
        QTRY_COMPARE(done, 2 * rounds);
    }

    void aFutureWhoseResultNobodyTakesIsHandedOver()
    {
        for (int round = 0; round < rounds; ++round) {
            QPromise<std::shared_ptr<int>> promise;
            promise.start();
            QFuture<std::shared_ptr<int>> future = promise.future();
            std::thread([promise = std::move(promise), round]() mutable {
                promise.addResult(std::make_shared<int>(round));
                promise.finish();
            }).detach();
            future.waitForFinished();
            QVERIFY(future.isFinished());
        }
    }

private:
    QThread m_thread;
};

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::HandOversTest, QCoreApplication)
#include "HandOversTest.moc"
