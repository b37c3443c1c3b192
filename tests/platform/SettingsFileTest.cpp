// SPDX-License-Identifier: MIT
#include "platform/settings/SettingsFile.h"

#include "platform/UserDefaults.h"
#include "support/failOnWarning.h"
#include "support/registerTest.h"

#include <QFile>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>
#include <QVariantHash>

using namespace Qt::StringLiterals;

namespace tunedeck {

class SettingsFileTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnWarning(); }

    void valuesAreReadAsQtWritesThem_data()
    {
        QTest::addColumn<QByteArray>("line");
        QTest::addColumn<QVariant>("value");
        const auto row = [](const char *name, const QByteArray &line, const QVariant &value) {
            QTest::newRow(name) << line << value;
        };
        row("a word", "a=word", u"word"_s);
        row("nothing", "a=", QString());
        row("spaces around", "a \t=\t one word \t", u"one word"_s);
        row("quoted spaces", "a=\" x \" ", u" x "_s);
        row("escaped space", "a=x\\x20", u"x "_s);
        row("quoted in parts", "a=\"one, \"  two", u"one, two"_s);
        row("a list", "a=one, two ,\"three, four\",", QStringList{u"one"_s, u"two"_s, u"three, four"_s, QString()});
        row("at signs", "a=@@Variant(), @@, b@@", QStringList{u"@Variant()"_s, u"@"_s, u"b@@"_s});
        row("letters", "a=\\n\\t\\\\\\\"\\'\\?\\z.", u"\n\t\\\"'?."_s);
        row("numbers", "a=\\x41\\x1F3B5g\\101\\x", QString(u"A\uF3B5gA"_s));
        row("accents", "a=\xC3\xA9\\xe9", u"\u00E9\u00E9"_s);
        row("two lines", "a=one \\\r\ntwo", u"one two"_s);
        row("a quoted line end", "a=\"one\ntwo\"", u"one\ntwo"_s);
        row("a comment", "a=one;two", u"one"_s);
        row("comments around", ";a=no\n\n ; a=no\na=one\n;a=no", u"one"_s);
        row("the last of two", "a=one\na=two", u"two"_s);
        row("an equals sign", "a=b=c", u"b=c"_s);
        row("a NUL", "a=@String(x\\0y)", u"x\0y"_s);
        row("bytes", "a=@ByteArray(\\xff\\0)", QByteArray("\xff\0", 2));
        row("no value", "a=one\na=@Invalid()", QVariant());
        row("another section", "[Other]\na=no", QVariant());
        row("the same section", "[Other]\nb=no\n[ GENERAL ] x\na=one", u"one"_s);
        row("an escaped key", "%61=one", u"one"_s);
    }
    void valuesAreReadAsQtWritesThem()
    {
        QFETCH(const QByteArray, line);
        QFETCH(const QVariant, value);
        const SettingsFile file = fileWith(line + '\n');
        const auto values = file.read();
        QVERIFY(values);
        QCOMPARE(values->value(u"a"_s), value);
        QCOMPARE(QSettings(file.path(), QSettings::IniFormat).value(u"a"_s), value);
    }

    void keysAreThoseOfQt()
    {
        const SettingsFile file = fileWith(
            "a\\b=1\n%E9%U20aC%=2\n/x=3\nx/=4\n=5\n[%General]\nc=6\n[d\\e f]\ng h=7\n[ i ]\n\\j=8\n[k]\nl\\\r\n=9\n");
        const auto values = file.read();
        QVERIFY(values);
        QCOMPARE(*values,
            (QVariantHash{
                {u"a/b"_s, u"1"_s}, {u"\u00E9\u20AC%"_s, u"2"_s}, {u"General/c"_s, u"6"_s}, {u"d/e f/g h"_s, u"7"_s}}));
    }

    /// Each key holds the name of its section.
    void aLongSectionDoesNotGrowWithItsLines()
    {
        QByteArray lines("a=1\n[" + QByteArray(500'000, 's') + "]\n");
        for (int i = 0; i < 50'000; ++i) {
            lines += QByteArray::number(i) + "=\n";
        }
        const auto values = fileWith(lines).read();
        QVERIFY(values);
        QCOMPARE(*values, (QVariantHash{{u"a"_s, u"1"_s}}));
    }

    /// Qt builds values of any type. The program has no QGuiApplication when it first reads its settings, and a picture
    /// ends it then.
    void aValueOfAnyOtherTypeIsNotBuilt_data()
    {
        QTest::addColumn<QByteArray>("value");
        QTest::newRow("a number") << QByteArray("@Variant(\\0\\0\\0\\x2\\0\\0\\0\\x5)");
        QTest::newRow("a picture") << QByteArray("@Variant(\\0\\0\\0\\x41\\0\\0\\0\\0)");
        QTest::newRow("lists in lists") << QByteArray(
            "@Variant(" + QByteArray("\\0\\0\\0\\x9\\0\\0\\0\\x1").repeated(50'000) + ")");
        QTest::newRow("lists in lists for a time")
            << QByteArray("@DateTime(" + QByteArray("\\0\\0\\0\\x9\\0\\0\\0\\0\\x1").repeated(45'000) + ")");
        QTest::newRow("a place") << QByteArray("@Point(1 2)");
        const QByteArray number("(\\0\\0\\0\\x2\\0\\0\\0\\x5)");
        QTest::newRow("in a list") << QByteArray("a, @Variant" + number);
        QTest::newRow("quoted") << QByteArray("\"@Variant" + number + '"');
        QTest::newRow("half quoted") << QByteArray("@\"Vari\"ant" + number);
        QTest::newRow("hexadecimal") << QByteArray("\\x40Variant" + number);
        QTest::newRow("long hexadecimal") << QByteArray("\\x10040Vari\\x61nt" + number);
        QTest::newRow("octal") << QByteArray("\\100Variant" + number);
        QTest::newRow("long octal") << QByteArray("\\200100Variant" + number);
        QTest::newRow("with an escape for nothing") << QByteArray("@\\zVariant" + number);
        QTest::newRow("with an escape for no number") << QByteArray("\"@Var\\xiant" + number + '"');
        QTest::newRow("spaces behind quotes") << QByteArray("\"@Var\" \t\"iant" + number + '"');
        QTest::newRow("with a mark of the byte order") << QByteArray("\\x40\xEF\xBB\xBFVariant" + number);
        QTest::newRow("with half a character") << QByteArray("@Variant\xC3\\x28\\0\\0\\0\\x2\\0\\0\\0\\x5\\x29");
        QTest::newRow("on two lines") << QByteArray("@Vari\\\nant" + number);
        QTest::newRow("on lines of other systems") << QByteArray("@Va\\\r\nri\\\n\rant" + number);
    }
    void aValueOfAnyOtherTypeIsNotBuilt()
    {
        QFETCH(const QByteArray, value);
        const auto values = fileWith("a=" + value + '\n').read();
        QVERIFY(values);
        const QVariant read = values->value(u"a"_s);
        QVERIFY2(read.typeId() == QMetaType::QString || read.typeId() == QMetaType::QStringList, read.typeName());
    }

    /// A player may choose such a name, and the user may pin it.
    void aNameThatReadsLikeATypeLosesNoSettings()
    {
        const QString path = m_folder.filePath(u"names.conf"_s);
        {
            UserDefaults settings(path);
            settings.setValue(u"pinned"_s, u"=@Variant(a"_s);
            settings.setValue(u"never"_s, QStringList{u"@Variant("_s, u"b,@Variant@DateTime("_s});
            settings.setValue(u"long"_s, u"@Variant(a)"_s);
            settings.setValue(u"\u00E9/ %"_s, u" \u00E9\uFEFF\n,\";@"_s);
        }
        const auto values = SettingsFile(path).read();
        QVERIFY(values);
        QCOMPARE(*values,
            (QVariantHash{{u"pinned"_s, u"=@Variant(a"_s},
                {u"never"_s, QStringList{u"@Variant("_s, u"b,@Variant@DateTime("_s}}, {u"long"_s, u"@Variant(a)"_s},
                {u"\u00E9/ %"_s, u" \u00E9\uFEFF\n,\";@"_s}}));
    }

private:
    SettingsFile fileWith(const QByteArray &lines)
    {
        QFile file(m_folder.filePath(u"%1.conf"_s.arg(++m_files)));
        if (!file.open(QIODevice::WriteOnly) || file.write("[General]\n" + lines) < 0) {
            qWarning("The file cannot be written.");
        }
        return SettingsFile(file.fileName());
    }

    const QTemporaryDir m_folder;
    int m_files = 0;
};

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::SettingsFileTest, QCoreApplication)
#include "SettingsFileTest.moc"
