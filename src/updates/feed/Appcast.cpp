// SPDX-License-Identifier: MIT
#include "updates/feed/Appcast.h"

#include "platform/directionControls.h"
#include "updates/feed/Version.h"
#include "updates/feed/fromBase64.h"
#include "updates/feed/isSafeXml.h"

#include <QRegularExpression>
#include <QStringDecoder>
#include <QXmlStreamReader>

namespace tunedeck {

namespace {
constexpr qsizetype maximumItems = 1'000;
constexpr qsizetype maximumText = 100;
constexpr qsizetype maximumUrl = 1'500;
constexpr qsizetype maximumNotes = 65'536;
constexpr qint64 maximumLength = 1'073'741'824;
constexpr QLatin1String feedNamespace("http://www.andymatuschak.org/xml-namespaces/sparkle");
constexpr QLatin1String ourNamespace("urn:tunedeck:feed:1");

qint64 serialFrom(const QString &text)
{
    const qint64 serial = text.toLongLong();
    return serial > 0 && serial <= highestSerial ? serial : 0;
}

/// Invalid if `text` is not a time of UTC, such as 2027-01-31T12:00:00Z.
QDateTime timeFrom(const QString &text)
{
    const QDateTime time = QDateTime::fromString(text, Qt::ISODate);
    return time.timeSpec() == Qt::UTC ? time : QDateTime();
}

qint64 lengthFrom(QStringView text)
{
    const qint64 length = text.toLongLong();
    return length > 0 && length <= maximumLength ? length : 0;
}

bool isForLinux(QStringView system)
{
    return system.isEmpty() || system.compare(u"linux", Qt::CaseInsensitive) == 0;
}

bool isDottedNumber(const QString &text)
{
    static const QRegularExpression dottedNumber(QStringLiteral("^[0-9]+(\\.[0-9]+)*$"));
    return dottedNumber.match(text).hasMatch();
}

class AppcastReader {
public:
    explicit AppcastReader(const QString &xml)
        : m_xml(xml)
    {
    }

    std::optional<Appcast> read()
    {
        if (!m_xml.readNextStartElement() || m_xml.name() != u"rss") {
            return std::nullopt;
        }
        while (m_xml.readNextStartElement()) {
            if (is(u"channel")) {
                readChannel();
            } else {
                m_xml.skipCurrentElement();
            }
        }
        // The rest after the root must be well-formed too.
        while (!m_xml.atEnd()) {
            m_xml.readNext();
        }
        return m_xml.hasError() ? std::nullopt : std::optional(m_appcast);
    }

private:
    /// An element of RSS itself.
    [[nodiscard]] bool is(QStringView name) const { return m_xml.namespaceUri().isEmpty() && m_xml.name() == name; }
    /// An element that the feed format adds to RSS.
    [[nodiscard]] bool isAdded(QStringView name) const
    {
        return m_xml.namespaceUri() == feedNamespace && m_xml.name() == name;
    }

    [[nodiscard]] bool isOurs(QStringView name) const
    {
        return m_xml.namespaceUri() == ourNamespace && m_xml.name() == name;
    }

    void readChannel()
    {
        while (m_xml.readNextStartElement()) {
            if (is(u"item") && m_appcast.items.size() < maximumItems) {
                readItem();
            } else if (isOurs(u"serial")) {
                m_appcast.serial = serialFrom(text(maximumText));
            } else if (isOurs(u"expires")) {
                m_appcast.expiry = timeFrom(text(maximumText));
            } else {
                m_xml.skipCurrentElement();
            }
        }
    }

    void readItem()
    {
        AppcastItem item;
        QString system;
        while (m_xml.readNextStartElement()) {
            if (QString *field = fieldOf(item)) {
                *field = withoutDirectionControls(text(maximumText));
            } else if (isAdded(u"os")) {
                system = text(maximumText);
            } else if (is(u"description")) {
                item.releaseNotes = text(maximumNotes);
            } else if (is(u"enclosure")) {
                readEnclosure(item);
            } else {
                m_xml.skipCurrentElement();
            }
        }
        if (isForLinux(system) && !item.url.isEmpty()) {
            m_appcast.items.append(item);
        }
    }

    /// The field for the element's text. Null if there is none.
    QString *fieldOf(AppcastItem &item) const
    {
        if (isAdded(u"version")) {
            return &item.version;
        }
        if (isAdded(u"shortVersionString")) {
            return &item.shortVersion;
        }
        if (isAdded(u"minimumSystemVersion")) {
            return &item.minimumSystemVersion;
        }
        return isAdded(u"channel") ? &item.channel : nullptr;
    }

    void readEnclosure(AppcastItem &item)
    {
        const QXmlStreamAttributes attributes = m_xml.attributes();
        m_xml.skipCurrentElement();
        const auto added = [&attributes](QLatin1String name) {
            return withoutDirectionControls(
                attributes.value(feedNamespace, name).left(maximumText).trimmed().toString());
        };
        if (!item.url.isEmpty() || !isForLinux(added(QLatin1String("os")))) {
            return;
        }
        item.url = QUrl(attributes.value(QLatin1String("url")).left(maximumUrl).trimmed().toString());
        item.length = lengthFrom(attributes.value(QLatin1String("length")));
        const auto ours = [&attributes](QLatin1String name) {
            return attributes.value(ourNamespace, name).left(maximumText).trimmed().toLatin1();
        };
        item.sha512 = fromBase64(ours(QLatin1String("sha512")), hashSize);
        item.signature = fromBase64(ours(QLatin1String("signature")), signatureSize);
        // Older feeds have attributes for the versions instead of elements.
        if (item.version.isEmpty()) {
            item.version = added(QLatin1String("version"));
        }
        if (item.shortVersion.isEmpty()) {
            item.shortVersion = added(QLatin1String("shortVersionString"));
        }
    }

    /// The text of the current element and the elements in it.
    QString text(qsizetype maximum)
    {
        QString text;
        for (int depth = 1; depth > 0 && !m_xml.atEnd();) {
            m_xml.readNext();
            if (m_xml.isStartElement()) {
                ++depth;
            } else if (m_xml.isEndElement()) {
                --depth;
            } else if (m_xml.isCharacters()) {
                text += m_xml.text().left(maximum - text.size());
            }
        }
        return text.trimmed();
    }

    QXmlStreamReader m_xml;
    Appcast m_appcast;
};

enum class System { Fits, IsTooOld };

System systemFor(const AppcastItem &item, const QString &systemVersion)
{
    const bool isComparable = isDottedNumber(item.minimumSystemVersion) && isDottedNumber(systemVersion);
    const bool isTooOld =
        isComparable && Version::fromString(systemVersion) < Version::fromString(item.minimumSystemVersion);
    return isTooOld ? System::IsTooOld : System::Fits;
}

bool isPrerelease(const QString &text)
{
    const std::optional<Version> version = Version::fromString(text);
    return version && version->isPrerelease();
}

/// Considers only the items for which the system of `program` is as `system` says.
std::optional<AppcastItem> newestWanted(const QList<AppcastItem> &items, const RunningProgram &program, System system)
{
    const bool wantsPrereleases = isPrerelease(program.shortVersion);
    std::optional<Version> newest = Version::fromString(program.version);
    std::optional<AppcastItem> update;
    for (const AppcastItem &item : items) {
        const std::optional<Version> version = Version::fromString(item.version);
        const bool isWanted = item.channel.isEmpty() && (wantsPrereleases || !isPrerelease(item.displayVersion()))
            && systemFor(item, program.systemVersion) == system;
        if (version && isWanted && newest < version) {
            newest = version;
            update = item;
        }
    }
    return update;
}
} // namespace

QString AppcastItem::displayVersion() const
{
    return shortVersion.isEmpty() ? version : shortVersion;
}

FileStatement AppcastItem::statement() const
{
    return {version, displayVersion(), length, sha512};
}

std::optional<Appcast> readAppcast(const QByteArray &xml)
{
    QStringDecoder utf8(QStringDecoder::Utf8);
    const QString text = utf8(xml);
    if (utf8.hasError() || !isSafeXml(text)) {
        return std::nullopt;
    }
    return AppcastReader(text).read();
}

std::optional<AppcastItem> newestUpdate(const QList<AppcastItem> &items, const RunningProgram &program)
{
    return newestWanted(items, program, System::Fits);
}

std::optional<AppcastItem> newestForNewerSystem(const QList<AppcastItem> &items, const RunningProgram &program)
{
    return newestWanted(items, program, System::IsTooOld);
}

} // namespace tunedeck
