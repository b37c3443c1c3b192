// SPDX-License-Identifier: MIT
#pragma once

#include "skin/drawing/FaceCache.h"
#include "skin/looks/SkinEnvironment.h"
#include "skin/views/SkinnedButton.h"

#include <QMargins>
#include <QRect>
#include <QSize>
#include <QString>

#include <variant>

namespace tunedeck {

/// A small button without a face: only its image or its text, which fades while it is pressed. The text has the
/// palette's ButtonText colour. All lengths are in points.
class PlainButton : public SkinnedButton {
    Q_OBJECT

public:
    explicit PlainButton(const SkinEnvironment &environment, QWidget *parent = nullptr);

    /// Shows the ResourceImage `name` in the middle of what is seen. A missing image is a fatal error when it is
    /// painted.
    void setImage(const QString &name, QSize size);
    /// The margins around what is seen. They take clicks too, so that a hand hits a small button. None at first.
    void setTargetMargins(const QMargins &margins);
    /// The part that is seen, in the button's coordinates.
    [[nodiscard]] QRect visibleRect() const { return rect().marginsRemoved(m_targetMargins); }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void drawImage(QPainter &painter) const;

    QString m_imageName;
    QSize m_imageSize;
    QMargins m_targetMargins;
    FaceCache<std::monostate> m_image;
};

} // namespace tunedeck
