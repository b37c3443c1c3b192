// SPDX-License-Identifier: MIT
#include "help/HelpBrowser.h"

#include "help/pageStyle.h"

#include <QDesktopServices>
#include <QEvent>
#include <QScrollBar>
#include <QWheelEvent>

#include <algorithm>

namespace tunedeck {

namespace {
constexpr QLatin1String bookScheme("help");
constexpr int pageMargin = 12;
constexpr int listIndent = 24;
/// In points.
constexpr int leastZoom = -3;
constexpr int mostZoom = 15;

QUrl addressOf(const HelpTopic &topic)
{
    QUrl address;
    address.setScheme(bookScheme);
    address.setPath(u'/' + topic.page);
    // A whole page is shown with its top margin, which is above the anchor.
    if (!topic.section.isEmpty()) {
        address.setFragment(topic.anchor);
    }
    return address;
}
} // namespace

HelpBrowser::HelpBrowser(const HelpBook &book, QWidget *parent)
    : QTextBrowser(parent)
    , m_book(book)
{
    setOpenLinks(false);
    connect(this, &QTextBrowser::anchorClicked, this, &HelpBrowser::follow);
    document()->setDocumentMargin(pageMargin);
    document()->setIndentWidth(listIndent);
    document()->setDefaultStyleSheet(pageStyle(palette()));
}

void HelpBrowser::open(const HelpTopic &topic)
{
    setSource(addressOf(topic));
}

QString HelpBrowser::page() const
{
    return source().fileName();
}

void HelpBrowser::zoomBy(int steps)
{
    const int zoom = std::clamp(m_zoom + steps, leastZoom, mostZoom);
    zoomIn(zoom - m_zoom);
    m_zoom = zoom;
}

void HelpBrowser::resetZoom()
{
    zoomBy(-m_zoom);
}

void HelpBrowser::wheelEvent(QWheelEvent *event)
{
    if (!event->modifiers().testFlag(Qt::ControlModifier)) {
        QTextBrowser::wheelEvent(event);
        return;
    }
    // A fine wheel turns by less than a notch at a time.
    m_turned += event->angleDelta().y();
    zoomBy(m_turned / QWheelEvent::DefaultDeltasPerStep);
    m_turned %= QWheelEvent::DefaultDeltasPerStep;
}

QVariant HelpBrowser::loadResource(int type, const QUrl &name)
{
    if (type != QTextDocument::HtmlResource || name.scheme() != bookScheme) {
        return {};
    }
    return m_book.html(name.fileName()).value_or(QString());
}

void HelpBrowser::changeEvent(QEvent *event)
{
    QTextBrowser::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) {
        reloadPage();
    }
}

void HelpBrowser::follow(const QUrl &link)
{
    if (link.scheme() == QLatin1String("https")) {
        QDesktopServices::openUrl(link);
    } else if (link.scheme() == bookScheme && m_book.html(link.fileName())) {
        setSource(link);
    }
}

void HelpBrowser::reloadPage()
{
    document()->setDefaultStyleSheet(pageStyle(palette()));
    if (source().isEmpty()) {
        return;
    }
    const int position = verticalScrollBar()->value();
    reload();
    verticalScrollBar()->setValue(position);
}

} // namespace tunedeck
