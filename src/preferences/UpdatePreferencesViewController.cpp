// SPDX-License-Identifier: MIT
#include "preferences/UpdatePreferencesViewController.h"

#include "platform/BundleInfo.h"
#include "preferences/PaneMetrics.h"
#include "preferences/Updater.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace tunedeck {

UpdatePreferencesViewController::UpdatePreferencesViewController(Updater &updater, QObject *parent)
    : PreferencesPaneController(parent)
    , m_updater(updater)
    , m_updateButton(new QPushButton(tr("Check for Updates…", "Button in the Updates pane"), &m_view))
    , m_helpButton(new QPushButton(tr("&Help", "Button in the Updates pane: opens the page about updates"), &m_view))
{
    layOut();
    connect(m_updateButton, &QPushButton::clicked, &m_updater, &Updater::checkForUpdates);
    connect(m_helpButton, &QPushButton::clicked, this, &UpdatePreferencesViewController::helpButtonAction);
}

void UpdatePreferencesViewController::helpButtonAction()
{
    if (const auto book = bundleInfo(u"CFBundleHelpBookName")) {
        Q_EMIT helpRequested(QStringLiteral("KeepingUpToDate"), *book);
    }
}

void UpdatePreferencesViewController::layOut()
{
    auto *version = new QLabel(tr("Tunedeck %1", "In the Updates pane; %1 is the version that runs")
                                   .arg(bundleInfo(u"CFBundleShortVersionString").value_or(QString())),
        &m_view);
    QFont bold = version->font();
    bold.setBold(true);
    version->setFont(bold);
    auto *purpose = new QLabel(m_updater.looksForUpdates()
            ? tr("Tunedeck looks for a newer version only when you ask. You choose whether to download it.",
                  "In the Updates pane")
            : tr("This copy of Tunedeck does not look for new versions itself. If it came with your system, new "
                 "versions come with the system's updates. If you built it yourself, build it again from newer "
                 "sources.",
                  "In the Updates pane"),
        &m_view);
    purpose->setWordWrap(true);

    auto *buttons = new QHBoxLayout;
    buttons->addWidget(m_updateButton);
    buttons->addStretch();
    buttons->addWidget(m_helpButton);

    auto *layout = new QVBoxLayout(&m_view);
    layout->setContentsMargins(PaneMetrics::margin, PaneMetrics::margin, PaneMetrics::margin, PaneMetrics::margin);
    layout->setSpacing(PaneMetrics::gap);
    layout->addWidget(version);
    layout->addWidget(purpose);
    layout->addSpacing(PaneMetrics::choiceGap);
    layout->addLayout(buttons);
}

} // namespace tunedeck
