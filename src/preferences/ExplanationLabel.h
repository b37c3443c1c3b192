// SPDX-License-Identifier: MIT
#pragma once

#include <QLabel>

namespace tunedeck {

/// A line or more of plain text that explains the control above it, in a weaker colour than the control's own text.
class ExplanationLabel : public QLabel {
    Q_OBJECT

public:
    /// Also tells `control` the text, for those who hear it.
    ExplanationLabel(const QString &text, QWidget &control);

protected:
    void paintEvent(QPaintEvent *event) override;
};

} // namespace tunedeck
