// SPDX-License-Identifier: MIT
#include "app/sound/PlayThroughMenu.h"

#include "dock/addOutputItems.h"
#include "music/MusicApplication.h"
#include "music/PlayerSound.h"

#include <QMenu>

namespace tunedeck {

PlayThroughMenu::PlayThroughMenu(QMenu &menu, const MusicApplication &music, QObject *parent)
    : QObject(parent)
    , m_menu(menu)
    , m_music(music)
{
    connect(&menu, &QMenu::aboutToShow, this, &PlayThroughMenu::fill);
    // A global menu bar reads the menu before it opens.
    const auto updateIfClosed = [this] {
        if (!m_menu.isVisible()) {
            update();
        }
    };
    connect(&music, &MusicApplication::soundDidChange, this, updateIfClosed);
    connect(&music, &MusicApplication::playerDidChange, this, updateIfClosed);
    fill();
}

void PlayThroughMenu::update()
{
    if (outputChoices(m_music) != m_shown) {
        fill();
    }
}

/// A chosen item has changed its mark, whether or not the player has moved: the items are made again.
void PlayThroughMenu::fill()
{
    m_shown = outputChoices(m_music);
    m_menu.clear();
    addOutputItems(m_menu, m_shown, this, [this](const QString &id) { m_music.sound()->moveTo(id); });
}

} // namespace tunedeck
