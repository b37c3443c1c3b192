// SPDX-License-Identifier: MIT
#include "music/mpris/report/PropertyTypes.h"
#include "music/mpris/bus/playersLog.h"
#include "support/registerTest.h"

#include <QCoreApplication>
#include <QRegularExpression>
#include <QTest>

using namespace tunedeck;
using namespace Qt::StringLiterals;

class PropertyTypesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    // Any message that a test does not expect fails it.
    void init()
    {
        QLoggingCategory::setFilterRules(u"tunedeck.players.debug=true"_s);
        QTest::failOnWarning(QRegularExpression(u".*"_s));
        m_messages.clear();
        m_formerHandler = qInstallMessageHandler(
            [](QtMsgType, const QMessageLogContext &, const QString &message) { m_messages.append(message); });
    }
    void cleanup()
    {
        qInstallMessageHandler(m_formerHandler);
        QLoggingCategory::setFilterRules(QString());
    }

    void aWrongTypeIsLoggedWithTheExpectedAndTheActualOne()
    {
        PropertyTypes types(u"vlc"_s);
        types.check({{u"Volume"_s, 1}});
        QCOMPARE(m_messages, QStringList{u"vlc sends Volume with the type i instead of d"_s});
    }

    void aWrongTypeIsLoggedOncePerKey()
    {
        PropertyTypes types(u"vlc"_s);
        types.check({{u"Volume"_s, 1}});
        types.check({{u"Volume"_s, u"loud"_s}, {u"Shuffle"_s, 1}});
        types.check({{u"Volume"_s, 1}, {u"Shuffle"_s, 1}});
        QCOMPARE(m_messages.size(), 2);
        QVERIFY(m_messages.constLast().contains(u"Shuffle"_s));
    }

    void aWrongTypeIsLoggedForEachPlayer()
    {
        PropertyTypes(u"mpv"_s).check({{u"Shuffle"_s, u"yes"_s}});
        PropertyTypes(u"vlc"_s).check({{u"Shuffle"_s, u"yes"_s}});
        QCOMPARE(m_messages.size(), 2);
    }

    void theEntriesOfTheMetadataAreChecked()
    {
        PropertyTypes types(u"mpv"_s);
        types.check({{u"Metadata"_s, QVariantMap{{u"xesam:genre"_s, u"Jazz"_s}}}});
        QCOMPARE(m_messages, QStringList{u"mpv sends xesam:genre with the type s instead of as"_s});
    }

    void metadataThatIsNoMapIsLogged()
    {
        PropertyTypes types(u"mpv"_s);
        types.check({{u"Metadata"_s, u"So What"_s}});
        QCOMPARE(m_messages, QStringList{u"mpv sends Metadata with the type s instead of a{sv}"_s});
    }

    void rightTypesAndMissingPropertiesAreNotLogged()
    {
        PropertyTypes types(u"mpv"_s);
        types.check({});
        types.check({{u"PlaybackStatus"_s, u"Playing"_s}, {u"Shuffle"_s, true}, {u"Volume"_s, 0.5},
            {u"Position"_s, qlonglong(1)},
            {u"Metadata"_s,
                QVariantMap{{u"xesam:artist"_s, QStringList{u"Miles Davis"_s}}, {u"mpris:length"_s, qlonglong(1)},
                    {u"some:key"_s, 7}}}});
        QCOMPARE(m_messages, QStringList());
    }

    void aLongNameIsCut()
    {
        PropertyTypes types(QString(10'000, u'x'));
        types.check({{u"Volume"_s, 1}});
        QCOMPARE(m_messages.size(), 1);
        QVERIFY(m_messages.constFirst().size() < 250);
    }

    void whileTheLogIsOffNothingIsLogged()
    {
        QLoggingCategory::setFilterRules(QString());
        PropertyTypes types(u"vlc"_s);
        types.check({{u"Volume"_s, 1}});
        QCOMPARE(m_messages, QStringList());
    }

private:
    static inline QStringList m_messages;
    QtMessageHandler m_formerHandler = nullptr;
};

TUNEDECK_TEST(PropertyTypesTest, QCoreApplication)
#include "PropertyTypesTest.moc"
