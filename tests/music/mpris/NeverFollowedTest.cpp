// SPDX-License-Identifier: MIT
#include "music/mpris/choice/NeverFollowed.h"
#include "platform/UserDefaults.h"
#include "support/registerTest.h"

#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace tunedeck {

class NeverFollowedTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(u".*"_s));
        m_folder = std::make_unique<QTemporaryDir>();
        m_defaults = std::make_unique<UserDefaults>(path());
        m_never = std::make_unique<NeverFollowed>(*m_defaults);
    }

    void theyAreKept()
    {
        m_never->add(PlayerPin::fromId(u"vlc"_s), u"VLC media player"_s);
        m_never->add(PlayerPin::fromId(u"kdeconnect//Pixel: Podcast"_s), u"Pixel: Podcast"_s);
        m_defaults.reset();
        UserDefaults next(path());
        QCOMPARE(NeverFollowed(next).players(),
            (QList<NeverFollowedPlayer>{
                {u"vlc"_s, u"VLC media player"_s}, {u"kdeconnect//Pixel: Podcast"_s, u"Pixel: Podcast"_s}}));
    }

    void oneThatIsTakenBackIsGone()
    {
        m_never->add(PlayerPin::fromId(u"vlc"_s), u"VLC"_s);
        m_never->add(PlayerPin::fromId(u"mpv"_s), u"mpv"_s);
        m_never->remove(u"vlc"_s);
        m_never->remove(u"elisa"_s);
        QCOMPARE(m_never->players(), (QList<NeverFollowedPlayer>{{u"mpv"_s, u"mpv"_s}}));
        m_never->remove(u"mpv"_s);
        QCOMPARE(m_never->players(), QList<NeverFollowedPlayer>());
    }

    void itsBusNameIsNotKept()
    {
        m_never->add(PlayerPin::fromId(u"mpv/mpv.instance5/mpv"_s), u"mpv"_s);
        QCOMPARE(m_never->players().value(0).id, u"mpv//mpv"_s);
    }

    void noneIsKeptTwice()
    {
        m_never->add(PlayerPin::fromId(u"mpv"_s), u"mpv"_s);
        m_never->add(PlayerPin::fromId(u"mpv"_s), u"mpv Media Player"_s);
        QCOMPARE(m_never->players(), (QList<NeverFollowedPlayer>{{u"mpv"_s, u"mpv Media Player"_s}}));
    }

    void ofTooManyTheFirstIsDropped()
    {
        for (int i = 0; i < 65; ++i) {
            m_never->add(PlayerPin::fromId(u"player%1"_s.arg(i)), u"Player"_s);
        }
        QCOMPARE(m_never->players().size(), 64);
        QCOMPARE(m_never->players().first().id, u"player1"_s);
        QCOMPARE(m_never->players().last().id, u"player64"_s);
    }

    void whateverTheSettingsHoldIsSurvived_data()
    {
        QTest::addColumn<QStringList>("stored");
        QTest::addColumn<QStringList>("names");
        QTest::newRow("an identifier alone") << QStringList{u"vlc"_s} << QStringList();
        QTest::newRow("no identifier") << QStringList{u""_s, u"VLC"_s, u"/x"_s, u"X"_s} << QStringList();
        QTest::newRow("no name") << QStringList{u"vlc"_s, u" \n"_s} << QStringList{u"vlc"_s};
        QTest::newRow("long name") << QStringList{u"vlc"_s, QString(900, u'x')}
                                   << QStringList{QString(59, u'x') + u'…'};
        QTest::newRow("too many") << QStringList(QList<QString>(200, u"vlc"_s))
                                  << QStringList(QList<QString>(64, u"vlc"_s));
    }
    void whateverTheSettingsHoldIsSurvived()
    {
        QFETCH(const QStringList, stored);
        m_defaults->setValue(u"NeverFollowedPlayers"_s, stored);
        QStringList names;
        const QList<NeverFollowedPlayer> players = m_never->players();
        for (const NeverFollowedPlayer &player : players) {
            names.append(player.name);
        }
        QTEST(names, "names");
    }

private:
    [[nodiscard]] QString path() const { return m_folder->filePath(u"settings.conf"_s); }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<UserDefaults> m_defaults;
    std::unique_ptr<NeverFollowed> m_never;
};

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::NeverFollowedTest, QCoreApplication)
#include "NeverFollowedTest.moc"
