// SPDX-License-Identifier: MIT
#pragma once

#include "music/outputChoices.h"

#include <QObject>

class QMenu;

namespace tunedeck {

class MusicApplication;

/// The menu from which the user chooses the output that the player plays through. Where nothing can be chosen, its
/// first item says why. An open menu does not change.
class PlayThroughMenu : public QObject {
    Q_OBJECT

public:
    /// Fills `menu`. Both references must outlive this object. `music` must have a sound().
    PlayThroughMenu(QMenu &menu, const MusicApplication &music, QObject *parent = nullptr);

private:
    void update();
    void fill();

    QMenu &m_menu;
    const MusicApplication &m_music;
    OutputChoices m_shown;
};

} // namespace tunedeck
