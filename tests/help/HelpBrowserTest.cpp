// SPDX-License-Identifier: MIT
#include "help/HelpBrowser.h"

#include "BookFolder.h"
#include "support/registerTest.h"

#include <QApplication>
#include <QDesktopServices>
#include <QPalette>
#include <QRegularExpression>
#include <QScrollBar>
#include <QTest>
#include <QTextBlock>
#include <QWheelEvent>

namespace tunedeck {

namespace {
/// Stands in for the desktop's web browser.
class WebBrowser : public QObject {
    Q_OBJECT

public:
    WebBrowser()
    {
        for (const QString &scheme : schemes) {
            QDesktopServices::setUrlHandler(scheme, this, "open");
        }
    }
    ~WebBrowser() override
    {
        for (const QString &scheme : schemes) {
            QDesktopServices::unsetUrlHandler(scheme);
        }
    }

    QList<QUrl> opened;

public Q_SLOTS:
    void open(const QUrl &url) { opened.append(url); }

private:
    const QStringList schemes{
        QStringLiteral("http"), QStringLiteral("https"), QStringLiteral("file"), QStringLiteral("javascript")};
};

QByteArray pageWith(const QByteArray &body)
{
    return "<html><head><title>T</title></head><body><h1><a name=\"A\">T</a></h1>" + body + "</body></html>";
}

QColor colorOfLink(const QTextBrowser &browser)
{
    for (QTextBlock block = browser.document()->begin(); block.isValid(); block = block.next()) {
        for (auto part = block.begin(); !part.atEnd(); ++part) {
            if (!part.fragment().charFormat().anchorHref().isEmpty()) {
                return part.fragment().charFormat().foreground().color();
            }
        }
    }
    return {};
}
} // namespace

class HelpBrowserTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }
    void cleanup() { QApplication::setPalette(QPalette()); }

    void aTopicIsShownAtItsAnchor()
    {
        BookFolder folder;
        folder.write(QStringLiteral("en/1.html"),
            pageWith(QByteArray("<p>line</p>").repeated(100) + "<h2><a name=\"B\">B</a></h2>"
                + QByteArray("<p>line</p>").repeated(100)));
        const HelpBook book = folder.book();
        HelpBrowser browser(book);
        browser.resize(300, 200);
        browser.show();
        QCOMPARE(browser.page(), QString());
        browser.open(*book.topicAt(QStringLiteral("B")));
        QCOMPARE(browser.page(), QStringLiteral("1.html"));
        QTRY_VERIFY(browser.verticalScrollBar()->value() > 500);
        browser.open(*book.topicAt(QStringLiteral("A")));
        QTRY_COMPARE(browser.verticalScrollBar()->value(), 0);
    }

    void linksInTheBookMoveInIt()
    {
        BookFolder folder;
        folder.write(QStringLiteral("en/1.html"), pageWith("<p><a href=\"2.html#B\">two</a></p>"));
        folder.write(QStringLiteral("en/2.html"), pageWith("<p><a name=\"B\">here</a></p>"));
        const HelpBook book = folder.book();
        HelpBrowser browser(book);
        browser.open(book.contents().first());
        follow(browser, QStringLiteral("help:/2.html#B"));
        QCOMPARE(browser.page(), QStringLiteral("2.html"));
        QVERIFY(browser.toPlainText().contains(QStringLiteral("here")));
        browser.backward();
        QCOMPARE(browser.page(), QStringLiteral("1.html"));
    }

    void theKeyboardFollowsLinksToo()
    {
        BookFolder folder;
        folder.write(QStringLiteral("en/1.html"), pageWith("<p><a href=\"2.html\">two</a></p>"));
        folder.write(QStringLiteral("en/2.html"), pageWith({}));
        const HelpBook book = folder.book();
        HelpBrowser browser(book);
        browser.open(book.contents().first());
        browser.show();
        browser.setFocus();
        QVERIFY(QTest::qWaitForWindowActive(&browser));
        QTest::keyClick(&browser, Qt::Key_Tab);
        QTest::keyClick(&browser, Qt::Key_Return);
        QCOMPARE(browser.page(), QStringLiteral("2.html"));
    }

    void onlyHttpsLeavesTheBook()
    {
        WebBrowser web;
        BookFolder folder;
        folder.write(QStringLiteral("en/1.html"), pageWith("<p>text</p>"));
        const HelpBook book = folder.book();
        HelpBrowser browser(book);
        browser.open(book.contents().first());
        for (const auto *link : {"http://tunedeck.example/", "file:///etc/passwd", "javascript:alert(1)",
                 "help:/nowhere.html", "help://host/1.html?x", ""}) {
            follow(browser, QString::fromLatin1(link));
        }
        QVERIFY(web.opened.isEmpty());
        follow(browser, QStringLiteral("https://tunedeck.example/"));
        QCOMPARE(web.opened, QList<QUrl>{QUrl(QStringLiteral("https://tunedeck.example/"))});
        QCOMPARE(browser.page(), QStringLiteral("1.html"));
        QVERIFY(browser.toPlainText().contains(QStringLiteral("text")));
    }

    void nothingButTheBookIsLoaded()
    {
        BookFolder folder;
        folder.writePage(QStringLiteral("en/1.html"), QStringLiteral("First"), {});
        HelpBrowser browser(folder.book());
        for (const auto *address : {"file:///etc/passwd", "https://tunedeck.example/a.png", "/etc/passwd", "1.html"}) {
            for (const int type : {int(QTextDocument::HtmlResource), int(QTextDocument::ImageResource),
                     int(QTextDocument::StyleSheetResource)}) {
                QVERIFY(!browser.loadResource(type, QUrl(QString::fromLatin1(address))).isValid());
            }
        }
        QVERIFY(browser.loadResource(QTextDocument::HtmlResource, QUrl(QStringLiteral("help:/1.html")))
                .toString()
                .contains(QStringLiteral("First")));
    }

    void aPageFollowsThePaletteAndStaysWhereItWasScrolledTo()
    {
        BookFolder folder;
        folder.write(QStringLiteral("en/1.html"),
            pageWith("<p><a href=\"#A\">link</a></p>" + QByteArray("<p>line</p>").repeated(100)));
        const HelpBook book = folder.book();
        HelpBrowser browser(book);
        browser.resize(300, 200);
        browser.show();
        browser.open(book.contents().first());
        browser.verticalScrollBar()->setValue(200);
        QVERIFY(colorOfLink(browser).lightnessF() < 0.5);
        QApplication::setPalette(QPalette(QColor(0x32, 0x32, 0x32), QColor(0x28, 0x28, 0x28)));
        QTRY_VERIFY(colorOfLink(browser).lightnessF() > 0.7);
        QCOMPARE(browser.verticalScrollBar()->value(), 200);
    }

    void theTextIsZoomedWithinLimits()
    {
        HelpBrowser browser(BookFolder().book());
        const double size = browser.font().pointSizeF();
        browser.zoomBy(2);
        QCOMPARE(browser.font().pointSizeF(), size + 2);
        browser.zoomBy(1000);
        QCOMPARE(browser.font().pointSizeF(), size + 15);
        browser.zoomBy(-1000);
        QCOMPARE(browser.font().pointSizeF(), size - 3);
        browser.resetZoom();
        QCOMPARE(browser.font().pointSizeF(), size);
    }

    void theWheelZoomsWithinTheSameLimits()
    {
        HelpBrowser browser(BookFolder().book());
        browser.show();
        const double size = browser.font().pointSizeF();
        turnWheel(browser, 120, Qt::ControlModifier);
        QCOMPARE(browser.font().pointSizeF(), size + 1);
        turnWheel(browser, 60, Qt::ControlModifier);
        QCOMPARE(browser.font().pointSizeF(), size + 1);
        turnWheel(browser, 60, Qt::ControlModifier);
        QCOMPARE(browser.font().pointSizeF(), size + 2);
        turnWheel(browser, 120 * 1000, Qt::ControlModifier);
        QCOMPARE(browser.font().pointSizeF(), size + 15);
        turnWheel(browser, -120 * 1000, Qt::ControlModifier);
        QCOMPARE(browser.font().pointSizeF(), size - 3);
        turnWheel(browser, 120, Qt::NoModifier);
        QCOMPARE(browser.font().pointSizeF(), size - 3);
        browser.resetZoom();
        QCOMPARE(browser.font().pointSizeF(), size);
    }

private:
    static void turnWheel(HelpBrowser &browser, int angle, Qt::KeyboardModifiers modifiers)
    {
        QWidget &view = *browser.viewport();
        const QPointF place = view.rect().center();
        QWheelEvent event(
            place, view.mapToGlobal(place), {}, {0, angle}, Qt::NoButton, modifiers, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(&view, &event);
    }
    static void follow(HelpBrowser &browser, const QString &link) { Q_EMIT browser.anchorClicked(QUrl(link)); }
};

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::HelpBrowserTest, QApplication)
#include "HelpBrowserTest.moc"
