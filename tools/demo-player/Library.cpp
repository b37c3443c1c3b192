// SPDX-License-Identifier: MIT
#include "Library.h"

#include <numeric>

namespace tunedeck::demo {

namespace {

QString titleWithoutEnd()
{
    constexpr qsizetype length = 300;
    const QString phrase = QStringLiteral("The Clerk Who Read the Whole Timetable Aloud and Then Once More, ");
    return phrase.repeated(length / phrase.size() + 1).left(length);
}

QList<qsizetype> allOf(qsizetype count)
{
    QList<qsizetype> places(count);
    std::iota(places.begin(), places.end(), 0);
    return places;
}

} // namespace

QList<Track> library()
{
    using namespace Qt::StringLiterals;
    using namespace std::chrono_literals;

    return {
        {.url = u"file:///home/demo/Music/Gantry%20Weather/01%20Quince%20Harbour.flac"_s,
            .title = u"Quince Harbour Timetable"_s,
            .artists = {u"The Ferrous Pelicans"_s},
            .album = u"Gantry Weather"_s,
            .genres = {u"Rock"_s},
            .length = 3min + 24s,
            .liveTitles = {}},
        {.url = u"file:///home/demo/Music/Thimblerig/03%20Borrowed%20Thimble.ogg"_s,
            .title = u"Borrowed Thimble Waltz"_s,
            .artists = {u"Odalune Brack"_s, u"Mirek Soothe"_s},
            .album = u"Thimblerig"_s,
            .genres = {u"Folk"_s, u"Waltz"_s},
            .length = 2min + 15s,
            .liveTitles = {}},
        {.url = u"file:///home/demo/Music/umbrella.mp3"_s,
            .title = u"Nobody's Umbrella Stand"_s,
            .artists = {},
            .album = {},
            .genres = {},
            .length = 2min + 58s,
            .liveTitles = {}},
        {.url = u"file:///home/demo/Music/timetable.mp3"_s,
            .title = titleWithoutEnd(),
            .artists = {u"Pelham Ockley and the Branch Line Choir"_s},
            .album = u"Announcements"_s,
            .genres = {u"Spoken"_s},
            .length = 3min + 45s,
            .liveTitles = {}},
        {.url = u"file:///home/demo/Music/Long/vennin.opus"_s,
            .title = u"The Slow Drift over Lake Vennin"_s,
            .artists = {u"Halm"_s},
            .album = u"Three Lakes"_s,
            .genres = {u"Ambient"_s},
            .length = 1h + 10min,
            .liveTitles = {}},
        {.url = u"file:///home/demo/Music/%E7%A1%9D%E5%AD%90.flac"_s,
            .title = u"硝子の停留所にて"_s,
            .artists = {u"青鷺通信社"_s},
            .album = u"夜更けの時刻表"_s,
            .genres = {u"ポップ"_s},
            .length = 4min + 12s,
            .liveTitles = {}},
        {.url = u"file:///home/demo/Music/%D7%A4%D7%A0%D7%A1.flac"_s,
            .title = u"רחוב הפנסים השקטים"_s,
            .artists = {u"להקת מגדל הנייר"_s},
            .album = u"שעון של גשם"_s,
            .genres = {u"פולק"_s},
            .length = 3min + 1s,
            .liveTitles = {}},
        {.url = u"file:///home/demo/Music/100%25%20T%C3%BCr%20%237.wav"_s,
            .title = {},
            .artists = {},
            .album = {},
            .genres = {},
            .length = 2min + 30s,
            .liveTitles = {}},
        {.url = u"https://music.example/tracks/postcards?from=shop&id=8"_s,
            .title = u"Postcards to the Lighthouse Cat"_s,
            .artists = {u"Tin Orchid"_s},
            .album = u"Keeper's Log"_s,
            .genres = {u"Electronic"_s},
            .length = 4min + 5s,
            .liveTitles = {}},
        {.url = u"http://radio.example:8000/pelican.mp3"_s,
            .title = u"Tin Orchid - Sleeper Carriage Nine"_s,
            .artists = {},
            .album = {},
            .genres = {},
            .length = {},
            .liveTitles = {u"Tin Orchid - Sleeper Carriage Nine"_s, u"Marrow & Vale - Eleven Lamps Out"_s,
                u"The Ferrous Pelicans - Quince Harbour Timetable"_s}},
    };
}

QList<Playlist> playlists(qsizetype count)
{
    using namespace Qt::StringLiterals;

    QList<Playlist> lists{{u"Everything"_s, allOf(library().size())}, {u"Short Ones"_s, {1, 7, 2}},
        {u"Far Away"_s, {5, 6}}, {u"Odd Ones"_s, {2, 3, 7}}, {u"From the Air"_s, {8, 9}}, {u"Nothing Yet"_s, {}}};
    lists.resize(qMin(count, namedPlaylistCount));
    while (lists.size() < count) {
        const qsizetype number = lists.size();
        lists.append({u"List %1"_s.arg(number), {number % library().size()}});
    }
    return lists;
}

} // namespace tunedeck::demo
