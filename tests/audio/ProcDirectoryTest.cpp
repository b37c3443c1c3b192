// SPDX-License-Identifier: MIT
#include "audio/ProcDirectory.h"
#include "support/registerTest.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QSet>
#include <QTemporaryDir>
#include <QTest>

#include <unistd.h>

using namespace tunedeck;
using namespace Qt::StringLiterals;

class ProcDirectoryTest : public QObject {
    Q_OBJECT

private:
    QTemporaryDir m_folder;

    void write(const QString &path, const QByteArray &content) const
    {
        const QFileInfo target(m_folder.filePath(path));
        QVERIFY(QDir().mkpath(target.path()));
        QFile file(target.filePath());
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(content);
    }

private Q_SLOTS:
    void ourOwnProcessHasItsFacts()
    {
        const std::optional<ProcessFacts> facts = ProcDirectory().facts(::getpid());
        QVERIFY(facts);
        QCOMPARE(facts->parent, qint64(::getppid()));
        QCOMPARE(facts->name, u"audio-tests"_s);
        QCOMPARE(facts->binary, u"audio-tests"_s);
        QCOMPARE(facts->numbers.first(), qint64(::getpid()));
    }

    void aProcessThatIsGoneHasNone()
    {
        QCOMPARE(ProcDirectory(m_folder.path()).facts(77).has_value(), false);
        QCOMPARE(ProcDirectory().facts(0).has_value(), false);
        QCOMPARE(ProcDirectory().facts(-1).has_value(), false);
    }

    void theNumbersInsideAreThoseOfTheStatus()
    {
        write(u"25240/status"_s, "Name:\tflat\nPPid:\t25230\nNSpid:\t25240\t2\n");
        const std::optional<ProcessFacts> facts = ProcDirectory(m_folder.path()).facts(25'240);
        QVERIFY(facts);
        QCOMPARE(facts->numbers, (QList<qint64>{25'240, 2}));
        QCOMPARE(facts->binary, QString());
    }

    void aStatusThatIsNoneHasEmptyFacts()
    {
        write(u"5/status"_s, QByteArray(1'000'000, ':') + "\nPPid:x\nNSpid:\n");
        const std::optional<ProcessFacts> facts = ProcDirectory(m_folder.path()).facts(5);
        QVERIFY(facts);
        QCOMPARE(facts->parent, 0);
    }

    void aProcessOfAFlatpakIsFoundByItsNumberInside()
    {
        write(u"25240/status"_s, "Name:\tflat\nPPid:\t25230\nNSpid:\t25240\t2\n");
        write(u"25240/root/.flatpak-info"_s, "[Application]\nname=org.example.Flat\n");
        write(u"2/status"_s, "Name:\tkthreadd\nPPid:\t0\nNSpid:\t2\n");
        write(u"self/status"_s, "Name:\tflat\nNSpid:\t9\t3\n");
        const ProcDirectory processes(m_folder.path());
        QCOMPARE(processes.sandbox(25'240), u"org.example.Flat"_s);
        QCOMPARE(processes.numbersInside(u"org.example.Flat"_s), QSet<qint64>{2});
        QCOMPARE(processes.numbersInside(u"org.example.Other"_s), QSet<qint64>());
    }
};

TUNEDECK_TEST(ProcDirectoryTest, QCoreApplication)

#include "ProcDirectoryTest.moc"
