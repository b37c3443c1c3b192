// SPDX-License-Identifier: MIT
#include "portal/SessionStart.h"

#include "ScriptedPortal.h"
#include "support/PrivateBus.h"
#include "support/failOnWarning.h"
#include "support/registerTest.h"

#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

using namespace tunedeck;

using Way = ScriptedPortal::Way;
using Result = SessionStart::Result;

Q_DECLARE_METATYPE(ScriptedPortal::Way)

namespace {
/// A session with an autostart folder, in which a portal may run.
struct Session {
    explicit Session(bool hasPortal = true, bool isInSandbox = false)
        : start{{QStringLiteral("/a b/tunedeck"), QStringLiteral("--autostart")}, folder.path(), bus.address(), nullptr,
              isInSandbox}
    {
        if (hasPortal) {
            portal = std::make_unique<ScriptedPortal>(ScriptedPortal::connectTo(bus));
        }
    }

    [[nodiscard]] QString entry() const { return folder.filePath(QStringLiteral("org.tunedeck.Tunedeck.desktop")); }
    [[nodiscard]] QByteArray text() const
    {
        QFile file(entry());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("none");
    }

    PrivateBus bus;
    QTemporaryDir folder;
    std::unique_ptr<ScriptedPortal> portal;
    SessionStart start;
    QSignalSpy ends{&start, &SessionStart::finished};
};

Result resultOf(const QSignalSpy &ends)
{
    return ends.constLast().at(1).value<Result>();
}
} // namespace

class SessionStartTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnWarning(); }

    void thePortalIsAskedWhereThereIsOne()
    {
        Session session;
        session.start.setWanted(true, QStringLiteral("reason"));
        QTRY_COMPARE(session.ends.count(), 1);
        QCOMPARE(session.ends.constFirst().constFirst().toBool(), true);
        QCOMPARE(resultOf(session.ends), Result::Done);
        QCOMPARE(session.portal->calls(),
            (QStringList{QStringLiteral("Register org.tunedeck.Tunedeck"), QStringLiteral("RequestBackground")}));
        QVERIFY(session.portal->isOneCaller());
        const QVariantMap options = session.portal->backgroundOptions();
        QCOMPARE(options.value(QStringLiteral("autostart")).toBool(), true);
        QCOMPARE(options.value(QStringLiteral("commandline")).toStringList(),
            (QStringList{QStringLiteral("/a b/tunedeck"), QStringLiteral("--autostart")}));
        QCOMPARE(options.value(QStringLiteral("reason")).toString(), QStringLiteral("reason"));
        QCOMPARE(session.text(), QByteArray("none"));

        session.start.setWanted(false, QStringLiteral("reason"));
        QTRY_COMPARE(session.ends.count(), 2);
        QCOMPARE(resultOf(session.ends), Result::Done);
        QCOMPARE(session.portal->backgroundOptions().value(QStringLiteral("autostart")).toBool(), false);
    }

    void withoutAPortalOfThisKindThereIsAnEntryInTheFolder_data()
    {
        QTest::addColumn<bool>("hasPortal");
        QTest::addColumn<Way>("registration");
        QTest::addColumn<Way>("background");
        QTest::newRow("no portal") << false << Way::Grant << Way::Grant;
        QTest::newRow("none for this") << true << Way::Grant << Way::Unknown;
        QTest::newRow("an old one") << true << Way::Unknown << Way::Unknown;
        QTest::newRow("one that does not know who asks") << true << Way::Unknown << Way::Grant;
        QTest::newRow("one that knows no desktop entry") << true << Way::Refuse << Way::Grant;
        QTest::newRow("a wrong answer") << true << Way::Grant << Way::WrongType;
        QTest::newRow("not what was asked") << true << Way::Grant << Way::WrongResult;
    }
    void withoutAPortalOfThisKindThereIsAnEntryInTheFolder()
    {
        QFETCH(bool, hasPortal);
        QFETCH(Way, registration);
        QFETCH(Way, background);
        Session session(hasPortal);
        if (hasPortal) {
            session.portal->registration = registration;
            session.portal->background = background;
        }
        session.start.setWanted(true, {});
        QTRY_COMPARE(session.ends.count(), 1);
        QCOMPARE(resultOf(session.ends), Result::Done);
        QVERIFY(session.text().contains("\nExec=\"/a b/tunedeck\" \"--autostart\"\n"));
        session.start.setWanted(false, {});
        QTRY_COMPARE(session.ends.count(), 2);
        QCOMPARE(resultOf(session.ends), Result::Done);
        QCOMPARE(session.text(), QByteArray("none"));
    }

    void whatTheDesktopDeclinesIsNotDoneBehindItsBack()
    {
        for (const Way way : {Way::Decline, Way::Refuse}) {
            Session session;
            session.portal->background = way;
            session.start.setWanted(true, {});
            QTRY_COMPARE(session.ends.count(), 1);
            QCOMPARE(resultOf(session.ends), Result::Declined);
            QCOMPARE(session.text(), QByteArray("none"));
        }
    }

    void anEntryOfTheUserIsKeptAndNoPortalIsAsked()
    {
        Session session;
        QFile entry(session.entry());
        QVERIFY(entry.open(QIODevice::WriteOnly));
        entry.write("[Desktop Entry]\nHidden=true\n");
        entry.close();
        session.start.setWanted(true, {});
        QTRY_COMPARE(session.ends.count(), 1);
        QCOMPARE(resultOf(session.ends), Result::KeptUsersEntry);
        QCOMPARE(session.portal->calls(), QStringList());
        QCOMPARE(session.text(), QByteArray("[Desktop Entry]\nHidden=true\n"));
    }

    void aPortalThatEndsBeforeItAnswersIsNotWaitedFor()
    {
        Session session;
        session.portal->background = Way::Silent;
        session.start.setWanted(true, {});
        QTRY_COMPARE(session.portal->calls().size(), 2);
        session.portal.reset();
        QTRY_COMPARE(session.ends.count(), 1);
        QCOMPARE(resultOf(session.ends), Result::Done);
        QVERIFY(session.text().contains("\nExec=\"/a b/tunedeck\" \"--autostart\"\n"));
    }

    void inASandboxThePortalIsAskedAlthoughItRegistersNobodyThere()
    {
        Session session(true, true);
        session.portal->registration = Way::Refuse;
        session.start.setWanted(true, {});
        QTRY_COMPARE(session.ends.count(), 1);
        QCOMPARE(resultOf(session.ends), Result::Done);
        QCOMPARE(session.text(), QByteArray("none"));
    }

    void inASandboxNoEntryIsWrittenWhereThePortalDoesNothing()
    {
        for (const bool hasPortal : {true, false}) {
            Session session(hasPortal, true);
            if (hasPortal) {
                session.portal->background = Way::Unknown;
            }
            session.start.setWanted(true, {});
            QTRY_COMPARE(session.ends.count(), 1);
            QCOMPARE(resultOf(session.ends), Result::Declined);
            QCOMPARE(session.text(), QByteArray("none"));
        }
    }

    void aFolderThatCannotBeWrittenIsSaid()
    {
        const PrivateBus bus;
        SessionStart start({QStringLiteral("tunedeck")}, QStringLiteral("/proc/autostart"), bus.address());
        QSignalSpy ends(&start, &SessionStart::finished);
        start.setWanted(true, {});
        QTRY_COMPARE(ends.count(), 1);
        QCOMPARE(resultOf(ends), Result::NotWritable);
    }

    void theLastWishHolds()
    {
        Session session(false);
        session.start.setWanted(true, {});
        session.start.setWanted(false, {});
        session.start.setWanted(true, {});
        session.start.setWanted(false, {});
        QTRY_COMPARE(session.ends.count(), 1);
        QCOMPARE(session.ends.constFirst().constFirst().toBool(), false);
        QCOMPARE(session.text(), QByteArray("none"));
    }

    void aLateAnswerIsTakenAndOneToAnEarlierWishIsNot()
    {
        Session session;
        session.portal->background = Way::Silent;
        session.start.setWanted(true, {});
        QTRY_COMPARE(session.portal->calls().size(), 2);
        QCOMPARE(session.ends.count(), 0);
        session.portal->background = Way::Grant;
        session.start.setWanted(false, {});
        QTRY_COMPARE(session.ends.count(), 1);
        session.portal->answerLate();
        QVERIFY(!session.ends.wait(100));
    }
};

TUNEDECK_TEST(SessionStartTest, QCoreApplication)
#include "SessionStartTest.moc"
