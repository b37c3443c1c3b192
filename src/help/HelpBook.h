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

/// What one can look up in a book: one of its pages, or a section of one.
struct HelpTopic {
    QString page; ///< the name of its file, the same in every language
    QString pageTitle;
    QString anchor;
    QString section; ///< its title; empty for the page as a whole

    bool operator==(const HelpTopic &) const = default;
};

/// The pages of a help book, each in the reader's language where it is translated and in English where it is not.
/// A translation that cannot be read counts as none; a page that can be read in neither is left out.
class HelpBook {
public:
    /// `folder` holds a folder of pages for each language, named by its code such as "en". A page is a well-formed HTML
    /// file; their names give the order.
    HelpBook(const QString &folder, const QLocale &reader);

    /// The pages in their order.
    [[nodiscard]] const QList<HelpTopic> &contents() const;
    /// The text of a page; no value if there is no such page.
    [[nodiscard]] std::optional<QString> html(const QString &page) const;
    /// What `anchor` begins; of several the first.
    [[nodiscard]] std::optional<HelpTopic> topicAt(const QString &anchor) const;
    /// The topics in which every word of `text` is found, as part of a word or whole, whatever its case and accents.
    /// Those found by their titles come first, those found by their text after them; else in the book's order.
    [[nodiscard]] QList<HelpTopic> search(const QString &text) const;

private:
    struct Entry {
        HelpTopic topic;
        QStringList places; ///< where words are looked for: title, keywords, text and the page's title
    };

    void add(const QString &name, const HelpPage &page);
    [[nodiscard]] static std::optional<qsizetype> rank(const Entry &entry, const QStringList &words);

    QList<HelpTopic> m_contents;
    QList<Entry> m_entries;
    QHash<QString, QString> m_html;
};

} // namespace tunedeck
