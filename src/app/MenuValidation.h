// SPDX-License-Identifier: MIT
#pragma once

#include <QAction>
#include <QList>
#include <QObject>
#include <QPointer>

#include <functional>

class QMenu;

namespace tunedeck {

/// Keeps menu items as those who answer for them say: an item is enabled while all its validators enable it.
class MenuValidation : public QObject {
    Q_OBJECT

public:
    /// Whether the item is enabled; may also set its check state or its title.
    using Validator = std::function<bool(QAction &item)>;

    using QObject::QObject;

    void add(QAction *item, const QList<Validator> &validators);
    /// Validates all items right before `menu` is shown.
    void validateBeforeShowing(QMenu &menu);

public Q_SLOTS:
    /// Also keeps shortcuts right, which work without a menu being opened.
    void validate();

private:
    struct Entry {
        QPointer<QAction> item;
        QList<Validator> validators;
    };
    QList<Entry> m_entries;
};

} // namespace tunedeck
