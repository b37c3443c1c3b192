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
    QString title; ///< what the anchor encloses
    QString text; ///< from there to the next section, without markup
};

/// A page of the help book.
struct HelpPage {
    QString html;
    QString title;
    QString keywords; ///< words to find it by that it does not contain itself
    QList<HelpSection> sections; ///< at least one; the first is the page's beginning
};

/// No value where `html` is not well-formed or has no title or no anchor.
[[nodiscard]] std::optional<HelpPage> readHelpPage(const QByteArray &html);

} // namespace tunedeck
