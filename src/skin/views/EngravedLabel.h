// SPDX-License-Identifier: MIT
#pragma once

#include "skin/drawing/Shadow.h"

#include <QLabel>

namespace tunedeck {

/// One line of plain text with a shadow.
class EngravedLabel : public QLabel {
    Q_OBJECT

public:
    EngravedLabel(const QColor &ink, const tunedeck::Shadow &shadow, QWidget *parent = nullptr);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QColor m_ink;
    tunedeck::Shadow m_shadow;
};

} // namespace tunedeck
