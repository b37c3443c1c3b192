// SPDX-License-Identifier: MIT
#include "preferences/InterfacePreferencesViewController.h"

#include "platform/UserDefaults.h"
#include "preferences/ExplanationLabel.h"
#include "preferences/PaneMetrics.h"
#include "preferences/SettingBox.h"

#include <QCheckBox>
#include <QVBoxLayout>
#include <QWidget>

namespace tunedeck {

InterfacePreferencesViewController::InterfacePreferencesViewController(
    UserDefaults &defaults, bool showsWindowIcons, QObject *parent)
    : PreferencesPaneController(parent)
    , m_defaults(defaults)
{
    auto *layout = new QVBoxLayout(&m_view);
    layout->setContentsMargins(PaneMetrics::margin, PaneMetrics::margin, PaneMetrics::margin, PaneMetrics::margin);
    layout->setSpacing(PaneMetrics::choiceGap);
    m_appearanceClassicBox =
        addCheckBox(SettingsKey::appearanceClassic, tr("&Classic appearance", "Check box in the Interface pane"),
            tr("The window stays light, even on a dark desktop.", "Below the check box \"Classic appearance\""));
    m_appearanceUpdatesDockIconBox = addCheckBox(SettingsKey::appearanceUpdatesDockIcon,
        tr("&Dark icon on a dark desktop", "Check box in the Interface pane: the program's icon in the dock"),
        showsWindowIcons ? tr("The icon in the dock is light or dark, like the desktop.",
                               "Below the check box \"Dark icon on a dark desktop\"")
                         : tr("This desktop always shows the same icon.",
                               "Below the check box \"Dark icon on a dark desktop\", where it has no effect"));
    m_volumeButtonsHiddenBox = addCheckBox(SettingsKey::volumeButtonsHidden,
        tr("&Hide the volume buttons", "Check box in the Interface pane"),
        tr("These are the two speakers beside the volume slider.", "Below the check box \"Hide the volume buttons\""));
    m_defaults.bind(SettingsKey::appearanceClassic, this, [this, showsWindowIcons](bool isClassic) {
        m_appearanceUpdatesDockIconBox->parentWidget()->setEnabled(showsWindowIcons && !isClassic);
    });
}

QCheckBox *InterfacePreferencesViewController::addCheckBox(
    const QString &key, const QString &text, const QString &explanation)
{
    auto *choice = new QWidget(&m_view);
    auto *box = new SettingBox(m_defaults, key, text, explanation, choice);
    auto *layout = new QVBoxLayout(choice);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(PaneMetrics::gap);
    layout->addWidget(box);
    layout->addWidget(&box->explanation());
    m_view.layout()->addWidget(choice);
    return box;
}

} // namespace tunedeck
