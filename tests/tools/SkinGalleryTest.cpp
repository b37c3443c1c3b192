// SPDX-License-Identifier: MIT
#include "support/registerTest.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QImage>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <cstdlib>

using namespace Qt::StringLiterals;

namespace {
constexpr int patience = 60'000;

struct Run {
    int exitCode = -1;
    QString output;
    QString errors;
};

Run runGallery(const QStringList &arguments)
{
    QTemporaryDir runtime;
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"XDG_RUNTIME_DIR"_s, runtime.path());
    environment.remove(u"QT_QPA_PLATFORM"_s);
    environment.remove(u"DISPLAY"_s);
    environment.remove(u"WAYLAND_DISPLAY"_s);
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(QStringLiteral(SKIN_GALLERY), arguments);
    if (!process.waitForFinished(patience) || process.exitStatus() != QProcess::NormalExit) {
        return {};
    }
    return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
        QString::fromUtf8(process.readAllStandardError())};
}

/// The difference, of 255, that the rounding of another machine may make.
constexpr int tolerance = 3;

struct Difference {
    int worst = 0; ///< of any component of any pixel, premultiplied, of 255
    QPoint where;
    QImage picture; ///< black where there is none, red where there is too much
};

int distance(QRgb a, QRgb b)
{
    return std::max({std::abs(qRed(a) - qRed(b)), std::abs(qGreen(a) - qGreen(b)), std::abs(qBlue(a) - qBlue(b)),
        std::abs(qAlpha(a) - qAlpha(b))});
}

/// Compares pictures of the same size.
Difference difference(const QImage &picture, const QImage &golden)
{
    const QImage a = picture.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    const QImage b = golden.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    Difference found{.worst = 0, .where = {}, .picture = QImage(a.size(), QImage::Format_RGB32)};
    for (int y = 0; y < a.height(); ++y) {
        const auto *lineOfA = reinterpret_cast<const QRgb *>(a.constScanLine(y));
        const auto *lineOfB = reinterpret_cast<const QRgb *>(b.constScanLine(y));
        for (int x = 0; x < a.width(); ++x) {
            const int off = distance(lineOfA[x], lineOfB[x]);
            found.picture.setPixel(x, y, off > tolerance ? qRgb(off, 0, 0) : qRgb(off, off, off));
            if (off > found.worst) {
                found.worst = off;
                found.where = {x, y};
            }
        }
    }
    return found;
}

QString goldenFolder()
{
    return QStringLiteral(GOLDEN_PICTURES);
}

QStringList picturesIn(const QString &folder)
{
    QStringList names;
    QDirIterator files(folder, {u"*@*.png"_s}, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        names.append(QDir(folder).relativeFilePath(files.next()));
    }
    names.sort();
    return names;
}

/// The variants of a class and what they measure, in points.
struct Row {
    QString className;
    QSize size;
    QStringList variants;
};

const QList<Row> &rows()
{
    static const QList<Row> rows = {
        {u"WindowBackground"_s, {450, 64}, {u"main"_s, u"inactive"_s}},
        {u"PinstripeView"_s, {64, 32}, {u"key"_s, u"inactive"_s}},
        {u"LCDBackgroundView"_s, {220, 52}, {u"lcd"_s}},
        {u"PlayerButton"_s, {35, 35},
            {u"pause"_s, u"play"_s, u"stop"_s, u"play-pressed"_s, u"play-pressed-graphite"_s}},
        {u"TunedeckPlayerButton"_s, {25, 25},
            {u"backward"_s, u"forward"_s, u"forward-pressed"_s, u"forward-pressed-graphite"_s, u"forward-disabled"_s}},
        {u"WindowControlButton"_s, {14, 14},
            {u"close"_s, u"close-hover"_s, u"close-hover-pressed"_s, u"close-hover-graphite"_s, u"minimize"_s,
                u"minimize-hover"_s, u"minimize-hover-pressed"_s, u"minimize-hover-graphite"_s, u"maximize"_s,
                u"maximize-hover"_s, u"maximize-hover-pressed"_s, u"maximize-hover-graphite"_s}},
        {u"VolumeSliderCell"_s, {100, 20}, {u"bar"_s}},
        {u"ClassicAudioProgressSliderCell"_s, {200, 20}, {u"0"_s, u"50"_s, u"100"_s, u"disabled"_s}},
        {u"DrawerBackground"_s, {450, 64}, {u"main"_s, u"inactive"_s}},
        {u"ShadowView"_s, {450, 40}, {u"shadow"_s}},
        {u"MetalButton"_s, {44, 30}, {u"bezel"_s, u"bezel-pressed"_s}},
        {u"MetalGlyphButton"_s, {44, 30}, {u"bezel"_s, u"bezel-pressed"_s}},
        {u"MetalPopupButton"_s, {180, 22}, {u"bezel"_s, u"bezel-pressed"_s, u"bezel-inactive"_s}},
        {u"AuxiliaryButton"_s, {12, 11}, {u"normal"_s, u"pressed"_s}},
    };
    return rows;
}
} // namespace

class SkinGalleryTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        m_run = runGallery({folder()});
        QCOMPARE(m_run.exitCode, 0);
        QCOMPARE(m_run.errors, QString());
    }

    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void everyControlIsDrawnInBothAppearancesAndScales_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QSize>("size");
        for (const Row &row : rows()) {
            for (const QString &variant : row.variants) {
                for (const QString &appearance : {u"light"_s, u"dark"_s}) {
                    for (const int scale : {1, 2}) {
                        const QString name = u"%1/%2.%3@%4x.png"_s.arg(row.className, variant, appearance).arg(scale);
                        QTest::newRow(qPrintable(name)) << folder() + u'/' + name << row.size * scale;
                    }
                }
            }
        }
    }

    void everyControlIsDrawnInBothAppearancesAndScales()
    {
        QFETCH(const QString, file);
        QFETCH(const QSize, size);
        const QImage picture(file);
        QCOMPARE(picture.size(), size);
        QCOMPARE(picture.format(), QImage::Format_ARGB32);
        QVERIFY(m_run.output.split(u'\n').contains(file));
    }

    void everyPictureHasItsGoldenOne() { QCOMPARE(picturesIn(folder()), picturesIn(goldenFolder())); }

    void everyControlLooksAsItsGoldenPicture_data()
    {
        QTest::addColumn<QString>("name");
        for (const QString &name : picturesIn(goldenFolder())) {
            QTest::newRow(qPrintable(name)) << name;
        }
    }

    void everyControlLooksAsItsGoldenPicture()
    {
        QFETCH(QString, name);
        const QImage picture(folder() + u'/' + name);
        const QImage golden(goldenFolder() + u'/' + name);
        QCOMPARE(picture.size(), golden.size());
        const Difference found = difference(picture, golden);
        if (found.worst <= tolerance) {
            return;
        }
        const QString file = QDir::temp().filePath(u"tunedeck-difference-"_s + name.replace(u'/', u'-'));
        QVERIFY(found.picture.save(file));
        QFAIL(qPrintable(u"off by %1 of 255 at (%2, %3); see %4"_s.arg(found.worst)
                .arg(found.where.x())
                .arg(found.where.y())
                .arg(file)));
    }

    void aDifferenceIsFoundWhereItIs()
    {
        QImage golden(4, 4, QImage::Format_ARGB32);
        golden.fill(qRgba(200, 100, 50, 255));
        QImage picture = golden;
        QCOMPARE(difference(picture, golden).worst, 0);
        picture.setPixel(2, 1, qRgba(200, 100, 57, 255));
        const Difference found = difference(picture, golden);
        QCOMPARE(found.worst, 7);
        QCOMPARE(found.where, QPoint(2, 1));
        QCOMPARE(found.picture.pixel(2, 1), qRgb(7, 0, 0));
        QCOMPARE(found.picture.pixel(0, 0), qRgb(0, 0, 0));
        picture.setPixel(2, 1, qRgba(200, 100, 50, 0));
        QCOMPARE(difference(picture, golden).worst, 255);
    }

    void controlsLieOnNothing()
    {
        for (const char *name : {"WindowBackground/main.light@2x.png", "LCDBackgroundView/lcd.dark@1x.png",
                 "PlayerButton/play.light@1x.png", "WindowControlButton/close.dark@2x.png"}) {
            const QImage picture(folder() + u'/' + QString::fromLatin1(name));
            QCOMPARE(picture.pixel(0, 0), 0U);
            QCOMPARE(qAlpha(picture.pixel(picture.rect().center())), 255);
        }
        QCOMPARE(QImage(folder() + u"/PinstripeView/key.light@1x.png"_s).pixel(0, 0), qRgba(0, 0, 0, 5));
    }

    void scale2IsNotAnEnlargedPicture()
    {
        const QImage small(folder() + u"/LCDBackgroundView/lcd.light@1x.png"_s);
        const QImage large(folder() + u"/LCDBackgroundView/lcd.light@2x.png"_s);
        // The bezel is lit less, and the glass's outline does not reach its first row.
        QVERIFY(qAlpha(small.pixel(110, 51)) > 170);
        QVERIFY(qAlpha(large.pixel(220, 103)) < 105);
    }

    void aSheetShowsThemAll()
    {
        const QImage sheet(folder() + u"/gallery.png"_s);
        QVERIFY(!sheet.isNull());
        QVERIFY(sheet.width() >= 900);
        QVERIFY(sheet.height() >= 500);
    }

    void eachPictureIsALineOfTheOutput()
    {
        const QStringList lines = m_run.output.split(u'\n', Qt::SkipEmptyParts);
        qsizetype pictures = 0;
        const QStringList classes = QDir(folder()).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
        for (const QString &className : classes) {
            pictures += QDir(folder() + u'/' + className).entryList(QDir::Files).size();
        }
        QCOMPARE(lines.size(), pictures);
    }

    void missingFoldersAreMade()
    {
        const QTemporaryDir fresh;
        const QString below = fresh.filePath(u"a/b"_s);
        QCOMPARE(runGallery({below}).exitCode, 0);
        QVERIFY(QFile::exists(below + u"/gallery.png"_s));
    }

    void aFolderThatCannotBeWrittenIsOneLineAndAFailure()
    {
        const QTemporaryDir fresh;
        QFile file(fresh.filePath(u"file"_s));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.close();
        for (const QString &folder : {file.fileName(), file.fileName() + u"/below"_s, u"/proc/gallery"_s}) {
            const Run run = runGallery({folder});
            QCOMPARE(run.exitCode, 1);
            QCOMPARE(run.errors, u"Cannot write to %1\n"_s.arg(folder));
            QCOMPARE(run.output, QString());
        }
    }

    void aPictureThatCannotBeWrittenIsOneLineAndAFailure()
    {
        const QTemporaryDir fresh;
        const QString taken = fresh.filePath(u"LCDBackgroundView/lcd.dark@1x.png"_s);
        QVERIFY(QDir().mkpath(taken));
        const Run run = runGallery({fresh.path()});
        QCOMPARE(run.exitCode, 1);
        QCOMPARE(run.errors, u"Cannot write %1\n"_s.arg(taken));
    }

    void withoutAFolderItSaysHowItIsUsed()
    {
        for (const QStringList &arguments : {QStringList(), QStringList({u"a"_s, u"b"_s})}) {
            const Run run = runGallery(arguments);
            QCOMPARE(run.exitCode, 1);
            QCOMPARE(run.errors, u"Usage: tunedeck-skin-gallery OUTDIR\n"_s);
        }
    }

private:
    [[nodiscard]] QString folder() const { return m_folder.path(); }

    QTemporaryDir m_folder;
    Run m_run;
};

TUNEDECK_TEST(SkinGalleryTest, QCoreApplication)
#include "SkinGalleryTest.moc"
