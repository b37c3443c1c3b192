// SPDX-License-Identifier: MIT
#include "music/LatestWanted.h"
#include "support/registerTest.h"

#include <QCoreApplication>
#include <QRegularExpression>
#include <QTest>

using namespace tunedeck;
using namespace Qt::StringLiterals;

class LatestWantedTest : public QObject {
    Q_OBJECT

private:
    QList<double> m_sent;
    LatestWanted<double> m_wanted{[this](double value) { m_sent.append(value); }};

private Q_SLOTS:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(u".*"_s));
        m_wanted = LatestWanted<double>([this](double value) { m_sent.append(value); });
        m_sent.clear();
    }

    void theFirstValueIsSentAtOnce()
    {
        m_wanted.want(1);
        QCOMPARE(m_sent, QList<double>{1});
    }

    void theLastValueWantedMeanwhileIsSentAfterTheAnswer()
    {
        m_wanted.want(1);
        m_wanted.want(2);
        m_wanted.want(3);
        QCOMPARE(m_sent, QList<double>{1});
        QVERIFY(m_wanted.answered());
        QCOMPARE(m_sent, (QList<double>{1, 3}));
        QVERIFY(!m_wanted.answered());
        QCOMPARE(m_sent, (QList<double>{1, 3}));
    }

    void theUnansweredValueIsNotSentAgain()
    {
        m_wanted.want(1);
        m_wanted.want(2);
        m_wanted.want(1);
        QVERIFY(!m_wanted.answered());
        QCOMPARE(m_sent, QList<double>{1});
        m_wanted.want(1);
        QCOMPARE(m_sent, (QList<double>{1, 1}));
    }

    void aForgottenValueIsNotSent()
    {
        m_wanted.want(1);
        m_wanted.want(2);
        m_wanted.forget();
        QVERIFY(!m_wanted.answered());
        QCOMPARE(m_sent, QList<double>{1});
    }

    void forgettingDoesNotAnswerTheValueThatWasSent()
    {
        m_wanted.want(1);
        m_wanted.forget();
        m_wanted.want(2);
        QCOMPARE(m_sent, QList<double>{1});
        QVERIFY(m_wanted.answered());
        QCOMPARE(m_sent, (QList<double>{1, 2}));
    }
};

TUNEDECK_TEST(LatestWantedTest, QCoreApplication)
#include "LatestWantedTest.moc"
