// SPDX-License-Identifier: MIT
#pragma once

#include "skin/cells/MetalButtonCell.h"
#include "skin/drawing/FaceCache.h"
#include "skin/looks/ActivationFlag.h"
#include "skin/looks/FocusMark.h"
#include "skin/looks/SkinEnvironment.h"
#include "skin/views/SkinnedButton.h"

#include <QPointer>

namespace tunedeck {

/// A small push button of metal with an engraved title, or with an image. The title is plain text.
class MetalButton : public SkinnedButton {
    Q_OBJECT

public:
    explicit MetalButton(const SkinEnvironment &environment, QWidget *parent = nullptr);

    [[nodiscard]] bool isMainWindow() const { return m_isMainWindow.isSet(); }
    /// The name of a ResourceImage; empty, the default, for none. A missing picture is a fatal error when it is
    /// painted.
    [[nodiscard]] QString image() const { return m_image; }
    void setImage(const QString &name);
    /// Shows by a lamp below the button that it has the keyboard focus, not by a ring around it.
    void showFocusByLamp();

protected:
    /// Draws the button into its rectangle, in points and with y downwards.
    virtual void drawFace(QPainter &painter, const MetalButtonState &state) const;

    void paintEvent(QPaintEvent *event) override;

private:
    [[nodiscard]] MetalButtonState state() const;

    SkinEnvironment m_environment;
    ActivationFlag m_isMainWindow;
    QPointer<FocusMark> m_focusMark;
    QString m_image;
    FaceCache<MetalButtonState> m_faces;
};

} // namespace tunedeck
