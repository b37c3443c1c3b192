// SPDX-License-Identifier: MIT
#include "platform/fontConfiguration.h"
#include "support/registerTest.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

#include <fontconfig/fontconfig.h>

using namespace Qt::StringLiterals;

namespace tunedeck {

namespace {
/// Encrypted as the second part of a Type 1 font.
QByteArray encrypted(const QByteArray &text)
{
    quint16 key = 55665;
    QByteArray result;
    for (const char letter : text) {
        const auto cipher = static_cast<quint8>(static_cast<quint8>(letter) ^ (key >> 8));
        key = static_cast<quint16>((cipher + key) * 52845U + 22719U);
        result.append(static_cast<char>(cipher));
    }
    return result.toHex();
}

/// A Type 1 font of the family "Old" with one empty glyph.
QByteArray type1Font()
{
    return "%!PS-AdobeFont-1.0: Old 1\n11 dict begin\n/FontInfo 1 dict dup begin /FamilyName (Old) readonly def end "
           "def\n/FontName /Old def\n/PaintType 0 def\n/FontType 1 def\n/FontMatrix [0.001 0 0 0.001 0 0] def\n"
           "/Encoding StandardEncoding def\n/FontBBox {0 0 500 500} def\ncurrentdict end\ncurrentfile eexec\n"
        + encrypted("0000dup /Private 2 dict dup begin /lenIV -1 def\n2 index /CharStrings 1 dict dup begin\n"
                    "/.notdef 4 RD \x8b\x8b\x0d\x0e ND\nend end")
        + "\n";
}

/// Fontconfig's settings, with a folder of fonts that is empty at first, and a folder for their cache.
class Settings {
public:
    explicit Settings(const QByteArray &rest = {})
    {
        write(u"fonts.conf"_s,
            "<?xml version=\"1.0\"?><!DOCTYPE fontconfig SYSTEM \"urn:fontconfig:fonts.dtd\"><fontconfig><dir>"
                + path(u"fonts"_s) + "</dir><cachedir>" + path(u"cache"_s) + "</cachedir>" + rest + "</fontconfig>");
        QDir(m_folder.path()).mkdir(u"fonts"_s);
        qputenv("FONTCONFIG_FILE", path(u"fonts.conf"_s));
    }
    ~Settings() { qunsetenv("FONTCONFIG_FILE"); }
    Settings(const Settings &) = delete;
    Settings &operator=(const Settings &) = delete;

    void addType1Font() const { write(u"fonts/old.pfa"_s, type1Font()); }
    void addFont(const QString &file) const { QFile::copy(file, m_folder.filePath(u"fonts/new"_s)); }

private:
    [[nodiscard]] QByteArray path(const QString &name) const { return m_folder.filePath(name).toUtf8(); }

    void write(const QString &name, const QByteArray &content) const
    {
        QFile file(m_folder.filePath(name));
        if (file.open(QIODevice::WriteOnly)) {
            file.write(content);
        }
    }

    QTemporaryDir m_folder;
};

QString textOf(const FcPattern *font, const char *property)
{
    FcChar8 *text = nullptr;
    return FcPatternGetString(font, property, 0, &text) == FcResultMatch
        ? QFile::decodeName(reinterpret_cast<const char *>(text))
        : QString();
}

/// The files of the fonts that are no Type 1 fonts, in alphabetical order, then "Type 1" for each that is one. Empty
/// for null.
QStringList filesOfFonts(const FontConfiguration &configuration)
{
    if (!configuration) {
        return {};
    }
    QStringList files;
    QStringList type1;
    const FcFontSet *fonts = FcConfigGetFonts(static_cast<FcConfig *>(configuration.get()), FcSetSystem);
    for (int index = 0; fonts && index < fonts->nfont; ++index) {
        const QString format = textOf(fonts->fonts[index], FC_FONTFORMAT);
        if (format == u"Type 1") {
            type1.append(format);
        } else {
            files.append(textOf(fonts->fonts[index], FC_FILE));
        }
    }
    files.sort();
    return files + type1;
}

QString anInstalledFont()
{
    return filesOfFonts(FontConfiguration(FcInitLoadConfigAndFonts())).value(0);
}
} // namespace

class FontConfigurationTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void itHasTheFontsThatFontconfigFindsByItselfExceptType1()
    {
        const FontConfiguration ours = readFontConfiguration();
        QVERIFY(ours);
        QStringList expected = filesOfFonts(FontConfiguration(FcInitLoadConfigAndFonts()));
        expected.removeAll(u"Type 1"_s);
        QVERIFY(!expected.isEmpty());
        QCOMPARE(filesOfFonts(ours), expected);
    }

    void aType1FontIsLeftOut()
    {
        const QString font = anInstalledFont();
        const Settings settings;
        settings.addType1Font();
        settings.addFont(font);
        QStringList expected = filesOfFonts(FontConfiguration(FcInitLoadConfigAndFonts()));
        QCOMPARE(expected.removeAll(u"Type 1"_s), 1);
        QVERIFY(!expected.isEmpty());
        QCOMPARE(filesOfFonts(readFontConfiguration()), expected);
    }

    void type1FontsAloneAreLeftToFontconfig()
    {
        const Settings settings;
        settings.addType1Font();
        QVERIFY(!readFontConfiguration());
    }

    void theUserMayAskForType1Fonts()
    {
        const Settings settings("<selectfont><acceptfont><pattern><patelt name=\"fontformat\"><string>Type 1</string>"
                                "</patelt></pattern></acceptfont></selectfont>");
        settings.addType1Font();
        QCOMPARE(filesOfFonts(readFontConfiguration()), {u"Type 1"_s});
    }

    void fontconfigUsesIt()
    {
        const FontConfiguration configuration = readFontConfiguration();
        useFontConfiguration(configuration);
        QCOMPARE(static_cast<void *>(FcConfigGetCurrent()), configuration.get());
    }

    void withoutOneFontconfigKeepsItsOwn()
    {
        const FcConfig *before = FcConfigGetCurrent();
        useFontConfiguration(nullptr);
        QCOMPARE(FcConfigGetCurrent(), before);
    }

    void settingsWithoutACacheFolderAreLeftToFontconfig()
    {
        const QString font = anInstalledFont();
        QTemporaryDir folder;
        QFile settings(folder.filePath(u"fonts.conf"_s));
        QVERIFY(settings.open(QIODevice::WriteOnly));
        settings.write("<fontconfig><dir>" + QFileInfo(font).path().toUtf8() + "</dir></fontconfig>");
        settings.close();
        qputenv("FONTCONFIG_FILE", settings.fileName().toUtf8());
        const FontConfiguration configuration = readFontConfiguration();
        qunsetenv("FONTCONFIG_FILE");
        QVERIFY(!configuration);
    }
};

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::FontConfigurationTest, QCoreApplication)
#include "FontConfigurationTest.moc"
