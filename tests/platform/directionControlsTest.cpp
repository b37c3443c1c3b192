// SPDX-License-Identifier: MIT
#include "platform/directionControls.h"

#include "support/registerTest.h"

#include <QTest>

namespace tunedeck {

class directionControlsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void embeddingsOverridesAndIsolatesGo()
    {
        QCOMPARE(withoutDirectionControls(QStringLiteral("a\u202A\u202B\u202C\u202D\u202Eb\u2066\u2067\u2068\u2069c")),
            QStringLiteral("abc"));
    }

    void marksJoinersAndRightToLeftTextStay_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("marks") << QStringLiteral("a\u200E\u200Fb");
        QTest::newRow("Hebrew") << QStringLiteral("\u05E9\u05DC\u05D5\u05DD");
        QTest::newRow("joiners") << QStringLiteral("\U0001F468\u200D\U0001F469");
        QTest::newRow("neighbours") << QStringLiteral("\u2029\u202F\u2065\u206A");
        QTest::newRow("empty") << QString();
    }
    void marksJoinersAndRightToLeftTextStay()
    {
        QFETCH(const QString, text);
        QCOMPARE(withoutDirectionControls(text), text);
    }
};

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::directionControlsTest, QCoreApplication)
#include "directionControlsTest.moc"
