// SPDX-License-Identifier: MIT
#include "platform/shortened.h"
#include "support/registerTest.h"

#include <QTest>

namespace tunedeck {

class shortenedTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aLineHoldsTwoHundredCharactersOfATextAtMost()
    {
        const QString longest(200, u'x');
        QCOMPARE(shortened(QString()), QString());
        QCOMPARE(shortened(longest), longest);
        QCOMPARE(shortened(longest + u'y'), QString(199, u'x') + u'…');
        QCOMPARE(shortened(QString(1'000'000, u'x')).size(), 200);
    }
};

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::shortenedTest, QCoreApplication)
#include "shortenedTest.moc"
