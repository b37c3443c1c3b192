// SPDX-License-Identifier: MIT
#include "ContactSheet.h"
#include "SkinGallery.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QTextStream>

#include <cstdlib>

namespace {

using namespace tunedeck;
using namespace Qt::StringLiterals;

int fail(const QString &reason)
{
    QTextStream(stderr) << reason << Qt::endl;
    return EXIT_FAILURE;
}

/// Relative to the folder that the gallery is written to.
QString fileName(const SkinGalleryEntry &entry, bool dark, int scale)
{
    return u"%1/%2.%3@%4x.png"_s.arg(entry.className, entry.variant, dark ? u"dark"_s : u"light"_s).arg(scale);
}

QImage drawn(const SkinGalleryEntry &entry, bool dark, int scale)
{
    QImage picture(entry.size * scale, QImage::Format_ARGB32_Premultiplied);
    picture.setDevicePixelRatio(scale);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    entry.paint(painter, QRectF(QPointF(0, 0), entry.size), dark);
    painter.end();
    return picture.convertToFormat(QImage::Format_ARGB32);
}

bool save(const QImage &image, const QString &path)
{
    return QDir().mkpath(QFileInfo(path).path()) && image.save(path);
}

int writeGallery(const QDir &folder)
{
    QTextStream out(stdout);
    ContactSheet sheet;
    const SkinGalleryEntries entries = groundEntries() + controlEntries() + drawerEntries();
    for (const SkinGalleryEntry &entry : entries) {
        for (const bool dark : {false, true}) {
            for (const int scale : {1, 2}) {
                const QString name = fileName(entry, dark, scale);
                const QImage picture = drawn(entry, dark, scale);
                if (!save(picture, folder.filePath(name))) {
                    return fail(u"Cannot write %1"_s.arg(folder.filePath(name)));
                }
                sheet.add(entry.className, name.chopped(4), picture, dark);
                out << folder.filePath(name) << '\n';
            }
        }
    }
    const QString sheetPath = folder.filePath(u"gallery.png"_s);
    return save(sheet.image(), sheetPath) ? EXIT_SUCCESS : fail(u"Cannot write %1"_s.arg(sheetPath));
}

} // namespace

int main(int argc, char *argv[])
{
    if (argc != 2) {
        return fail(u"Usage: tunedeck-skin-gallery OUTDIR"_s);
    }
    const QString path = QFile::decodeName(argv[1]);
    if (!QDir().mkpath(path) || !QFileInfo(path).isWritable()) {
        return fail(u"Cannot write to %1"_s.arg(path));
    }
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    return writeGallery(QDir(path));
}
