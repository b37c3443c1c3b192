// SPDX-License-Identifier: MIT
#include "help/HelpBook.h"

#include "help/HelpPage.h"

#include <QDir>
#include <QFile>

#include <algorithm>
#include <utility>

namespace tunedeck {

namespace {
QStringList pagesIn(const QString &folder)
{
    return QDir(folder).entryList({QStringLiteral("*.html")}, QDir::Files);
}

std::optional<HelpPage> readFile(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? readHelpPage(file.readAll()) : std::nullopt;
}

/// `text` without case and accents, to compare it.
QString folded(const QString &text)
{
    const QString parts = text.normalized(QString::NormalizationForm_KD);
    QString result;
    for (const QChar character : parts) {
        if (!character.isMark()) {
            result.append(character);
        }
    }
    // Unicode does not decompose these.
    return result.toCaseFolded().replace(u'ł', u'l').replace(u'ß', QStringLiteral("ss"));
}
} // namespace

HelpBook::HelpBook(const QString &folder, const QLocale &reader)
{
    const QString original = folder + QStringLiteral("/en/");
    const QString translation = folder + u'/' + QLocale::languageToCode(reader.language()) + u'/';
    QStringList names = pagesIn(original) + pagesIn(translation);
    names.sort();
    names.removeDuplicates();
    for (const QString &name : std::as_const(names)) {
        std::optional<HelpPage> page = readFile(translation + name);
        if (!page) {
            page = readFile(original + name);
        }
        if (page) {
            add(name, *page);
        }
    }
}

std::optional<QString> HelpBook::html(const QString &page) const
{
    const auto found = m_html.find(page);
    return found == m_html.end() ? std::nullopt : std::optional(*found);
}

std::optional<HelpTopic> HelpBook::topicAt(const QString &anchor) const
{
    const auto found =
        std::ranges::find_if(m_entries, [&anchor](const Entry &entry) { return entry.topic.anchor == anchor; });
    return found == m_entries.end() ? std::nullopt : std::optional(found->topic);
}

QList<HelpTopic> HelpBook::search(const QString &text) const
{
    const QStringList words = folded(text.simplified()).split(u' ', Qt::SkipEmptyParts);
    if (words.isEmpty()) {
        return {};
    }
    QList<std::pair<qsizetype, HelpTopic>> hits;
    for (const Entry &entry : m_entries) {
        if (const auto found = rank(entry, words)) {
            hits.append({*found, entry.topic});
        }
    }
    std::ranges::stable_sort(hits, {}, [](const auto &hit) { return hit.first; });
    QList<HelpTopic> topics;
    for (const auto &hit : std::as_const(hits)) {
        topics.append(hit.second);
    }
    return topics;
}

void HelpBook::add(const QString &name, const HelpPage &page)
{
    m_html.insert(name, page.html);
    const HelpTopic whole{name, page.title, page.sections.first().anchor, {}};
    m_contents.append(whole);
    const QString pageTitle = folded(page.title);
    m_entries.append({whole, {pageTitle, folded(page.keywords), folded(page.sections.first().text)}});
    const QList<HelpSection> others = page.sections.sliced(1);
    for (const HelpSection &section : others) {
        const HelpTopic topic{name, page.title, section.anchor, section.title};
        // The keywords belong to the whole page.
        m_entries.append({topic, {folded(section.title), QString(), folded(section.text), pageTitle}});
    }
}

/// A smaller rank is better. No value if a word is missing.
std::optional<qsizetype> HelpBook::rank(const Entry &entry, const QStringList &words)
{
    qsizetype sum = 0;
    for (const QString &word : words) {
        const auto found =
            std::ranges::find_if(entry.places, [&word](const QString &place) { return place.contains(word); });
        if (found == entry.places.end()) {
            return std::nullopt;
        }
        sum += found - entry.places.begin();
    }
    return sum;
}

} // namespace tunedeck
