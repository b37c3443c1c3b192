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

/// The window in which the program's help book is read: its contents, or what a search found, beside the page.
class HelpWindow : public QWidget {
    Q_OBJECT

public:
    /// With the program's own book in the user's language.
    explicit HelpWindow(QWidget *parent = nullptr);
    explicit HelpWindow(const HelpBook &book, QWidget *parent = nullptr);

    /// Shows what `anchor` begins, or the first page where there is no such anchor, and brings the window to the front.
    /// Does nothing if `inBook` is not the name of the program's book.
    void openHelpAnchor(const QString &anchor, const QString &inBook);

    [[nodiscard]] HelpBrowser &browser();
    /// The contents or, while something is searched for, what was found.
    [[nodiscard]] QListWidget &topicList();
    [[nodiscard]] QLineEdit &searchField();
    [[nodiscard]] QToolButton &backButton();
    [[nodiscard]] QToolButton &forwardButton();

protected:
    void changeEvent(QEvent *event) override;

private:
    void setUpButtons();
    void setUpSearch();
    void setUpTopics();
    void setUpKeys();
    void layOut();
    /// As much as their font asks for. The window grows, and does not shrink.
    void makeRoomForTexts();
    void addKeys(const QList<QKeySequence> &keys, const std::function<void()> &command);
    void listTopics();
    void openTopic(const QListWidgetItem *item);
    void selectPage(const QString &page);
    void focusSearch();
    /// Ends the search, or else closes the window.
    void cancel();
    void bringToFront();

    HelpBook m_book;
    QToolButton *m_backButton;
    QToolButton *m_forwardButton;
    QLineEdit *m_searchField;
    QListWidget *m_topicList;
    HelpBrowser *m_browser;
    QSplitter *m_splitter;
    QList<HelpTopic> m_topics; ///< as listed
};

} // namespace tunedeck
