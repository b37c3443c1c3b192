// SPDX-License-Identifier: MIT
#pragma once

#include "drawer/PlaylistNames.h"
#include "music/MusicTypes.h"
#include "widgets/FocusKeeper.h"

#include <QObject>
#include <QString>

class QAction;

namespace tunedeck {

class MusicConnector;
class PlaylistView;

/// Lets the user pick one of Music's playlists and start it, and shows and changes Music's shuffle and repeat modes.
class PlaylistViewController : public QObject {
    Q_OBJECT

public:
    /// Brings `view` up to date. Both must outlive the controller.
    PlaylistViewController(MusicConnector &musicConnector, PlaylistView &view, QObject *parent = nullptr);

    /// Whether `item` is enabled.
    [[nodiscard]] bool validateMenuItem(const QAction &item) const;

public Q_SLOTS:
    void shuffleButtonPressed();
    /// Off is followed by all, all by one, one by off.
    void repeatButtonPressed();
    void doneButtonClicked();

private:
    void showPlaylists();
    /// Empty if all playlists are shown.
    [[nodiscard]] QString whatIsMissing() const;
    [[nodiscard]] QString whyEmpty() const;
    void showSelectedPlaylist();
    void enablePlaylistControls();
    void refreshControls();
    void selectPlaylist(int index);
    void refreshButtons();

    MusicConnector &m_musicConnector;
    PlaylistView &m_view;
    QString m_doneToolTip;
    FocusKeeper m_focus;
    PlaylistNames m_playlistNames;
    /// The mode that the button shows: Music's, until a click asks for another.
    RepeatMode m_shownRepeatMode = RepeatMode::off;
};

} // namespace tunedeck
