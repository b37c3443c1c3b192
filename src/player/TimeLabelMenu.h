// SPDX-License-Identifier: MIT
#pragma once

#include <QMenu>

#include <functional>

class QLabel;

namespace tunedeck {

/// The context menu of the display's right time label. It offers the remaining time and the total time,
/// and the object name of each item is its MenuItemIdentifier.
class TimeLabelMenu : public QMenu {
    Q_OBJECT

public:
    /// Answers whether an item is enabled, and sets its check state.
    using Validator = std::function<bool(QAction &item)>;

    /// Opens when the user asks for a context menu on `label`. `validate` is called for each item before that.
    TimeLabelMenu(QLabel &label, Validator validate);

    [[nodiscard]] static QString remainingTimeText();
    [[nodiscard]] static QString totalTimeText();

private:
    void addItem(const QString &text, const QString &identifier);

    Validator m_validate;
};

} // namespace tunedeck
