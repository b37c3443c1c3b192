// SPDX-License-Identifier: MIT
#pragma once

#include "help/HelpBook.h"

#include <QWidget>

#include <functional>

class QKeySequence;
class QLineEdit;
class QListWidget;
class QListWidgetItem;
class QSplitter;
class QToolButton;

namespace tunedeck {

class HelpBrowser;

/// The help window: a page of the help book, beside the book's contents or the results of a search.
class HelpWindow : public QWidget {
    Q_OBJECT

public:
    /// Shows the program's own book in the user's language.
    explicit HelpWindow(QWidget *parent = nullptr);
    explicit HelpWindow(const HelpBook &book, QWidget *parent = nullptr);

    /// Shows the topic that begins with `anchor`, or the first page if there is none, and brings the window to the
    /// front. Does nothing if `inBook` is not the name of the program's book.
    void openHelpAnchor(const QString &anchor, const QString &inBook);

    [[nodiscard]] HelpBrowser &browser() { return *m_browser; }
    /// The contents, or the results while the user searches.
    [[nodiscard]] QListWidget &topicList() { return *m_topicList; }
    [[nodiscard]] QLineEdit &searchField() { return *m_searchField; }
    [[nodiscard]] QToolButton &backButton() { return *m_backButton; }
    [[nodiscard]] QToolButton &forwardButton() { return *m_forwardButton; }

protected:
    void changeEvent(QEvent *event) override;

private:
    void setUpButtons();
    void setUpSearch();
    void setUpTopics();
    void setUpKeys();
    void layOut();
    /// Makes the parts as wide as their font needs. The window grows, and does not shrink.
    void makeRoomForTexts();
    void addKeys(const QList<QKeySequence> &keys, const std::function<void()> &command);
    void listTopics();
    void openTopic(const QListWidgetItem *item);
    void selectPage(const QString &page);
    void focusSearch();
    /// Ends the search, or closes the window if there is none.
    void cancel();

    HelpBook m_book;
    QToolButton *m_backButton;
    QToolButton *m_forwardButton;
    QLineEdit *m_searchField;
    QListWidget *m_topicList;
    HelpBrowser *m_browser;
    QSplitter *m_splitter;
    QList<HelpTopic> m_topics; ///< in the list's order
};

} // namespace tunedeck
