// SPDX-License-Identifier: MIT
#pragma once

#include "skin/drawing/FaceCache.h"
#include "skin/looks/SkinEnvironment.h"
#include "skin/views/SkinnedButton.h"

#include <QSize>
#include <QString>

#include <variant>

namespace tunedeck {

/// A small button without a face: only its image or its text, which fades while it is pressed. The text has the
/// palette's ButtonText colour.
class PlainButton : public SkinnedButton {
    Q_OBJECT

public:
    explicit PlainButton(const SkinEnvironment &environment, QWidget *parent = nullptr);

    /// Shows the ResourceImage `name` in the middle, `size` points large. A missing image is a fatal error when it is
    /// painted.
    void setImage(const QString &name, QSize size);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void drawImage(QPainter &painter) const;

    QString m_imageName;
    QSize m_imageSize;
    FaceCache<std::monostate> m_image;
};

} // namespace tunedeck
