// SPDX-License-Identifier: MIT
#include "platform/fontConfiguration.h"
#include "support/registerTest.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <fontconfig/fontconfig.h>

using namespace Qt::StringLiterals;

namespace tunedeck {

namespace {
/// Lets fontconfig read `text` as its settings.
class Settings {
public:
    explicit Settings(const QByteArray &text)
    {
        QFile file(m_folder.filePath(u"fonts.conf"_s));
        if (file.open(QIODevice::WriteOnly)) {
            file.write("<?xml version=\"1.0\"?><!DOCTYPE fontconfig SYSTEM \"urn:fontconfig:fonts.dtd\">" + text);
        }
        qputenv("FONTCONFIG_FILE", file.fileName().toUtf8());
    }
    ~Settings() { qunsetenv("FONTCONFIG_FILE"); }
    Settings(const Settings &) = delete;
    Settings &operator=(const Settings &) = delete;

    [[nodiscard]] QByteArray cacheFolder() const
    {
        return "<cachedir>" + m_folder.filePath(u"cache"_s).toUtf8() + "</cachedir>";
    }

private:
    QTemporaryDir m_folder;
};

/// In alphabetical order.
QStringList filesOfFonts(const FontConfiguration &configuration)
{
    QStringList files;
    const FcFontSet *fonts = FcConfigGetFonts(static_cast<FcConfig *>(configuration.get()), FcSetSystem);
    for (int index = 0; fonts && index < fonts->nfont; ++index) {
        FcChar8 *file = nullptr;
        if (FcPatternGetString(fonts->fonts[index], FC_FILE, 0, &file) == FcResultMatch) {
            files.append(QFile::decodeName(reinterpret_cast<const char *>(file)));
        }
    }
    files.sort();
    return files;
}
} // namespace

class FontConfigurationTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void itHasTheFontsThatFontconfigFindsByItself()
    {
        const FontConfiguration ours = readFontConfiguration();
        QVERIFY(ours);
        const FontConfiguration fontconfigs(FcInitLoadConfigAndFonts());
        QVERIFY(!filesOfFonts(ours).isEmpty());
        QCOMPARE(filesOfFonts(ours), filesOfFonts(fontconfigs));
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
        const Settings settings("<fontconfig><dir>/nowhere</dir></fontconfig>");
        QVERIFY(!readFontConfiguration());
    }

    void settingsWithACacheFolderAreRead()
    {
        Settings settings("<fontconfig></fontconfig>");
        const Settings complete("<fontconfig>" + settings.cacheFolder() + "</fontconfig>");
        const FontConfiguration configuration = readFontConfiguration();
        QVERIFY(configuration);
        QCOMPARE(filesOfFonts(configuration), QStringList());
    }
};

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::FontConfigurationTest, QCoreApplication)
#include "FontConfigurationTest.moc"
