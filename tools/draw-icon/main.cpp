// SPDX-License-Identifier: MIT
// Draws an icon at the size that a theme's folder asks for, while the program is built.
#include <QFile>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>
#include <QTextStream>

#include <cstdlib>

namespace {

using namespace Qt::StringLiterals;

int fail(const QString &reason)
{
    QTextStream(stderr) << reason << Qt::endl;
    return EXIT_FAILURE;
}

QImage drawn(QSvgRenderer &drawing, int size)
{
    QImage picture(size, size, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    drawing.render(&painter);
    painter.end();
    return picture.convertToFormat(QImage::Format_ARGB32);
}

} // namespace

int main(int argc, char *argv[])
{
    if (argc != 4) {
        return fail(u"Usage: tunedeck-draw-icon DRAWING.svg PIXELS PICTURE.png"_s);
    }
    QSvgRenderer drawing;
    if (!drawing.load(QFile::decodeName(argv[1]))) {
        return fail(u"Cannot read %1"_s.arg(QFile::decodeName(argv[1])));
    }
    const int size = QByteArray(argv[2]).toInt();
    if (size < 1 || size > 1024) {
        return fail(u"Not a size from 1 to 1024 pixels: %1"_s.arg(QString::fromLocal8Bit(argv[2])));
    }
    const QString path = QFile::decodeName(argv[3]);
    return drawn(drawing, size).save(path, "PNG") ? EXIT_SUCCESS : fail(u"Cannot write %1"_s.arg(path));
}
