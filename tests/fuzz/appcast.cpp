// SPDX-License-Identifier: MIT
#include "updates/feed/Appcast.h"

#include "platform/directionControls.h"
#include "require.h"
#include "updates/feed/Version.h"
#include "updates/fileName.h"

#include <QByteArray>

#include <algorithm>

using namespace tunedeck;
using fuzz::require;

namespace {
void checkText(const QString &text)
{
    require(text.size() <= 100, "a text of a version is short");
    require(
        std::none_of(text.begin(), text.end(), [](QChar character) { return isDirectionControl(character.unicode()); }),
        "a text of a version does not turn the text around it");
}

void checkFileName(const AppcastItem &item)
{
    const QString name = fileNameFor(item.displayVersion(), item.url);
    require(name.size() <= 125, "a file's name is short");
    require(name.startsWith(QStringLiteral("tunedeck_")), "a file's name begins with the program's");
    require(std::all_of(name.begin(), name.end(),
                [](QChar character) {
                    return character > u' ' && character < u'\x7f' && character != u'/' && character != u'\\';
                }),
        "a file's name has no separator");
}

void checkItem(const AppcastItem &item)
{
    for (const QString &text :
        {item.version, item.shortVersion, item.minimumSystemVersion, item.channel, item.displayVersion()}) {
        checkText(text);
    }
    require(item.releaseNotes.size() <= 65'536, "notes are cut");
    require(item.length >= 0 && item.length <= 1'073'741'824, "a length is believable");
    require(item.sha512.isEmpty() || item.sha512.size() == 64, "a hash is whole or missing");
    require(item.signature.isEmpty() || item.signature.size() == 64, "a signature is whole or missing");
    require(!item.url.isEmpty(), "an item has an address");
    checkFileName(item);

    const QByteArray statement = item.statement().text();
    require(statement.isEmpty() || statement.count('\n') == 5, "no value adds a line to a statement");
}

/// Versions can be sorted only if their order is one.
void checkOrder(const AppcastItem &one, const AppcastItem &other)
{
    const auto left = Version::fromString(one.version);
    const auto right = Version::fromString(other.version);
    if (left && right) {
        require((*left < *right) == (*right > *left), "the order of two versions has one direction");
        require((*left == *right) == !(*left < *right || *right < *left), "versions that are not ordered are equal");
    }
}
} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), qsizetype(size));
    const std::optional<Appcast> appcast = readAppcast(bytes);
    if (!appcast) {
        return 0;
    }
    require(appcast->serial >= 0 && appcast->serial <= highestSerial, "a serial is in its range");
    require(!appcast->expiry.isValid() || appcast->expiry.timeSpec() == Qt::UTC, "an expiry is in UTC");
    require(appcast->items.size() <= 1'000, "items are limited");
    for (qsizetype i = 0; i < appcast->items.size(); ++i) {
        checkItem(appcast->items.at(i));
        checkOrder(appcast->items.at(0), appcast->items.at(i));
    }
    const RunningProgram program{QStringLiteral("100"), QStringLiteral("1.0"), QStringLiteral("12")};
    for (const auto &chosen : {newestUpdate(appcast->items, program), newestForNewerSystem(appcast->items, program)}) {
        require(!chosen || Version::fromString(program.version) < Version::fromString(chosen->version),
            "an update is newer than the program");
        require(!chosen || chosen->channel.isEmpty(), "an update is for everybody");
    }
    return 0;
}
