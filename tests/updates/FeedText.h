// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

namespace tunedeck {

/// A feed with `items`, which are XML. It expires after all tests.
[[nodiscard]] inline QByteArray feedText(
    const QByteArray &items, const QByteArray &serial = "7", const QByteArray &expiry = "2999-12-31T23:59:59Z")
{
    return "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n"
           "<rss version=\"2.0\" xmlns:sparkle=\"http://www.andymatuschak.org/xml-namespaces/sparkle\" "
           "xmlns:tunedeck=\"urn:tunedeck:feed:1\">\n"
           "<channel><title>Tunedeck</title>\n"
           "<tunedeck:serial>"
        + serial + "</tunedeck:serial><tunedeck:expires>" + expiry + "</tunedeck:expires>\n" + items
        + "</channel></rss>\n";
}

/// An item of build `version` with `more` elements.
[[nodiscard]] inline QByteArray feedItem(const QByteArray &version, const QByteArray &more)
{
    return "<item><title>Version</title><sparkle:version>" + version + "</sparkle:version>" + more + "</item>\n";
}

} // namespace tunedeck
