// SPDX-License-Identifier: MIT
#include "player/TimeLabelMenu.h"

#include "music/MenuItemIdentifier.h"

#include <QAction>
#include <QLabel>
#include <QList>

#include <utility>

namespace tunedeck {

TimeLabelMenu::TimeLabelMenu(QLabel &label, Validator validate)
    : m_validate(std::move(validate))
{
    setTitle(tr("Menu", "Title of the time label's context menu"));
    addItem(remainingTimeText(), MenuItemIdentifier::remainingTime);
    addItem(totalTimeText(), MenuItemIdentifier::totalTime);
    connect(this, &QMenu::aboutToShow, this, [this] {
        const QList<QAction *> items = actions();
        for (QAction *item : items) {
            item->setEnabled(m_validate(*item));
        }
    });

    label.setContextMenuPolicy(Qt::CustomContextMenu);
    connect(&label, &QLabel::customContextMenuRequested, this,
        [this, &label](QPoint position) { popup(label.mapToGlobal(position)); });
}

QString TimeLabelMenu::remainingTimeText()
{
    return tr("Remaining Time", "For UI labels: Remaining Time");
}

QString TimeLabelMenu::totalTimeText()
{
    return tr("Duration", "For UI labels: Duration");
}

void TimeLabelMenu::addItem(const QString &text, const QString &identifier)
{
    QAction &item = *addAction(text);
    item.setObjectName(identifier);
    item.setCheckable(true);
}

} // namespace tunedeck
