// SPDX-License-Identifier: MIT
#include "platform/isInSandbox.h"

#include "support/registerTest.h"

#include <QByteArray>
#include <QTest>

namespace tunedeck {

class isInSandboxTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { qunsetenv("PULSE_SERVER"); }

    void aSandboxKeepsTheSoundServerAwayUnlessItNamesOneOfItsOwn_data()
    {
        QTest::addColumn<QByteArray>("server");
        QTest::addColumn<bool>("isForbidden");
        QTest::newRow("no name") << QByteArray() << true;
        QTest::newRow("the sandbox's") << QByteArray("unix:/run/flatpak/pulse/native") << false;
        QTest::newRow("a socket of the session") << QByteArray("unix:/run/user/1000/pulse/native") << true;
        QTest::newRow("another machine of the session") << QByteArray("tcp:192.0.2.1:4713") << true;
    }

    void aSandboxKeepsTheSoundServerAwayUnlessItNamesOneOfItsOwn()
    {
        QFETCH(const QByteArray, server);
        qputenv("PULSE_SERVER", server);
        QTEST(isSoundServerForbidden(true), "isForbidden");
        QVERIFY(!isSoundServerForbidden(false));
    }
};

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::isInSandboxTest, QCoreApplication)
#include "isInSandboxTest.moc"
