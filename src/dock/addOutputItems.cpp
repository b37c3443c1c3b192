// SPDX-License-Identifier: MIT
#include "dock/addOutputItems.h"

#include "widgets/literalTitle.h"

#include <QAction>
#include <QMenu>

namespace tunedeck {

void addOutputItems(QMenu &menu, const OutputChoices &choices, const QObject *receiver,
    const std::function<void(const QString &id)> &moveTo)
{
    if (!choices.obstacle.isEmpty()) {
        menu.addAction(literalTitle(choices.obstacle))->setEnabled(false);
    }
    for (const OutputChoice &choice : choices.choices) {
        QAction *item = menu.addAction(literalTitle(choice.text));
        item->setObjectName(QStringLiteral("PlayThrough_") + choice.id);
        item->setEnabled(choices.obstacle.isEmpty());
        if (!choice.id.isEmpty()) {
            item->setCheckable(true);
            item->setChecked(choice.isCurrent);
        }
        QObject::connect(item, &QAction::triggered, receiver, [moveTo, id = choice.id] { moveTo(id); });
    }
}

} // namespace tunedeck
