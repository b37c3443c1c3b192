// SPDX-License-Identifier: MIT
#pragma once

#include "music/MusicTypes.h"
#include "music/PlaylistOption.h"

#include <QList>
#include <QObject>
#include <QStringList>
#include <QThreadPool>
#include <QTimer>

#include <optional>

namespace tunedeck {

class MusicApplication;

/// The playlists that Music offers.
struct LoadedPlaylists {
    QList<PlaylistOption> options;
    PlaylistSource source = PlaylistSource::unknown;
    bool hasMore = false; ///< whether Music has more playlists than these
    std::optional<PlaylistOption> current; ///< the last of the options whose id is that of the playlist Music plays
};

/// The three jobs that wait for Music: each runs on its own thread of a pool, at most once at a time. Results are
/// reported on the main thread.
///
/// The destructor ends the waits of the jobs, and returns when no job runs any more.
class BackgroundJobs : public QObject {
    Q_OBJECT

public:
    /// `musicApp` must outlive this object.
    explicit BackgroundJobs(MusicApplication &musicApp, QObject *parent = nullptr);
    ~BackgroundJobs() override;

    /// Does nothing while Music does not run or a load is under way.
    void loadPlaylists();
    /// Plays the playlist with this id, unless Music plays it already. While another is about to be played, the last
    /// one chosen follows it. A Music that does not run is launched, and plays the playlist if it lists it within 10 s.
    void playPlaylist(qint64 id);
    /// Does nothing while Music does not run. While a read is under way, a single further one follows it.
    void readAudioOutputNames();
    /// Music has quit: jobs that wait for a thread are dropped, and no job begun before reports a result.
    void cancel();

Q_SIGNALS:
    /// Not emitted if Music does not answer, or answers an id or a name of the wrong type.
    void playlistsLoaded(const tunedeck::LoadedPlaylists &playlists);
    /// The names of the outputs that Music plays to, without the computer's own.
    void audioOutputNamesRead(const QStringList &names);

private:
    /// Calls `work` with Music on a thread of the pool, then `apply` with its result on the main thread, unless the job
    /// has been cancelled in the meantime.
    template <typename Work, typename Apply> void start(Work work, Apply apply);
    void finishLoadingPlaylists(const LoadedPlaylists &loaded);
    void startPlaying(qint64 id);
    /// `isPlayed` is false if Music did not answer that it plays the playlist.
    void finishPlaying(bool isPlayed, quint64 session);
    void finishReadingAudioOutputs(const QStringList &names);

    MusicApplication &m_musicApp;
    QThreadPool m_pool{this};
    /// Counts the times Music quit: the result of a job from an earlier session is out of date.
    quint64 m_session = 0;
    bool m_isLoadingPlaylists = false;
    std::optional<qint64> m_playlistUnderWay;
    std::optional<qint64> m_nextPlaylist;
    qint64 m_chosenPlaylist = 0; ///< the last one
    QTimer m_awaitedPlaylist{this}; ///< active while the chosen playlist waits for Music
    QTimer m_nextLoad{this}; ///< active until a Music that does not list that playlist is asked again
    bool m_isReadingAudioOutputs = false;
    bool m_readsAudioOutputsAgain = false;
};

} // namespace tunedeck
