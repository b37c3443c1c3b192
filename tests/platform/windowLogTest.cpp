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
};

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::windowLogTest, QCoreApplication)
#include "windowLogTest.moc"
