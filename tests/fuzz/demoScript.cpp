// SPDX-License-Identifier: MIT
#include "BusName.h"
#include "Oddities.h"
#include "Player.h"
#include "Script.h"

#include "require.h"

#include <QByteArray>
#include <QByteArrayList>
#include <QCoreApplication>
#include <QDBusConnection>
#include <QString>

#include <array>

using namespace tunedeck::demo;
using tunedeck::fuzz::require;
using namespace std::chrono_literals;

namespace {

constexpr qsizetype mostLines = 50;
/// They end or stop the process, or wait for a bus.
constexpr std::array ofTheProcess{"freeze", "die", "retake"};

bool canRun(const QByteArray &line)
{
    const QByteArray name = line.simplified().split(' ').value(0);
    for (const char *word : ofTheProcess) {
        if (name == word) {
            return false;
        }
    }
    // A million playlists are understood, but take a second.
    return name != "playlists" || line.size() < int(sizeof("playlists 1000"));
}

void check(const Player &player, const Oddities &oddities)
{
    require(player.volume() >= -10 && player.volume() <= 10, "a volume is in its range");
    require(player.rate() >= Player::minimumRate && player.rate() <= Player::maximumRate, "a rate is in its range");
    require(player.position() >= 0us, "a position is in the track");
    require(player.currentTrackNumber() >= 0 && player.currentTrackNumber() < player.trackCount(),
        "the track is in the library");
    const auto next = player.timeToNextEvent();
    require(!next || *next >= 0us, "no event is overdue");
    require(oddities.late >= 0ms && oddities.late <= 1h, "calls are late by a time");
    require(oddities.longestPage > 0, "a page has room");
    require(oddities.integratedPid >= 0, "a process has a number");
}

class Use {
public:
    void run(const QByteArray &line)
    {
        if (!canRun(line)) {
            return;
        }
        const auto refusal = m_script.run(QString::fromUtf8(line));
        require(!refusal || !refusal->isEmpty(), "a refusal has a reason");
        check(m_player, m_oddities);
        m_now += 700ms;
        m_player.advance();
        check(m_player, m_oddities);
    }

private:
    std::chrono::microseconds m_now{0};
    Player m_player{[this] { return m_now; }, 1};
    Oddities m_oddities;
    BusName m_name{QDBusConnection(QStringLiteral("none")), QStringLiteral("fuzz")};
    Script m_script{m_player, m_oddities, m_name};
};

} // namespace

extern "C" int LLVMFuzzerInitialize(int *count, char ***arguments)
{
    // It ends with the process.
    new QCoreApplication(*count, *arguments);
    // QtDBus complains about invalid paths.
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) { });
    return 0;
}

/// Lines of a script.
int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    Use use;
    for (const QByteArray &line :
        QByteArray(reinterpret_cast<const char *>(data), qsizetype(size)).split('\n').mid(0, mostLines)) {
        use.run(line);
    }
    return 0;
}
