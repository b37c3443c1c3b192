// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

namespace tunedeck {

/// A feed with `items`, which are XML.
[[nodiscard]] inline QByteArray feedText(const QByteArray &items)
{
    return "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n"
           "<rss version=\"2.0\" xmlns:sparkle=\"http://www.andymatuschak.org/xml-namespaces/sparkle\">\n"
           "<channel><title>Tunedeck</title>\n"
        + items + "</channel></rss>\n";
}

/// An item of build `version` with `more` elements.
[[nodiscard]] inline QByteArray feedItem(const QByteArray &version, const QByteArray &more)
{
    return "<item><title>Version</title><sparkle:version>" + version + "</sparkle:version>" + more + "</item>\n";
}

} // namespace tunedeck
