// SPDX-License-Identifier: MIT
#pragma once

#include <QIcon>
#include <QIconEngine>
#include <QPixmap>
#include <QString>

#include <memory>

class QSvgRenderer;

namespace tunedeck {

/// Draws a symbol in the application's current colours: the colour of button texts, or the highlight colour while the
/// icon is on.
class SymbolIconEngine : public QIconEngine {
public:
    explicit SymbolIconEngine(std::shared_ptr<QSvgRenderer> symbol);

    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State state) override;
    [[nodiscard]] QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state) override;
    [[nodiscard]] QIconEngine *clone() const override;

private:
    std::shared_ptr<QSvgRenderer> m_symbol;
};

/// A symbol from the program's resources, crisp in every size. A null icon if there is none of this name.
[[nodiscard]] QIcon symbolIcon(const QString &name);

} // namespace tunedeck
