// SPDX-License-Identifier: MIT
#include "platform/FatalError.h"

#include "support/abortedRun.h"
#include "support/registerTest.h"

#include <QRegularExpression>
#include <QTest>

namespace tunedeck {

class FatalErrorTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void abortsAndSaysWhatAndWhere()
    {
        const auto lastWords = lastWordsOfAbortedRun(QStringLiteral("missing picture"));
        QVERIFY(lastWords);
        QVERIFY2(lastWords->contains(QStringLiteral("FatalErrorTest.cpp:")), qPrintable(*lastWords));
        QVERIFY2(lastWords->contains(QStringLiteral(": the picture \"knob\" is missing\n")), qPrintable(*lastWords));
    }
};

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::FatalErrorTest, QCoreApplication,
    [](const QString &) { tunedeck::fatalError("the picture \"knob\" is missing"); })

#include "FatalErrorTest.moc"
