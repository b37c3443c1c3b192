// SPDX-License-Identifier: MIT
#include "help/HelpWindow.h"

#include "help/HelpBrowser.h"
#include "platform/BundleInfo.h"
#include "widgets/accessibleLineEdits.h"
#include "widgets/bringToFront.h"
#include "widgets/names.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QListWidget>
#include <QScreen>
#include <QShortcut>
#include <QSplitter>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace tunedeck {

namespace {
/// In points, for a small font. A larger font needs room for the characters and lines below, if the screen has it.
constexpr QSize leastInitialSize(640, 480);
constexpr int charactersPerLine = 100;
constexpr int linesOfPage = 30;
constexpr int leastListWidth = 190;
constexpr int charactersOfTopic = 30;
constexpr int leastSearchWidth = 220;
constexpr int charactersOfSearch = 34;
constexpr int topicSpacing = 3;

int widthFor(int characters, int least, const QWidget &widget)
{
    return std::max(least, characters * widget.fontMetrics().averageCharWidth());
}

QSize initialSize(const QWidget &window)
{
    const QSize wanted(widthFor(charactersPerLine, leastInitialSize.width(), window),
        std::max(leastInitialSize.height(), linesOfPage * window.fontMetrics().lineSpacing()));
    return wanted.boundedTo(window.screen()->availableSize());
}

QString lineFor(const HelpTopic &topic)
{
    if (topic.section.isEmpty()) {
        return topic.pageTitle;
    }
    return HelpWindow::tr("%1 › %2", "What the help's search found: a page and a section of it")
        .arg(topic.pageTitle, topic.section);
}
} // namespace

HelpWindow::HelpWindow(QWidget *parent)
    : HelpWindow(HelpBook(QStringLiteral(":/help"), QLocale()), parent)
{
}

HelpWindow::HelpWindow(const HelpBook &book, QWidget *parent)
    : QWidget(parent, Qt::Window)
    , m_book(book)
    , m_backButton(new QToolButton(this))
    , m_forwardButton(new QToolButton(this))
    , m_searchField(new QLineEdit(this))
    , m_topicList(new QListWidget(this))
    , m_browser(new HelpBrowser(book, this))
    , m_splitter(new QSplitter(this))
{
    setWindowTitle(tr("Tunedeck Help", "Title of the help window"));
    // Closing the player quits the program, even if this window is open.
    setAttribute(Qt::WA_QuitOnClose, false);
    m_browser->setAccessibleName(tr("Page", "For accessibility: the text of the help page"));
    setUpButtons();
    setUpSearch();
    setUpTopics();
    setUpKeys();
    layOut();
    makeRoomForTexts();
    listTopics();
}

void HelpWindow::openHelpAnchor(const QString &anchor, const QString &inBook)
{
    if (inBook != bundleInfo(u"CFBundleHelpBookName")) {
        return;
    }
    m_searchField->clear();
    if (const auto topic = m_book.topicAt(anchor)) {
        m_browser->open(*topic);
    } else if (!m_book.contents().isEmpty()) {
        m_browser->open(m_book.contents().first());
    }
    m_browser->setFocus();
    bringToFront(*this);
}

void HelpWindow::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange) {
        makeRoomForTexts();
    }
}

void HelpWindow::setUpButtons()
{
    m_backButton->setArrowType(Qt::LeftArrow);
    m_forwardButton->setArrowType(Qt::RightArrow);
    setName(*m_backButton, tr("Back", "Button of the help window: to the page shown before"));
    setName(*m_forwardButton, tr("Forward", "Button of the help window: undoes Back"));
    for (QToolButton *button : {m_backButton, m_forwardButton}) {
        button->setAutoRaise(true);
        button->setEnabled(false);
        button->setFocusPolicy(Qt::StrongFocus);
    }
    connect(m_backButton, &QToolButton::clicked, m_browser, &HelpBrowser::backward);
    connect(m_forwardButton, &QToolButton::clicked, m_browser, &HelpBrowser::forward);
    connect(m_browser, &HelpBrowser::backwardAvailable, m_backButton, &QToolButton::setEnabled);
    connect(m_browser, &HelpBrowser::forwardAvailable, m_forwardButton, &QToolButton::setEnabled);
}

void HelpWindow::setUpSearch()
{
    installAccessibleLineEdits();
    m_searchField->setAccessibleName(tr("Search the help", "For accessibility: the help window's search field"));
    m_searchField->setPlaceholderText(tr("Search", "In the help window's empty search field"));
    m_searchField->setClearButtonEnabled(true);
    connect(m_searchField, &QLineEdit::textChanged, this, &HelpWindow::listTopics);
    connect(m_searchField, &QLineEdit::returnPressed, this, [this] { openTopic(m_topicList->item(0)); });
}

void HelpWindow::setUpTopics()
{
    m_topicList->setWordWrap(true);
    // Otherwise the list elides the first of two lines.
    m_topicList->setTextElideMode(Qt::ElideNone);
    m_topicList->setSpacing(topicSpacing);
    m_topicList->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    // The keyboard walks through the list before it opens a page, so that Back does not walk through it again.
    connect(m_topicList, &QListWidget::itemClicked, this, &HelpWindow::openTopic);
    connect(m_topicList, &QListWidget::itemActivated, this, &HelpWindow::openTopic);
    // The browser still returns the former page.
    connect(
        m_browser, &HelpBrowser::sourceChanged, this, [this](const QUrl &source) { selectPage(source.fileName()); });
}

void HelpWindow::setUpKeys()
{
    addKeys(QKeySequence::keyBindings(QKeySequence::Find), [this] { focusSearch(); });
    addKeys(QKeySequence::keyBindings(QKeySequence::Cancel), [this] { cancel(); });
    addKeys(QKeySequence::keyBindings(QKeySequence::Close), [this] { close(); });
    addKeys(QKeySequence::keyBindings(QKeySequence::Back), [this] { m_browser->backward(); });
    addKeys(QKeySequence::keyBindings(QKeySequence::Forward), [this] { m_browser->forward(); });
    // Many keyboards have plus on the key of equals, with Shift. Ctrl and that key must work without Shift.
    addKeys({QKeySequence::ZoomIn, Qt::CTRL | Qt::Key_Equal}, [this] { m_browser->zoomBy(1); });
    addKeys({QKeySequence::ZoomOut}, [this] { m_browser->zoomBy(-1); });
    addKeys({Qt::CTRL | Qt::Key_0}, [this] { m_browser->resetZoom(); });
}

void HelpWindow::layOut()
{
    auto *bar = new QHBoxLayout;
    bar->addWidget(m_backButton);
    bar->addWidget(m_forwardButton);
    bar->addStretch();
    bar->addWidget(m_searchField);

    m_splitter->setChildrenCollapsible(false);
    m_splitter->addWidget(m_topicList);
    m_splitter->addWidget(m_browser);
    m_splitter->setStretchFactor(1, 1);

    auto *layout = new QVBoxLayout(this);
    layout->addLayout(bar);
    layout->addWidget(m_splitter, 1);
    const std::initializer_list<QWidget *> order{m_backButton, m_forwardButton, m_searchField, m_topicList, m_browser};
    for (auto control = order.begin(); control + 1 != order.end(); ++control) {
        setTabOrder(*control, *(control + 1));
    }
}

void HelpWindow::makeRoomForTexts()
{
    resize(size().expandedTo(initialSize(*this)));
    m_searchField->setMaximumWidth(widthFor(charactersOfSearch, leastSearchWidth, *this));
    const int listWidth = widthFor(charactersOfTopic, leastListWidth, *this);
    m_splitter->setSizes({listWidth, width() - listWidth});
}

void HelpWindow::addKeys(const QList<QKeySequence> &keys, const std::function<void()> &command)
{
    auto *shortcut = new QShortcut(this);
    shortcut->setKeys(keys);
    connect(shortcut, &QShortcut::activated, this, command);
}

void HelpWindow::listTopics()
{
    const bool isSearching = !m_searchField->text().trimmed().isEmpty();
    m_topics = isSearching ? m_book.search(m_searchField->text()) : m_book.contents();
    m_topicList->clear();
    for (const HelpTopic &topic : std::as_const(m_topics)) {
        m_topicList->addItem(lineFor(topic));
    }
    m_topicList->setAccessibleName(isSearching ? tr("Search results", "For accessibility: what the help's search found")
                                               : tr("Contents", "For accessibility: the list of the help's pages"));
    if (m_topics.isEmpty()) {
        auto *nothing = new QListWidgetItem(tr("Nothing found", "In place of what the help's search found"));
        nothing->setFlags(Qt::NoItemFlags);
        m_topicList->addItem(nothing);
    }
    selectPage(m_browser->page());
}

void HelpWindow::openTopic(const QListWidgetItem *item)
{
    const int row = m_topicList->row(item);
    if (row >= 0 && row < m_topics.size()) {
        m_browser->open(m_topics.at(row));
    }
}

void HelpWindow::selectPage(const QString &page)
{
    const auto isShown = [&page](const HelpTopic &topic) { return topic.page == page; };
    // If a search found several topics on this page, the list keeps the one that the reader chose.
    if (std::ranges::count_if(m_topics, isShown) == 1) {
        const auto found = std::find_if(m_topics.cbegin(), m_topics.cend(), isShown);
        m_topicList->setCurrentRow(static_cast<int>(found - m_topics.cbegin()));
    }
}

void HelpWindow::focusSearch()
{
    m_searchField->setFocus(Qt::ShortcutFocusReason);
    m_searchField->selectAll();
}

void HelpWindow::cancel()
{
    if (m_searchField->text().isEmpty()) {
        close();
    } else {
        m_searchField->clear();
    }
}

} // namespace tunedeck
