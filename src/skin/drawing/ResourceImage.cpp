// SPDX-License-Identifier: MIT
#include "skin/drawing/ResourceImage.h"

#include "platform/FatalError.h"

#include <QSvgRenderer>

#include <string>

namespace tunedeck {

ResourceImage::ResourceImage(const QString &name)
    : m_renderer(std::make_unique<QSvgRenderer>(QStringLiteral(":/images/%1.svg").arg(name)))
{
    if (!m_renderer->isValid()) {
        fatalError("the picture \"" + name.toStdString() + "\" is missing");
    }
}

ResourceImage::~ResourceImage() = default;

QSizeF ResourceImage::size() const
{
    return m_renderer->defaultSize();
}

void ResourceImage::draw(QPainter &painter, const QRectF &rect) const
{
    m_renderer->render(&painter, rect);
}

} // namespace tunedeck
