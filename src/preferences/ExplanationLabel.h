// SPDX-License-Identifier: MIT
#pragma once

#include <QLabel>

namespace tunedeck {

/// Plain text that explains the control above it, in a weaker colour than the control's text.
class ExplanationLabel : public QLabel {
    Q_OBJECT

public:
    /// Also makes `text` the description of `control`, which must outlive the label, for screen readers.
    ExplanationLabel(const QString &text, QWidget &control);

    /// Replaces the text and the description.
    void setExplanation(const QString &text);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QWidget &m_control;
};

} // namespace tunedeck
