// SPDX-License-Identifier: MIT
#pragma once

#include "skin/cells/PinstripeCell.h"
#include "skin/looks/SkinEnvironment.h"

#include <QWidget>

namespace tunedeck {

/// The background of the about window. It has the stripes of a PinstripeView but follows no window: it is plain until
/// setKeyWindow(true).
class AboutPinstripeView : public QWidget {
    Q_OBJECT
    Q_PROPERTY(bool isKeyWindow READ isKeyWindow WRITE setKeyWindow NOTIFY isKeyWindowChanged)

public:
    explicit AboutPinstripeView(const SkinEnvironment &environment, QWidget *parent = nullptr);

    /// False at first.
    [[nodiscard]] bool isKeyWindow() const { return m_isKeyWindow; }
    void setKeyWindow(bool isKeyWindow);

Q_SIGNALS:
    /// Only on a real change.
    void isKeyWindowChanged(bool isKeyWindow);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    SkinEnvironment m_environment;
    PinstripeCell m_cell;
    bool m_isKeyWindow = false;
};

} // namespace tunedeck
