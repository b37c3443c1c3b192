// SPDX-License-Identifier: MIT
#pragma once

#include <QLabel>
#include <QStringList>

namespace tunedeck {

/// One centred line of plain text made of several strings, cut with an ellipsis where it is too wide.
class TrackInfoLabel : public QLabel {
    Q_OBJECT

public:
    explicit TrackInfoLabel(QWidget *parent = nullptr);

    [[nodiscard]] const QStringList &displayStrings() const;
    /// An empty list clears the line.
    void setDisplayStrings(const QStringList &strings);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QStringList m_displayStrings;
};

} // namespace tunedeck
