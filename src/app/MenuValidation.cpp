// SPDX-License-Identifier: MIT
#include "app/MenuValidation.h"

#include <QMenu>

#include <algorithm>

namespace tunedeck {

void MenuValidation::add(QAction *item, const QList<Validator> &validators)
{
    m_entries.append({item, validators});
}

void MenuValidation::validateBeforeShowing(QMenu &menu)
{
    connect(&menu, &QMenu::aboutToShow, this, &MenuValidation::validate);
}

void MenuValidation::validate()
{
    for (const auto &[item, validators] : std::as_const(m_entries)) {
        if (item) {
            item->setEnabled(std::all_of(validators.begin(), validators.end(),
                [&item = *item](const Validator &validator) { return validator(item); }));
        }
    }
}

} // namespace tunedeck
