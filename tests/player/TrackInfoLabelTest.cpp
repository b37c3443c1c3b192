// SPDX-License-Identifier: MIT
#include "TrackInfoLabel.h"

#include <QImage>
#include <QRegularExpression>
#include <QTest>

using namespace tunedeck;

class TrackInfoLabelTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void severalStringsStandOnOneLine()
    {
        TrackInfoLabel label;
        label.setDisplayStrings({QStringLiteral("Track"), QStringLiteral("Artist"), QStringLiteral("Album")});
        QCOMPARE(label.text(), QStringLiteral("Track \u2013 Artist \u2013 Album"));
    }

    void anEmptyListClearsTheLine()
    {
        TrackInfoLabel label;
        label.setDisplayStrings({QStringLiteral("Track")});
        label.setDisplayStrings({});
        QVERIFY(label.text().isEmpty());
        QVERIFY(label.displayStrings().isEmpty());
    }

    void markupIsShownAsItIs()
    {
        TrackInfoLabel markup;
        markup.resize(200, 20);
        markup.setDisplayStrings({QStringLiteral("<b></b>")});
        TrackInfoLabel empty;
        empty.resize(200, 20);
        QVERIFY(markup.grab().toImage() != empty.grab().toImage());
    }

    void aLineThatIsTooWideIsCut()
    {
        TrackInfoLabel label;
        label.resize(60, 20);
        label.setDisplayStrings({QString(500, u'a')});
        const QImage cut = label.grab().toImage();
        label.setDisplayStrings({QString(500, u'a') + u'b'});
        QCOMPARE(label.grab().toImage(), cut);
        QCOMPARE(label.text().size(), 501);
    }
};

QTEST_MAIN(TrackInfoLabelTest)
#include "TrackInfoLabelTest.moc"
