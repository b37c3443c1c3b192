// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include <optional>

namespace tunedeck {

/// A part of a page that begins with an anchor of its own.
struct HelpSection {
    QString anchor;
    QString title; ///< the text inside the anchor
    QString text; ///< the text up to the next section, without markup
};

/// A page of the help book.
struct HelpPage {
    QString html;
    QString title;
    QString keywords; ///< more words that find the page
    QList<HelpSection> sections; ///< at least one; the first begins the page
};

/// No value if `html` is not well-formed, or has no title or no anchor.
[[nodiscard]] std::optional<HelpPage> readHelpPage(const QByteArray &html);

} // namespace tunedeck
