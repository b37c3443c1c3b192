// SPDX-License-Identifier: MIT
#pragma once

#include <QHash>
#include <QList>
#include <QLocale>
#include <QString>
#include <QStringList>

#include <optional>

namespace tunedeck {

struct HelpPage;

/// An entry of a help book: a page, or a section of a page.
struct HelpTopic {
    QString page; ///< the page's file name, the same in every language
    QString pageTitle;
    QString anchor;
    QString section; ///< the section's title; empty for a whole page

    bool operator==(const HelpTopic &) const = default;
};

/// The pages of a help book. A page is in the reader's language if it has a readable translation, else in English. The
/// book leaves out pages that are readable in neither.
class HelpBook {
public:
    /// `folder` has a folder of pages for each language, named by its code such as "en". A page is a well-formed HTML
    /// file. The file names give the order.
    HelpBook(const QString &folder, const QLocale &reader);

    /// The pages in their order.
    [[nodiscard]] const QList<HelpTopic> &contents() const { return m_contents; }
    /// The text of a page. No value if there is no such page.
    [[nodiscard]] std::optional<QString> html(const QString &page) const;
    /// The first topic that begins with `anchor`. No value if there is none.
    [[nodiscard]] std::optional<HelpTopic> topicAt(const QString &anchor) const;
    /// The topics that contain every word of `text`, whole or as part of a word, whatever the case and the accents.
    /// Topics found by their titles come before those found by their text. Otherwise the book's order holds.
    [[nodiscard]] QList<HelpTopic> search(const QString &text) const;

private:
    struct Entry {
        HelpTopic topic;
        QStringList places; ///< the texts to search: title, keywords, text, the page's title
    };

    void add(const QString &name, const HelpPage &page);
    [[nodiscard]] static std::optional<qsizetype> rank(const Entry &entry, const QStringList &words);

    QList<HelpTopic> m_contents;
    QList<Entry> m_entries;
    QHash<QString, QString> m_html;
};

} // namespace tunedeck
