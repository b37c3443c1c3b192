// SPDX-License-Identifier: MIT
#include "help/HelpBook.h"
#include "help/HelpPage.h"
#include "support/registerTest.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QSet>
#include <QTest>
#include <QUrl>
#include <QXmlStreamReader>

namespace tunedeck {

namespace {
/// The parts of a page that only this test reads.
struct Markup {
    QStringList tags;
    QStringList links;
    QStringList anchors;
};

QByteArray contentsOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

Markup markupOf(const QByteArray &html)
{
    Markup markup;
    QXmlStreamReader xml(html);
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement) {
            continue;
        }
        markup.tags.append(xml.name().toString());
        const QXmlStreamAttributes attributes = xml.attributes();
        if (xml.name() == u"a" && attributes.hasAttribute(QLatin1String("href"))) {
            markup.links.append(attributes.value(QLatin1String("href")).toString());
        }
        if (xml.name() == u"a" && attributes.hasAttribute(QLatin1String("name"))) {
            markup.anchors.append(attributes.value(QLatin1String("name")).toString());
        }
    }
    return markup;
}

QStringList languages()
{
    return QDir(QStringLiteral(":/help")).entryList(QDir::Dirs);
}

QStringList pagesIn(const QString &language)
{
    return QDir(QStringLiteral(":/help/") + language).entryList(QDir::Files);
}

QByteArray pageOf(const QString &language, const QString &name)
{
    return contentsOf(QStringLiteral(":/help/%1/%2").arg(language, name));
}
} // namespace

/// Tests the program's own pages in all their languages.
class HelpPagesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void everyPageCanBeRead_data() { addPages(); }
    void everyPageCanBeRead()
    {
        QFETCH(QString, language);
        QFETCH(QString, name);
        const auto page = readHelpPage(pageOf(language, name));
        QVERIFY(page);
        QCOMPARE(page->sections.first().title, page->title);
        QVERIFY(!page->keywords.isEmpty());
        for (const HelpSection &section : page->sections) {
            QVERIFY2(!section.title.isEmpty(), qPrintable(section.anchor));
        }
    }

    void everyTagIsOneThatTheToolkitShows_data() { addPages(); }
    void everyTagIsOneThatTheToolkitShows()
    {
        QFETCH(QString, language);
        QFETCH(QString, name);
        const QSet<QString> shown{QStringLiteral("html"), QStringLiteral("head"), QStringLiteral("meta"),
            QStringLiteral("title"), QStringLiteral("body"), QStringLiteral("h1"), QStringLiteral("h2"),
            QStringLiteral("p"), QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("i"), QStringLiteral("ul"),
            QStringLiteral("ol"), QStringLiteral("li"), QStringLiteral("table"), QStringLiteral("tr"),
            QStringLiteral("th"), QStringLiteral("td")};
        const QStringList tags = markupOf(pageOf(language, name)).tags;
        QVERIFY(!tags.isEmpty());
        for (const QString &tag : tags) {
            QVERIFY2(shown.contains(tag), qPrintable(tag));
        }
    }

    void everyLinkLeadsSomewhere_data() { addPages(); }
    void everyLinkLeadsSomewhere()
    {
        QFETCH(QString, language);
        QFETCH(QString, name);
        const HelpBook book(QStringLiteral(":/help"), QLocale(language));
        const QStringList links = markupOf(pageOf(language, name)).links;
        for (const QString &link : links) {
            const QUrl url = QUrl(QStringLiteral("help:/") + name).resolved(QUrl(link));
            if (url.scheme() == QStringLiteral("https")) {
                continue;
            }
            QVERIFY2(book.html(url.fileName()), qPrintable(link));
            const auto topic = book.topicAt(url.fragment());
            QVERIFY2(!url.hasFragment() || (topic && topic->page == url.fileName()), qPrintable(link));
        }
    }

    void everyAnchorStandsForOnePlace()
    {
        QVERIFY(languages().contains(QStringLiteral("en")));
        for (const QString &language : languages()) {
            QStringList anchors;
            for (const QString &name : pagesIn(language)) {
                anchors += markupOf(pageOf(language, name)).anchors;
            }
            QVERIFY(anchors.size() > 50);
            QCOMPARE(QSet<QString>(anchors.cbegin(), anchors.cend()).size(), anchors.size());
        }
    }

    void aTranslatedPageHasTheAnchorsOfTheEnglishOne_data() { addPages(); }
    void aTranslatedPageHasTheAnchorsOfTheEnglishOne()
    {
        QFETCH(QString, language);
        QFETCH(QString, name);
        QCOMPARE(markupOf(pageOf(language, name)).anchors, markupOf(pageOf(QStringLiteral("en"), name)).anchors);
    }

    void thePagesThatTheProgramOpensAreThere_data()
    {
        QTest::addColumn<QString>("anchor");
        QTest::addColumn<QString>("page");
        QTest::newRow("the first page") << QStringLiteral("Welcome") << QStringLiteral("01-welcome.html");
        QTest::newRow("the preferences' help")
            << QStringLiteral("KeepingUpToDate") << QStringLiteral("09-updates.html");
        QTest::newRow("the menu's terms") << QStringLiteral("TermsConditions") << QStringLiteral("12-terms.html");
    }
    void thePagesThatTheProgramOpensAreThere()
    {
        QFETCH(QString, anchor);
        QFETCH(QString, page);
        const HelpBook book(QStringLiteral(":/help"), QLocale(QLocale::English));
        const auto topic = book.topicAt(anchor);
        QVERIFY(topic);
        QCOMPARE(topic->page, page);
        QVERIFY(topic->section.isEmpty());
    }

    void theProblemsPageSaysHowToSwitchLoggingOn()
    {
        for (const QString &language : languages()) {
            const QString page = QString::fromUtf8(pageOf(language, QStringLiteral("11-troubleshooting.html")));
            QVERIFY2(page.contains(QStringLiteral("<b>QT_LOGGING_RULES=\"tunedeck.*=true\" tunedeck</b>")),
                qPrintable(language));
        }
    }

    void whatReadersAskForIsFoundFirst_data()
    {
        QTest::addColumn<QString>("question");
        QTest::addColumn<QString>("anchor");
        QTest::newRow("shuffle") << QStringLiteral("shuffle") << QStringLiteral("Shuffle");
        QTest::newRow("shortcuts") << QStringLiteral("shortcuts") << QStringLiteral("Keyboard");
        QTest::newRow("m3u") << QStringLiteral("m3u") << QStringLiteral("Drawer");
        QTest::newRow("dark mode") << QStringLiteral("dark mode") << QStringLiteral("Preferences");
        QTest::newRow("wayland") << QStringLiteral("Wayland") << QStringLiteral("KeepAbove");
        QTest::newRow("radio") << QStringLiteral("radio station") << QStringLiteral("PlayAndPause");
        QTest::newRow("screen reader") << QStringLiteral("screen reader") << QStringLiteral("ScreenReader");
        QTest::newRow("logging") << QStringLiteral("logging") << QStringLiteral("Logging");
        QTest::newRow("licence") << QStringLiteral("licence") << QStringLiteral("Licence");
    }
    void whatReadersAskForIsFoundFirst()
    {
        QFETCH(QString, question);
        QFETCH(QString, anchor);
        const HelpBook book(QStringLiteral(":/help"), QLocale(QLocale::English));
        const QList<HelpTopic> found = book.search(question);
        QVERIFY(!found.isEmpty());
        QCOMPARE(found.first().anchor, anchor);
    }

private:
    static void addPages()
    {
        QTest::addColumn<QString>("language");
        QTest::addColumn<QString>("name");
        for (const QString &language : languages()) {
            for (const QString &name : pagesIn(language)) {
                QTest::addRow("%s/%s", qPrintable(language), qPrintable(name)) << language << name;
            }
        }
    }
};

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::HelpPagesTest, QCoreApplication)
#include "HelpPagesTest.moc"
