// SPDX-License-Identifier: MIT
#include "platform/windowLog.h"
#include "support/registerTest.h"

#include <QTest>

namespace tunedeck {

class windowLogTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void nothingIsLoggedUnlessTheUserAsksForIt()
    {
        QVERIFY(!windowLog().isDebugEnabled());
        QLoggingCategory::setFilterRules(QStringLiteral("tunedeck.window=true"));
        QVERIFY(windowLog().isDebugEnabled());
        QLoggingCategory::setFilterRules(QString());
        QVERIFY(!windowLog().isDebugEnabled());
    }

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

TUNEDECK_TEST(tunedeck::windowLogTest, QCoreApplication)
#include "windowLogTest.moc"
