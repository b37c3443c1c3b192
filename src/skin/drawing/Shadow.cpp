// SPDX-License-Identifier: MIT
#include "skin/drawing/Shadow.h"

#include "skin/drawing/DevicePixels.h"

#include <QBrush>
#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <QTransform>

#include <algorithm>
#include <cmath>
#include <vector>

namespace tunedeck {

namespace {
/// The reach of the blur in standard deviations. Beyond it the alpha is less than one step of 8 bits.
constexpr double blurReach = 4;

/// How much of each device pixel of `area` a shape covers, from 0 to 1, row by row.
struct Coverage {
    QRect area;
    std::vector<double> parts;
};

/// The weights from the middle outwards. Their sum is 1, with both sides counted.
std::vector<double> gaussian(double deviation)
{
    std::vector<double> weights = {1};
    double sum = 1;
    for (int distance = 1; distance <= std::ceil(blurReach * deviation); ++distance) {
        weights.push_back(std::exp(-distance * distance / (2 * deviation * deviation)));
        sum += 2 * weights.back();
    }
    for (double &weight : weights) {
        weight /= sum;
    }
    return weights;
}

Coverage rasterized(const QPainterPath &devicePath, const QRect &area)
{
    QImage mask(area.size(), QImage::Format_Alpha8);
    mask.fill(0);
    QPainter painter(&mask);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(-area.topLeft());
    painter.fillPath(devicePath, Qt::black);
    painter.end();

    Coverage coverage{area, {}};
    for (int y = 0; y < mask.height(); ++y) {
        const uchar *line = mask.constScanLine(y);
        for (int x = 0; x < mask.width(); ++x) {
            coverage.parts.push_back(line[x] / 255.0);
        }
    }
    return coverage;
}

/// Blurs along the rows and turns the rows into columns. Two calls blur in both directions.
std::vector<double> blurredAndTransposed(
    const std::vector<double> &parts, qsizetype width, qsizetype height, const std::vector<double> &weights)
{
    const auto reach = static_cast<qsizetype>(weights.size()) - 1;
    std::vector<double> result(parts.size());
    for (qsizetype y = 0; y < height; ++y) {
        const double *row = parts.data() + y * width;
        for (qsizetype x = 0; x < width; ++x) {
            double sum = 0;
            for (qsizetype from = std::max(x - reach, qsizetype(0)); from <= std::min(x + reach, width - 1); ++from) {
                sum += row[from] * weights[std::abs(from - x)];
            }
            result[x * height + y] = sum;
        }
    }
    return result;
}

/// The shape of the shadow that `path` casts, with room around it for its soft edge.
Coverage shadowCoverage(const QPainter &painter, const QPainterPath &path, const Shadow &shadow)
{
    const QTransform toDevice = painter.deviceTransform();
    const double scale = std::sqrt(std::abs(toDevice.determinant()));
    const QPainterPath shape = toDevice.map(path);
    const QPainterPath moved = shape.translated(shadow.offset.x() * scale, -shadow.offset.y() * scale);
    const std::vector<double> weights = gaussian(shadow.blurRadius / 2 * scale);
    const auto reach = static_cast<int>(weights.size());
    const QRect area = (shape.boundingRect() | moved.boundingRect()).toAlignedRect();

    Coverage coverage = rasterized(moved, area.adjusted(-reach, -reach, reach, reach));
    const QSize size = coverage.area.size();
    const std::vector<double> columns = blurredAndTransposed(coverage.parts, size.width(), size.height(), weights);
    coverage.parts = blurredAndTransposed(columns, size.height(), size.width(), weights);
    return coverage;
}

QImage tinted(const Coverage &coverage, const QColor &color)
{
    QImage image(coverage.area.size(), QImage::Format_ARGB32_Premultiplied);
    const QRgb rgb = color.rgb();
    auto part = coverage.parts.cbegin();
    for (int y = 0; y < image.height(); ++y) {
        auto *line = reinterpret_cast<QRgb *>(image.scanLine(y));
        for (int x = 0; x < image.width(); ++x) {
            const int alpha = qRound(255 * color.alphaF() * *part++);
            line[x] = qPremultiply(qRgba(qRed(rgb), qGreen(rgb), qBlue(rgb), alpha));
        }
    }
    return image;
}

void fill(QPainter &painter, const QPainterPath &path, const Coverage &coverage, const QColor &color)
{
    QBrush brush(tinted(coverage, color));
    const QPoint position = coverage.area.topLeft();
    brush.setTransform(QTransform::fromTranslate(position.x(), position.y()) * painter.deviceTransform().inverted());
    painter.fillPath(path, brush);
}
} // namespace

void fillWithInnerShadow(QPainter &painter, const QPainterPath &path, const Shadow &shadow)
{
    Coverage coverage = shadowCoverage(painter, path, shadow);
    for (double &part : coverage.parts) {
        part = 1 - part;
    }
    fill(painter, path, coverage, shadow.color);
}

void fillWithScanLines(QPainter &painter, const QPainterPath &path, double width, bool dark)
{
    constexpr double stride = 2;
    const double height = path.boundingRect().height();
    if (height <= 0) {
        return;
    }
    const DevicePixels pixels(painter);
    painter.save();
    painter.setClipPath(path, Qt::IntersectClip);
    double y = 0;
    do {
        painter.fillRect(pixels.snapped({0, y, width, 1}), QColor::fromRgbF(0, 0, 0, dark ? 0.1F : 0.04F));
        y += stride;
    } while (y < height);
    painter.restore();
}

void drawShadow(QPainter &painter, const QPainterPath &path, const Shadow &shadow)
{
    const Coverage coverage = shadowCoverage(painter, path, shadow);
    QPainterPath area;
    area.addRect(coverage.area);
    fill(painter, painter.deviceTransform().inverted().map(area), coverage, shadow.color);
}

} // namespace tunedeck
