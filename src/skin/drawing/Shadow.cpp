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
#include <iterator>
#include <vector>

namespace tunedeck {

namespace {
/// The reach of the blur in standard deviations. Beyond it the alpha is less than one step of 8 bits.
constexpr double blurReach = 4;

/// How much of each device pixel of `area` a shape covers, from 0 to 1, row by row.
struct Coverage {
    QRect area;
    std::vector<float> parts;
};

/// The weights from the middle outwards. Their sum is 1, with both sides counted.
std::vector<float> gaussian(double deviation)
{
    std::vector<double> weights = {1};
    double sum = 1;
    for (int distance = 1; distance <= std::ceil(blurReach * deviation); ++distance) {
        weights.push_back(std::exp(-distance * distance / (2 * deviation * deviation)));
        sum += 2 * weights.back();
    }
    std::vector<float> parts;
    std::ranges::transform(
        weights, std::back_inserter(parts), [sum](double weight) { return static_cast<float>(weight / sum); });
    return parts;
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

    Coverage coverage{area, std::vector<float>(static_cast<std::size_t>(area.width()) * area.height())};
    auto part = coverage.parts.begin();
    for (int y = 0; y < mask.height(); ++y) {
        const uchar *line = mask.constScanLine(y);
        part = std::transform(line, line + mask.width(), part, [](uchar alpha) { return alpha / 255.0F; });
    }
    return coverage;
}

/// Adds `weight` times each of `count` values. The compiler makes it handle several values at a time.
void addWeighted(float *sums, const float *values, qsizetype count, float weight)
{
    for (qsizetype index = 0; index < count; ++index) {
        sums[index] += values[index] * weight;
    }
}

std::vector<float> blurredAlongRows(const std::vector<float> &parts, QSize size, const std::vector<float> &weights)
{
    const qsizetype width = size.width();
    const qsizetype reach = std::min<qsizetype>(std::ssize(weights), width) - 1;
    std::vector<float> result(parts.size());
    for (qsizetype y = 0; y < size.height(); ++y) {
        const float *from = parts.data() + y * width;
        float *to = result.data() + y * width;
        addWeighted(to, from, width, weights.front());
        for (qsizetype distance = 1; distance <= reach; ++distance) {
            addWeighted(to + distance, from, width - distance, weights[distance]);
            addWeighted(to, from + distance, width - distance, weights[distance]);
        }
    }
    return result;
}

std::vector<float> blurredAlongColumns(const std::vector<float> &parts, QSize size, const std::vector<float> &weights)
{
    const qsizetype width = size.width();
    const qsizetype reach = std::ssize(weights) - 1;
    std::vector<float> result(parts.size());
    for (qsizetype y = 0; y < size.height(); ++y) {
        const qsizetype last = std::min<qsizetype>(y + reach, size.height() - 1);
        for (qsizetype from = std::max(y - reach, qsizetype(0)); from <= last; ++from) {
            addWeighted(result.data() + y * width, parts.data() + from * width, width, weights[std::abs(from - y)]);
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
    const std::vector<float> weights = gaussian(shadow.blurRadius / 2 * scale);
    const auto reach = static_cast<int>(weights.size());
    const QRect area = (shape.boundingRect() | moved.boundingRect()).toAlignedRect();

    Coverage coverage = rasterized(moved, area.adjusted(-reach, -reach, reach, reach));
    const QSize size = coverage.area.size();
    coverage.parts = blurredAlongColumns(blurredAlongRows(coverage.parts, size, weights), size, weights);
    return coverage;
}

QImage tinted(const Coverage &coverage, const QColor &color)
{
    QImage image(coverage.area.size(), QImage::Format_ARGB32_Premultiplied);
    const QRgb rgb = color.rgb();
    const float opacity = 255 * color.alphaF();
    const auto pixel = [rgb, opacity](float part) {
        return qPremultiply(qRgba(qRed(rgb), qGreen(rgb), qBlue(rgb), qRound(opacity * part)));
    };
    auto part = coverage.parts.cbegin();
    for (int y = 0; y < image.height(); ++y) {
        std::transform(part, part + image.width(), reinterpret_cast<QRgb *>(image.scanLine(y)), pixel);
        part += image.width();
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
    for (float &part : coverage.parts) {
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
