// SPDX-License-Identifier: MIT
#include "preferences/SymbolIcon.h"

#include <QGuiApplication>
#include <QPainter>
#include <QPalette>
#include <QSvgRenderer>

#include <utility>

namespace tunedeck {

namespace {
/// The share of the text's colour in that of a selected symbol. Many highlight colours are too weak for thin lines.
constexpr float shareOfText = 0.35F;

QColor mixed(const QColor &a, const QColor &b, float shareOfB)
{
    const auto mix = [shareOfB](float inA, float inB) { return inA + (inB - inA) * shareOfB; };
    return QColor::fromRgbF(mix(a.redF(), b.redF()), mix(a.greenF(), b.greenF()), mix(a.blueF(), b.blueF()));
}

QColor ink(QIcon::Mode mode, QIcon::State state)
{
    const QPalette palette = QGuiApplication::palette();
    const QColor text =
        palette.color(mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active, QPalette::ButtonText);
    if (mode == QIcon::Disabled || state == QIcon::Off) {
        return text;
    }
    return mixed(palette.color(QPalette::Active, QPalette::Highlight), text, shareOfText);
}
} // namespace

SymbolIconEngine::SymbolIconEngine(std::shared_ptr<QSvgRenderer> symbol)
    : m_symbol(std::move(symbol))
{
}

void SymbolIconEngine::paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State state)
{
    const double scale = painter->device()->devicePixelRatio();
    painter->drawPixmap(rect, pixmap((QSizeF(rect.size()) * scale).toSize(), mode, state));
}

QPixmap SymbolIconEngine::pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state)
{
    QPixmap pixmap(size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    m_symbol->render(&painter);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(pixmap.rect(), ink(mode, state));
    return pixmap;
}

QIconEngine *SymbolIconEngine::clone() const
{
    return new SymbolIconEngine(m_symbol);
}

QIcon symbolIcon(const QString &name)
{
    auto symbol = std::make_shared<QSvgRenderer>();
    if (!symbol->load(QStringLiteral(":/icons/preferences/%1.svg").arg(name))) {
        return {};
    }
    return QIcon(new SymbolIconEngine(std::move(symbol)));
}

} // namespace tunedeck
