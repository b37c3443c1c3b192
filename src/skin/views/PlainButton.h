// SPDX-License-Identifier: MIT
#pragma once

#include "skin/drawing/FaceCache.h"
#include "skin/looks/SkinEnvironment.h"
#include "skin/views/SkinnedButton.h"

#include <QSize>
#include <QString>

#include <variant>

namespace tunedeck {

/// A small button that is nothing but its image or its text, which darkens while it is pressed. The text is drawn in
/// the palette's ButtonText.
class PlainButton : public SkinnedButton {
    Q_OBJECT

public:
    explicit PlainButton(const SkinEnvironment &environment, QWidget *parent = nullptr);

    /// Shows the image of the program's own resources that is called `name`, in the middle and `size` points large. An
    /// image that is missing is fatal.
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
