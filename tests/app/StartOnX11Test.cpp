// SPDX-License-Identifier: MIT
#include "support/endWithParent.h"
#include "support/registerTest.h"

#include <QByteArray>
#include <QCoreApplication>
#include <QProcess>
#include <QProcessEnvironment>
#include <QString>
#include <QTemporaryDir>
#include <QTest>

#include <cstdlib>

using namespace Qt::StringLiterals;

namespace tunedeck {

namespace {
constexpr int patience = 30'000; // milliseconds
} // namespace

class StartOnX11Test : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theProgramMayBeTheOnlyClientOfTheServer_data()
    {
        QTest::addColumn<QString>("option");
        QTest::newRow("a server that starts again without clients") << u"-reset"_s;
        QTest::newRow("a server that ends without clients") << u"-terminate"_s;
    }
    void theProgramMayBeTheOnlyClientOfTheServer()
    {
        QFETCH(const QString, option);
        QProcess server;
        endWithParent(server);
        server.start(u"Xvfb"_s, {u"-displayfd"_s, u"1"_s, u"-nolisten"_s, u"tcp"_s, option});
        while (!server.canReadLine()) {
            QVERIFY(server.waitForReadyRead(patience));
        }

        const QTemporaryDir home;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.remove(u"WAYLAND_DISPLAY"_s);
        environment.insert(u"QT_QPA_PLATFORM"_s, u"xcb"_s);
        environment.insert(u"DISPLAY"_s, u':' + QString::fromUtf8(server.readLine()).trimmed());
        for (const auto &variable : {u"HOME"_s, u"XDG_CONFIG_HOME"_s, u"XDG_DATA_HOME"_s, u"XDG_RUNTIME_DIR"_s}) {
            environment.insert(variable, home.path());
        }
        QProcess program;
        endWithParent(program);
        program.setProcessEnvironment(environment);
        program.start(QStringLiteral(TUNEDECK_PROGRAM), {u"--version"_s});
        QVERIFY(program.waitForFinished(patience));
        QCOMPARE(program.readAllStandardError(), QByteArray());
        QCOMPARE(program.exitStatus(), QProcess::NormalExit);
        QCOMPARE(program.exitCode(), EXIT_SUCCESS);

        server.terminate();
        server.waitForFinished(patience);
    }
};

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::StartOnX11Test, QCoreApplication)
#include "StartOnX11Test.moc"
