// SPDX-License-Identifier: MIT
#include "music/menuText.h"
#include "support/registerTest.h"

#include <QRegularExpression>
#include <QTest>

using namespace tunedeck;
using namespace Qt::StringLiterals;

class menuTextTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void aTextIsOneShortLineWithoutInvisibleCharacters_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("shown");

        QTest::newRow("empty") << u""_s << u""_s;
        QTest::newRow("ordinary") << u"Pixel: Podcast"_s << u"Pixel: Podcast"_s;
        QTest::newRow("ampersand") << u"Salt & Pepper"_s << u"Salt & Pepper"_s;
        QTest::newRow("markup") << u"<b>VLC</b>"_s << u"<b>VLC</b>"_s;
        QTest::newRow("lines") << u" VLC\n\tmedia\u2028 player\n"_s << u"VLC media player"_s;
        QTest::newRow("control characters") << u"V\u0007L\u0085C"_s << u"V L C"_s;
        QTest::newRow("spaces alone") << u" \n "_s << u""_s;
        QTest::newRow("override") << u"\u202elive\u202c & kicking"_s << u"live & kicking"_s;
        QTest::newRow("isolates and marks") << u"\u2066a\u2067b\u2068c\u2069\u200ed\u200fe\u061c"_s << u"abcde"_s;
        QTest::newRow("embeddings") << u"\u202aa\u202bb\u202d"_s << u"ab"_s;
        QTest::newRow("nothing to see") << u"\u200b\ufeff\u2060"_s << u""_s;
        QTest::newRow("right to left") << u"\u05e0\u05d2\u05df"_s << u"\u05e0\u05d2\u05df"_s;
        QTest::newRow("joined") << u"\u0646\u200c\u0645"_s << u"\u0646\u200c\u0645"_s;
        QTest::newRow("as long as may be") << QString(60, u'x') << QString(60, u'x');
        QTest::newRow("too long") << QString(61, u'x') << QString(59, u'x') + u'…';
        QTest::newRow("endless") << QString(10'000'000, u'x') << QString(59, u'x') + u'…';
        QTest::newRow("cut at a space") << QString(58, u'x') + u" yz"_s << QString(58, u'x') + u'…';
        QTest::newRow("no half character") << QString(58, u'x') + u"\U0001F3B5yz"_s << QString(58, u'x') + u'…';
    }
    void aTextIsOneShortLineWithoutInvisibleCharacters()
    {
        QFETCH(const QString, text);
        QTEST(menuText(text), "shown");
    }
};

TUNEDECK_TEST(menuTextTest, QCoreApplication)
#include "menuTextTest.moc"
