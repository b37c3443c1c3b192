// SPDX-License-Identifier: MIT
#include "platform/UserDefaults.h"
#include "support/registerTest.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QLockFile>
#include <QLoggingCategory>
#include <QRegularExpression>
#include <QScopeGuard>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <array>
#include <csignal>
#include <memory>

#include <sys/resource.h>
#include <sys/stat.h>

namespace tunedeck {

namespace {
const QString key = QStringLiteral("RemainingTimeEnabled");
const QString otherKey = QStringLiteral("AppearanceClassic");

const QVariantHash launchDefaults = {
    {SettingsKey::keepMainWindowAboveAllOtherWindows, false},
    {SettingsKey::remainingTimeEnabled, true},
    {SettingsKey::appearanceClassic, true},
    {SettingsKey::appearanceUpdatesDockIcon, true},
    {SettingsKey::volumeButtonsHidden, false},
};

QByteArray contents(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void writeInPlace(const QString &path, const QByteArray &text)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    QCOMPARE(file.write(text), text.size());
}

/// Replaces a file, as editors do.
void replace(const QString &path, const QByteArray &text)
{
    writeInPlace(path + QStringLiteral("~"), text);
    QFile::remove(path);
    QVERIFY(QFile::rename(path + QStringLiteral("~"), path));
}

/// While it exists, this process can create files but write nothing into them.
class FullDisk {
public:
    FullDisk()
    {
        ::getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit nothing{0, m_before.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &nothing);
    }
    ~FullDisk()
    {
        ::setrlimit(RLIMIT_FSIZE, &m_before);
        std::signal(SIGXFSZ, m_handler);
    }
    FullDisk(const FullDisk &) = delete;
    FullDisk &operator=(const FullDisk &) = delete;

private:
    /// The kernel's signal would end the process.
    void (*const m_handler)(int) = std::signal(SIGXFSZ, SIG_IGN);
    rlimit m_before{};
};

QStringList settingsLines;

void recordSettingsLine(QtMsgType, const QMessageLogContext &context, const QString &line)
{
    if (QLatin1String(context.category) == QLatin1String("tunedeck.settings")) {
        settingsLines.append(line);
    }
}
} // namespace

class UserDefaultsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
        m_home = std::make_unique<QTemporaryDir>();
        QVERIFY(m_home->isValid());
        QVERIFY(QDir(m_home->path()).mkdir(QStringLiteral("tunedeck")));
        m_path = m_home->filePath(QStringLiteral("tunedeck/tunedeck.conf"));
        m_brokenPath = m_path + QStringLiteral(".broken");
    }

    void anEmptyStoreAnswersTheRegisteredDefaults()
    {
        UserDefaults defaults(m_path);
        defaults.registerDefaults(launchDefaults);
        QCOMPARE(defaults.boolForKey(QStringLiteral("KeepMainWindowAboveAllOtherWindows")), false);
        QCOMPARE(defaults.boolForKey(QStringLiteral("RemainingTimeEnabled")), true);
        QCOMPARE(defaults.boolForKey(QStringLiteral("AppearanceClassic")), true);
        QCOMPARE(defaults.boolForKey(QStringLiteral("AppearanceUpdatesDockIcon")), true);
        QCOMPARE(defaults.boolForKey(QStringLiteral("VolumeButtonsHidden")), false);
    }

    void anAbsentKeyReadsAsTheNeutralValue()
    {
        const UserDefaults defaults(m_path);
        QCOMPARE(defaults.boolForKey(key), false);
        QCOMPARE(defaults.integerForKey(key), 0);
        QCOMPARE(defaults.stringForKey(key), QString());
        QCOMPARE(defaults.stringListForKey(key), QStringList());
    }

    void registeringAddsToWhatWasRegistered()
    {
        UserDefaults defaults(m_path);
        defaults.registerDefaults({{key, true}});
        defaults.registerDefaults({{otherKey, true}});
        QVERIFY(defaults.boolForKey(key));
        QVERIFY(defaults.boolForKey(otherKey));
    }

    void registeredDefaultsAreNeverWritten()
    {
        {
            UserDefaults defaults(m_path);
            defaults.registerDefaults(launchDefaults);
        }
        QVERIFY(!QFile::exists(m_path));
        {
            UserDefaults defaults(m_path);
            defaults.registerDefaults(launchDefaults);
            defaults.setBool(key, false);
        }
        QCOMPARE(contents(m_path), QByteArray("[General]\nRemainingTimeEnabled=false\n"));
    }

    void theUsersValueOutlivesTheObject()
    {
        {
            UserDefaults defaults(m_path);
            defaults.setBool(key, false);
            defaults.setValue(otherKey, true);
            defaults.setValue(QStringLiteral("Name"), QStringLiteral("a, \"b\" = ü; [c]\n"));
            defaults.setValue(QStringLiteral("Count"), -12);
        }
        UserDefaults defaults(m_path);
        defaults.registerDefaults({{key, true}});
        QCOMPARE(defaults.boolForKey(key), false);
        QCOMPARE(defaults.boolForKey(otherKey), true);
        QCOMPARE(defaults.stringForKey(QStringLiteral("Name")), QStringLiteral("a, \"b\" = ü; [c]\n"));
        QCOMPARE(defaults.integerForKey(QStringLiteral("Count")), -12);
    }

    void aWriteReachesTheFileWhileTheObjectLives()
    {
        UserDefaults defaults(m_path);
        defaults.setBool(key, true);
        QTRY_COMPARE(contents(m_path), QByteArray("[General]\nRemainingTimeEnabled=true\n"));
        defaults.setBool(key, false);
        QTRY_COMPARE(contents(m_path), QByteArray("[General]\nRemainingTimeEnabled=false\n"));
        QCOMPARE(QDir(QFileInfo(m_path).path()).entryList(QDir::Files), {QStringLiteral("tunedeck.conf")});
    }

    void theStandardStoreLiesInTheConfigurationFolder()
    {
        qputenv("XDG_CONFIG_HOME", m_home->filePath(QStringLiteral("fresh")).toUtf8());
        {
            UserDefaults defaults;
            defaults.setBool(key, true);
        }
        qunsetenv("XDG_CONFIG_HOME");
        QCOMPARE(contents(m_home->filePath(QStringLiteral("fresh/tunedeck/tunedeck.conf"))),
            QByteArray("[General]\nRemainingTimeEnabled=true\n"));
    }

    void aBooleanOfTheStandardStoreIsReadWithoutAnObject()
    {
        qputenv("XDG_CONFIG_HOME", m_home->path().toUtf8());
        QVERIFY(!UserDefaults::storedBool(key));
        writeInPlace(m_path, "[General]\nRemainingTimeEnabled=true\nAppearanceClassic=maybe\n");
        const bool read = UserDefaults::storedBool(key);
        const bool unreadable = UserDefaults::storedBool(otherKey);
        writeInPlace(m_path, "these are no settings\n");
        const bool broken = UserDefaults::storedBool(key);
        qunsetenv("XDG_CONFIG_HOME");
        QVERIFY(read);
        QVERIFY(!unreadable);
        QVERIFY(!broken);
        QCOMPARE(contents(m_path), QByteArray("these are no settings\n"));
        QVERIFY(!QFile::exists(m_brokenPath));
    }

    void readsBooleansInEveryUsualForm_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<bool>("registered");
        QTest::addColumn<bool>("expected");
        for (const char *text : {"true", "TRUE", "True", "1", "yes", "Yes", "2", "-1"}) {
            QTest::newRow(text) << QByteArray(text) << false << true;
        }
        for (const char *text : {"false", "FALSE", "0", "no", "NO", "00"}) {
            QTest::newRow(text) << QByteArray(text) << true << false;
        }
        for (const char *text : {"maybe", "", "1.5", "true, false", "\"\"", "@Invalid()", "@Point(1 2)", "truetrue",
                 "99999999999999999999", "@Variant(\\0\\0)"}) {
            QTest::addRow("%s, default true", text) << QByteArray(text) << true << true;
            QTest::addRow("%s, default false", text) << QByteArray(text) << false << false;
        }
    }

    void readsBooleansInEveryUsualForm()
    {
        QFETCH(const QByteArray, text);
        QFETCH(const bool, registered);
        writeInPlace(m_path, "[General]\nRemainingTimeEnabled=" + text + "\n");
        UserDefaults defaults(m_path);
        defaults.registerDefaults({{key, registered}});
        QTEST(defaults.boolForKey(key), "expected");
    }

    void readsIntegers_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<qlonglong>("expected");
        QTest::newRow("graphite") << QByteArray("-1") << -1LL;
        QTest::newRow("largest") << QByteArray("9223372036854775807") << 9223372036854775807LL;
        QTest::newRow("too large") << QByteArray("9223372036854775808") << 7LL;
        QTest::newRow("word") << QByteArray("grey") << 7LL;
        QTest::newRow("fraction") << QByteArray("1.5") << 7LL;
        QTest::newRow("list") << QByteArray("1, 2") << 7LL;
    }

    void readsIntegers()
    {
        QFETCH(const QByteArray, text);
        writeInPlace(m_path, "[General]\nCount=" + text + "\n");
        UserDefaults defaults(m_path);
        defaults.registerDefaults({{QStringLiteral("Count"), 7}});
        QTEST(defaults.integerForKey(QStringLiteral("Count")), "expected");
    }

    void cutsStringsAtAThousandCharacters()
    {
        writeInPlace(m_path, "[General]\nName=" + QByteArray(1001, 'x') + "\nList=a, b\n");
        UserDefaults defaults(m_path);
        defaults.registerDefaults({{QStringLiteral("List"), QStringLiteral("default")}});
        QCOMPARE(defaults.stringForKey(QStringLiteral("Name")), QString(1000, u'x'));
        QCOMPARE(defaults.stringForKey(QStringLiteral("List")), QStringLiteral("default"));
    }

    void textsOutliveTheObject_data()
    {
        QTest::addColumn<QStringList>("texts");
        QTest::newRow("none") << QStringList();
        QTest::newRow("one") << QStringList{QStringLiteral("a, b")};
        QTest::newRow("several") << QStringList{QStringLiteral("a, \"b\""), QString(), QStringLiteral("ü\n")};
    }
    void textsOutliveTheObject()
    {
        QFETCH(const QStringList, texts);
        {
            UserDefaults defaults(m_path);
            defaults.setValue(QStringLiteral("List"), QStringList{QStringLiteral("former"), QStringLiteral("ones")});
            defaults.setValue(QStringLiteral("List"), texts);
            QCOMPARE(defaults.stringListForKey(QStringLiteral("List")), texts);
        }
        const UserDefaults defaults(m_path);
        QCOMPARE(defaults.stringListForKey(QStringLiteral("List")), texts);
    }

    void textsAreCut()
    {
        QByteArray thousandAndOne("[General]\nList=");
        for (int i = 0; i < 1000; ++i) {
            thousandAndOne += "a, ";
        }
        writeInPlace(m_path, thousandAndOne + "b\nLong=" + QByteArray(1001, 'x') + ", y\nName=x\n");
        const UserDefaults defaults(m_path);
        QCOMPARE(defaults.stringListForKey(QStringLiteral("List")).size(), 1000);
        QCOMPARE(defaults.stringListForKey(QStringLiteral("List")).last(), QStringLiteral("a"));
        QCOMPARE(defaults.stringListForKey(QStringLiteral("Long")).first(), QString(1000, u'x'));
    }

    void aWriteIsAnnouncedAtOnceAndOnce_data()
    {
        QTest::addColumn<bool>("before");
        QTest::addColumn<bool>("written");
        QTest::newRow("changed") << true << false;
        QTest::newRow("equal") << true << true;
    }

    void aWriteIsAnnouncedAtOnceAndOnce()
    {
        QFETCH(const bool, before);
        QFETCH(const bool, written);
        writeInPlace(m_path, before ? "[General]\nRemainingTimeEnabled=true\n" : "");
        UserDefaults defaults(m_path);
        const QSignalSpy spy(&defaults, &UserDefaults::valueChanged);
        defaults.setBool(key, written);
        QCOMPARE(spy.count(), 1);
        QCOMPARE(spy.at(0).at(0).toString(), key);
        defaults.setValue(key, written);
        QCOMPARE(spy.count(), 2);
        QCOMPARE(defaults.boolForKey(key), written);

        // When the change from outside is reported, the watch has reported the writes of this process too.
        QTRY_COMPARE(contents(m_path).contains(written ? "true" : "false"), true);
        writeInPlace(m_path, contents(m_path) + "AppearanceClassic=true\n");
        QTRY_VERIFY(defaults.boolForKey(otherKey));
        QCOMPARE(spy.count(), 3);
        QCOMPARE(spy.at(2).at(0).toString(), otherKey);
    }

    void togglingTwiceBringsTheValueBack()
    {
        UserDefaults defaults(m_path);
        defaults.registerDefaults(launchDefaults);
        for (const bool expected : {true, false}) {
            defaults.setValue(SettingsKey::keepMainWindowAboveAllOtherWindows,
                !defaults.boolForKey(SettingsKey::keepMainWindowAboveAllOtherWindows));
            QCOMPARE(defaults.boolForKey(SettingsKey::keepMainWindowAboveAllOtherWindows), expected);
        }
    }

    void aBindingIsSetAtOnceAndOnEveryChangeOfItsKey()
    {
        writeInPlace(m_path, "[General]\nRemainingTimeEnabled=true\n");
        UserDefaults defaults(m_path);
        QList<bool> values;
        auto context = std::make_unique<QObject>();
        defaults.bind(key, context.get(), [&values](bool value) { values.append(value); });
        QCOMPARE(values, QList<bool>({true}));
        defaults.setBool(key, false);
        defaults.setValue(key, false);
        defaults.setBool(otherKey, true);
        QCOMPARE(values, QList<bool>({true, false, false}));
        context.reset();
        defaults.setBool(key, true);
        QCOMPARE(values, QList<bool>({true, false, false}));
    }

    void theDockIconSettingIsAnObservableProperty()
    {
        UserDefaults defaults(m_path);
        defaults.registerDefaults(launchDefaults);
        const QSignalSpy spy(&defaults, &UserDefaults::appearanceUpdatesDockIconChanged);
        QCOMPARE(defaults.property("AppearanceUpdatesDockIcon"), QVariant(true));
        QVERIFY(defaults.setProperty("AppearanceUpdatesDockIcon", false));
        QCOMPARE(spy.count(), 1);
        QCOMPARE(defaults.boolForKey(QStringLiteral("AppearanceUpdatesDockIcon")), false);
        defaults.setBool(SettingsKey::appearanceUpdatesDockIcon, true);
        QCOMPARE(spy.count(), 2);
        QCOMPARE(defaults.appearanceUpdatesDockIcon(), true);
        defaults.setBool(otherKey, true);
        QCOMPARE(spy.count(), 2);
        QTRY_VERIFY(QFile::exists(m_path));
        writeInPlace(m_path, "[General]\nAppearanceUpdatesDockIcon=no\n");
        QTRY_COMPARE(spy.count(), 3);
        QCOMPARE(defaults.appearanceUpdatesDockIcon(), false);
    }

    void theUsersAccentColorWinsOverTheSystems()
    {
        UserDefaults defaults(m_path);
        const QString accent = QStringLiteral("AppleAccentColor");
        const QSignalSpy spy(&defaults, &UserDefaults::valueChanged);
        QCOMPARE(defaults.integerForKey(accent), 0);
        defaults.setSystemValue(accent, -1);
        QCOMPARE(defaults.integerForKey(accent), -1);
        QCOMPARE(spy.count(), 1);
        defaults.setSystemValue(accent, -1);
        QCOMPARE(spy.count(), 1);
        defaults.setValue(accent, 4);
        QCOMPARE(defaults.integerForKey(accent), 4);
        QCOMPARE(spy.count(), 2);
        defaults.setSystemValue(accent, QVariant());
        QCOMPARE(defaults.integerForKey(accent), 4);
        QCOMPARE(spy.count(), 2);
    }

    void theSystemsValueWinsOverTheRegisteredOneAndIsNeverWritten()
    {
        {
            UserDefaults defaults(m_path);
            const QString accent = QStringLiteral("AppleAccentColor");
            defaults.registerDefaults({{accent, 2}});
            defaults.setSystemValue(accent, -1);
            QCOMPARE(defaults.integerForKey(accent), -1);
            defaults.setSystemValue(accent, QVariant());
            QCOMPARE(defaults.integerForKey(accent), 2);
            defaults.setSystemValue(accent, -1);
        }
        QVERIFY(!QFile::exists(m_path));
    }

    void followsChangesFromOutside_data()
    {
        QTest::addColumn<bool>("exists");
        QTest::addColumn<bool>("inPlace");
        QTest::newRow("written in place") << true << true;
        QTest::newRow("replaced") << true << false;
        QTest::newRow("created") << false << true;
    }

    void followsChangesFromOutside()
    {
        QFETCH(const bool, exists);
        QFETCH(const bool, inPlace);
        if (exists) {
            writeInPlace(m_path, "[General]\nRemainingTimeEnabled=true\nOther=1\n");
        }
        UserDefaults defaults(m_path);
        defaults.registerDefaults({{QStringLiteral("Other"), 1}});
        const QSignalSpy spy(&defaults, &UserDefaults::valueChanged);
        QList<bool> bound;
        defaults.bind(key, this, [&bound](bool value) { bound.append(value); });
        const auto write = inPlace ? writeInPlace : replace;

        write(m_path, "[General]\nRemainingTimeEnabled=0\nOther=1\n");
        QTRY_COMPARE(spy.count(), 1);
        QCOMPARE(spy.at(0).at(0).toString(), key);
        QCOMPARE(defaults.boolForKey(key), false);

        // The watch must follow a file that was replaced.
        write(m_path, "[General]\nRemainingTimeEnabled=yes\nOther=1\n");
        QTRY_COMPARE(spy.count(), 2);
        QCOMPARE(bound, QList<bool>({exists, false, true}));
    }

    void aFileThatIsRemovedBringsTheDefaultsBack()
    {
        writeInPlace(m_path, "[General]\nRemainingTimeEnabled=false\nAppearanceClassic=true\n");
        UserDefaults defaults(m_path);
        defaults.registerDefaults(launchDefaults);
        const QSignalSpy spy(&defaults, &UserDefaults::valueChanged);
        QVERIFY(QFile::remove(m_path));
        QTRY_COMPARE(defaults.boolForKey(key), true);
        // AppearanceClassic reads as before.
        QCOMPARE(spy.count(), 1);
    }

    void aFolderThatIsRemovedIsMadeAgain()
    {
        UserDefaults defaults(m_path);
        QVERIFY(QDir(QFileInfo(m_path).path()).removeRecursively());
        defaults.setBool(key, true);
        QTRY_VERIFY(QFile::exists(m_path));
        writeInPlace(m_path, "[General]\nRemainingTimeEnabled=false\n");
        QTRY_COMPARE(defaults.boolForKey(key), false);
    }

    void whatOthersWroteIsKept()
    {
        UserDefaults defaults(m_path);
        const QSignalSpy spy(&defaults, &UserDefaults::valueChanged);
        writeInPlace(m_path, "[General]\nAppearanceClassic=true\nRemainingTimeEnabled=true\n\n[Window]\nwidth=5\n");
        defaults.setBool(key, false);
        QTRY_COMPARE(contents(m_path),
            QByteArray("[General]\nAppearanceClassic=true\nRemainingTimeEnabled=false\n\n[Window]\nwidth=5\n"));
        QStringList told;
        for (const auto &arguments : spy) {
            told.append(arguments.at(0).toString());
        }
        QCOMPARE(told.count(key), 1);
        QCOMPARE(told.count(otherKey), 1);
    }

    void aLinkStaysALink()
    {
        const QString target = m_home->filePath(QStringLiteral("kept elsewhere.conf"));
        writeInPlace(target, "[General]\nRemainingTimeEnabled=true\n");
        QVERIFY(QFile::link(target, m_path));
        UserDefaults defaults(m_path);
        defaults.setBool(key, false);
        QTRY_COMPARE(contents(target), QByteArray("[General]\nRemainingTimeEnabled=false\n"));
        QVERIFY(QFileInfo(m_path).isSymLink());
    }

    void aLinkToAFileThatDoesNotExistYetStaysALinkToo()
    {
        const QString target = m_home->filePath(QStringLiteral("kept elsewhere.conf"));
        const QString between = m_home->filePath(QStringLiteral("link to it"));
        QVERIFY(QFile::link(QStringLiteral("kept elsewhere.conf"), between));
        QVERIFY(QFile::link(between, m_path));
        UserDefaults defaults(m_path);
        defaults.setBool(key, false);
        QTRY_COMPARE(contents(target), QByteArray("[General]\nRemainingTimeEnabled=false\n"));
        QVERIFY(QFileInfo(m_path).isSymLink());
        QVERIFY(QFileInfo(between).isSymLink());
    }

    void aLinkThatLeadsNowhereIsLeftAsItIs_data()
    {
        QTest::addColumn<QString>("target");
        QTest::newRow("into a missing folder") << QStringLiteral("/missing folder/kept elsewhere.conf");
        QTest::newRow("to itself") << QStringLiteral("/tunedeck/tunedeck.conf");
    }
    void aLinkThatLeadsNowhereIsLeftAsItIs()
    {
        QFETCH(const QString, target);
        QVERIFY(QFile::link(m_home->path() + target, m_path));
        {
            UserDefaults defaults(m_path);
            defaults.setBool(key, true);
            QVERIFY(defaults.boolForKey(key));
        }
        QCOMPARE(QFileInfo(m_path).symLinkTarget(), m_home->path() + target);
        QCOMPARE(QDir(m_home->path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot), {QStringLiteral("tunedeck")});
    }

    void aBrokenFileIsKeptBesideTheNewOne_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::newRow("words") << QByteArray("these are no settings\n");
        QTest::newRow("broken group") << QByteArray("[General\nRemainingTimeEnabled=false\n");
        QTest::newRow("binary") << QByteArray("\x7f"
                                              "ELF\0\1\2\xff\xfe\n\0\n",
            12);
        QTest::newRow("too big") << QByteArray("[General]\nName=" + QByteArray(1024 * 1024, 'x') + "\n");
    }

    void aBrokenFileIsKeptBesideTheNewOne()
    {
        QFETCH(const QByteArray, text);
        writeInPlace(m_path, text);
        writeInPlace(m_brokenPath, "older");
        {
            UserDefaults defaults(m_path);
            defaults.registerDefaults(launchDefaults);
            QCOMPARE(defaults.boolForKey(key), true);
            QCOMPARE(contents(m_brokenPath), text);
            QVERIFY(!QFile::exists(m_path));
            defaults.setBool(key, false);
        }
        QCOMPARE(contents(m_path), QByteArray("[General]\nRemainingTimeEnabled=false\n"));
    }

    void aBrokenFileThatWasReadBeforeIsSetAsideToo()
    {
        qputenv("XDG_CONFIG_HOME", m_home->path().toUtf8());
        const auto unset = qScopeGuard([] { qunsetenv("XDG_CONFIG_HOME"); });
        writeInPlace(m_path, "these are no settings\n");
        QVERIFY(!UserDefaults::storedBool(key));
        {
            UserDefaults defaults;
            defaults.setBool(key, true);
        }
        QCOMPARE(contents(m_brokenPath), QByteArray("these are no settings\n"));
    }

    void aFileThatBreaksDuringTheRunIsSetAsideToo()
    {
        writeInPlace(m_path, "[General]\nRemainingTimeEnabled=false\n");
        UserDefaults defaults(m_path);
        defaults.registerDefaults(launchDefaults);
        replace(m_path, "broken\n");
        QTRY_COMPARE(contents(m_brokenPath), QByteArray("broken\n"));
        QCOMPARE(defaults.boolForKey(key), true);
        writeInPlace(m_path, "[General]\nRemainingTimeEnabled=false\n");
        QTRY_COMPARE(defaults.boolForKey(key), false);
    }

    void whatIsNotAFileIsNeverOpened_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::newRow("pipe") << QStringLiteral("pipe");
        QTest::newRow("folder") << QStringLiteral("folder");
        QTest::newRow("link to a device") << QStringLiteral("device");
        QTest::newRow("socket") << QStringLiteral("socket");
    }

    void whatIsNotAFileIsNeverOpened()
    {
        QFETCH(const QString, kind);
        if (kind == QStringLiteral("pipe")) {
            QCOMPARE(::mkfifo(QFile::encodeName(m_path).constData(), 0600), 0);
        } else if (kind == QStringLiteral("folder")) {
            QVERIFY(QDir().mkdir(m_path));
        } else if (kind == QStringLiteral("socket")) {
            QCOMPARE(::mknod(QFile::encodeName(m_path).constData(), S_IFSOCK | 0600, 0), 0);
        } else {
            QVERIFY(QFile::link(QStringLiteral("/dev/zero"), m_path));
        }
        {
            UserDefaults defaults(m_path);
            QVERIFY(QFileInfo::exists(m_brokenPath));
            defaults.setBool(key, true);
        }
        QCOMPARE(contents(m_path), QByteArray("[General]\nRemainingTimeEnabled=true\n"));
    }

    void whatCannotBeSetAsideIsNeverOpenedEither()
    {
        QVERIFY(QDir().mkpath(m_brokenPath + QStringLiteral("/not empty")));
        QCOMPARE(::mkfifo(QFile::encodeName(m_path).constData(), 0600), 0);
        UserDefaults defaults(m_path);
        defaults.setBool(key, true);
        QTRY_VERIFY(!QFile::exists(m_path + QStringLiteral(".lock")));
        QVERIFY(!QFileInfo(m_path).isFile());
        QVERIFY(defaults.boolForKey(key));
    }

    void aBrokenFileThatCannotBeSetAsideIsNotLost()
    {
        QVERIFY(QDir().mkpath(m_brokenPath + QStringLiteral("/not empty")));
        writeInPlace(m_path, "these are no settings\n");
        {
            UserDefaults defaults(m_path);
            defaults.setBool(key, true);
            QVERIFY(defaults.boolForKey(key));
        }
        QCOMPARE(contents(m_path), QByteArray("these are no settings\n"));
        // A user who mends the file can save again.
        writeInPlace(m_path, "[General]\nAppearanceClassic=true\n");
        {
            UserDefaults defaults(m_path);
            defaults.setBool(key, true);
        }
        QCOMPARE(contents(m_path), QByteArray("[General]\nAppearanceClassic=true\nRemainingTimeEnabled=true\n"));
    }

    void aBrokenFileReplacesAnEmptyFolderOfItsName()
    {
        QVERIFY(QDir().mkpath(m_brokenPath));
        writeInPlace(m_path, "these are no settings\n");
        const UserDefaults defaults(m_path);
        QCOMPARE(contents(m_brokenPath), QByteArray("these are no settings\n"));
    }

    void whatIsInTheWayOfASaveIsNeitherOpenedNorWaitedFor_data()
    {
        QTest::addColumn<QString>("suffix");
        QTest::addColumn<QString>("kind");
        for (const char *suffix : {".lock", ".new", ".new.lock"}) {
            for (const char *kind : {"pipe", "folder", "device", "file"}) {
                QTest::addRow("%s: %s", suffix, kind) << QString::fromLatin1(suffix) << QString::fromLatin1(kind);
            }
        }
    }
    void whatIsInTheWayOfASaveIsNeitherOpenedNorWaitedFor()
    {
        QFETCH(const QString, suffix);
        QFETCH(const QString, kind);
        const QString path = m_path + suffix;
        if (kind == QStringLiteral("pipe")) {
            QCOMPARE(::mkfifo(QFile::encodeName(path).constData(), 0600), 0);
        } else if (kind == QStringLiteral("folder")) {
            QVERIFY(QDir().mkdir(path));
        } else if (kind == QStringLiteral("device")) {
            QVERIFY(QFile::link(QStringLiteral("/dev/zero"), path));
        } else {
            writeInPlace(path, QByteArray(100'000, 'x'));
        }
        {
            UserDefaults defaults(m_path);
            defaults.setBool(key, true);
        }
        QCOMPARE(contents(m_path), QByteArray("[General]\nRemainingTimeEnabled=true\n"));
    }

    void whereWhatIsInTheWayCannotBeRemovedSettingsHoldForTheRun_data()
    {
        QTest::addColumn<QString>("suffix");
        for (const char *suffix : {".lock", ".new", ".new.lock"}) {
            QTest::newRow(suffix) << QString::fromLatin1(suffix);
        }
    }
    void whereWhatIsInTheWayCannotBeRemovedSettingsHoldForTheRun()
    {
        QFETCH(const QString, suffix);
        writeInPlace(m_path, "[General]\nRemainingTimeEnabled=false\n");
        QVERIFY(QDir().mkpath(m_path + suffix + QStringLiteral("/not empty")));
        {
            UserDefaults defaults(m_path);
            defaults.setBool(key, true);
            QVERIFY(defaults.boolForKey(key));
        }
        QCOMPARE(contents(m_path), QByteArray("[General]\nRemainingTimeEnabled=false\n"));
    }

    void aFullDiskLeavesTheFileAsItIs()
    {
        writeInPlace(m_path, "[General]\nRemainingTimeEnabled=false\n");
        {
            UserDefaults defaults(m_path);
            {
                const FullDisk fullDisk;
                defaults.setBool(key, true);
                QCoreApplication::processEvents();
                QVERIFY(defaults.boolForKey(key));
                QCOMPARE(contents(m_path), QByteArray("[General]\nRemainingTimeEnabled=false\n"));
                QCOMPARE(QDir(QFileInfo(m_path).path()).entryList(QDir::Files), {QStringLiteral("tunedeck.conf")});
            }
        }
        QCOMPARE(contents(m_path), QByteArray("[General]\nRemainingTimeEnabled=true\n"));
    }

    void aHugeFileIsSetAsideUnread()
    {
        QFile file(m_path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        QVERIFY(file.resize(1'000'000'000));
        file.close();
        const UserDefaults defaults(m_path);
        QCOMPARE(QFileInfo(m_brokenPath).size(), 1'000'000'000);
    }

    void whereNothingCanBeWrittenSettingsHoldForTheRun()
    {
        writeInPlace(m_path, "[General]\nRemainingTimeEnabled=true\n");
        const QString unwritable = m_path + QStringLiteral("/tunedeck/tunedeck.conf");
        {
            UserDefaults defaults(unwritable);
            defaults.registerDefaults(launchDefaults);
            const QSignalSpy spy(&defaults, &UserDefaults::valueChanged);
            defaults.setBool(key, false);
            defaults.setBool(otherKey, false);
            QCoreApplication::processEvents();
            defaults.setBool(otherKey, true);
            QCoreApplication::processEvents();
            QCOMPARE(defaults.boolForKey(key), false);
            QCOMPARE(defaults.boolForKey(otherKey), true);
            QCOMPARE(spy.count(), 3);
        }
        QCOMPARE(contents(m_path), QByteArray("[General]\nRemainingTimeEnabled=true\n"));
    }

    void onlyAUserWhoAsksForTheLogReadsThatTheFileCannotBeWritten()
    {
        const QString unwritable = m_path + QStringLiteral("/tunedeck/tunedeck.conf");
        writeInPlace(m_path, "");
        const auto off = qScopeGuard([] { QLoggingCategory::setFilterRules(QString()); });
        for (const bool isAskedFor : {false, true}) {
            QLoggingCategory::setFilterRules(isAskedFor ? QStringLiteral("tunedeck.settings=true") : QString());
            settingsLines.clear();
            const QtMessageHandler previous = qInstallMessageHandler(recordSettingsLine);
            {
                UserDefaults defaults(unwritable);
                defaults.setBool(key, false);
            }
            qInstallMessageHandler(previous);
            QCOMPARE(settingsLines.size(), isAskedFor ? 1 : 0);
        }
    }

    void aReadOnlyFileIsLeftAsItIs()
    {
        writeInPlace(m_path, "[General]\nRemainingTimeEnabled=true\n");
        QVERIFY(QFile::setPermissions(m_path, QFileDevice::ReadOwner));
        if (QFileInfo(m_path).isWritable()) {
            QSKIP("root may write every file");
        }
        {
            UserDefaults defaults(m_path);
            defaults.setBool(key, false);
            QCOMPARE(defaults.boolForKey(key), false);
        }
        QCOMPARE(contents(m_path), QByteArray("[General]\nRemainingTimeEnabled=true\n"));
    }

    void aLockHeldByAnotherProcessIsNotWaitedFor()
    {
        QLockFile foreign(m_path + QStringLiteral(".lock"));
        QVERIFY(foreign.lock());
        UserDefaults defaults(m_path);
        QElapsedTimer timer;
        timer.start();
        defaults.setBool(key, true);
        QCoreApplication::processEvents();
        QVERIFY(timer.elapsed() < 250);
        QVERIFY(defaults.boolForKey(key));
        QVERIFY(!QFile::exists(m_path));

        foreign.unlock();
        QTRY_COMPARE(contents(m_path), QByteArray("[General]\nRemainingTimeEnabled=true\n"));
    }

    void theFileIsStillReadWhileAnotherProcessHoldsTheLock()
    {
        QLockFile foreign(m_path + QStringLiteral(".lock"));
        QVERIFY(foreign.lock());
        UserDefaults defaults(m_path);
        defaults.setBool(key, true);
        writeInPlace(m_path, "[General]\nAppearanceClassic=true\nRemainingTimeEnabled=false\n");
        QTRY_VERIFY(defaults.boolForKey(otherKey));
        QVERIFY(defaults.boolForKey(key));
    }

    void theEndOfTheProgramDoesNotWaitForALockForever()
    {
        QLockFile foreign(m_path + QStringLiteral(".lock"));
        QVERIFY(foreign.lock());
        QElapsedTimer timer;
        {
            UserDefaults defaults(m_path);
            defaults.setBool(key, true);
            timer.start();
        }
        QVERIFY(timer.elapsed() < 5000);
        QVERIFY(!QFile::exists(m_path));
    }

private:
    std::unique_ptr<QTemporaryDir> m_home;
    QString m_path;
    QString m_brokenPath;
};

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::UserDefaultsTest, QCoreApplication)
#include "UserDefaultsTest.moc"
