// SPDX-License-Identifier: MIT
#pragma once

#include "above/AboveRoad.h"
#include "above/AboveWay.h"

#include <QList>
#include <QObject>
#include <QTimer>

#include <chrono>
#include <functional>
#include <memory>

namespace tunedeck {

/// Has the compositor do what the user wants of the main window: keep it above others, or no longer. Asks again
/// whenever the window appears on the screen, because compositors forget windows that are hidden. One question is open
/// at a time; however often the user changes the wish meanwhile, one more follows. Where no compositor is asked it does
/// nothing, but still knows which way there is.
class KeptAbove : public QObject {
    Q_OBJECT

public:
    /// Time for a compositor's answer.
    static constexpr std::chrono::milliseconds patience{1'000};
    /// Time between two questions for a window that the compositor does not show yet.
    static constexpr std::chrono::milliseconds retryInterval{150};
    /// Time until a compositor that has not answered in time is asked once more. It may only have been busy, as it is
    /// when the session starts.
    static constexpr std::chrono::milliseconds secondTryDelay{5'000};

    /// `canWindowAsk`: the window system lets the window itself ask to stay above.
    explicit KeptAbove(bool canWindowAsk, QObject *parent = nullptr);

    /// Asks the compositor from now on.
    void setRoad(std::unique_ptr<AboveRoad> road);
    /// Whether a sandbox is why there is no road.
    void setIsInSandbox(bool isInSandbox) { m_isInSandbox = isInSandbox; }
    /// Whether a restart through XWayland is possible.
    void setCanRestart(bool canRestart) { m_canRestart = canRestart; }
    void setWanted(bool isWanted);
    /// The window has appeared on the screen, or left it.
    void setSeen(bool isSeen);

    /// Calls `done` with whether the compositor refuses what was wanted last, once it has answered. That is at once if
    /// no question is open, and within two seconds otherwise.
    void whenAnswered(std::function<void(bool isRefused)> done);

    /// The way that the window takes if the user wants it above; while it is wanted, the way that it took.
    [[nodiscard]] AboveWay way() const;
    /// Whether the user can change the wish. Where there is no way, it can only be taken back.
    [[nodiscard]] bool canToggle() const { return m_isWanted || isPossible(way()); }

Q_SIGNALS:
    /// way() may have changed.
    void wayChanged();
    /// The compositor does not keep the window above, although the user wants it. Comes once for each wish.
    void refused();

private:
    [[nodiscard]] bool isQuestionDue() const;
    void tryAgain();
    void ask();
    void sendQuestion();
    void handle(AboveAnswer answer);
    void giveUp();
    void finish(bool isRefused);
    [[nodiscard]] bool isAnswerForWish() const;
    void reportRefusal();

    const bool m_canWindowAsk;
    bool m_isInSandbox = false;
    bool m_canRestart = false;
    bool m_isWanted = false;
    bool m_isSeen = false;
    bool m_isRefused = false;
    bool m_mayBeAbove = false; ///< the compositor has been asked to keep it above
    bool m_asksAgain = false;
    bool m_isAskedFor = false; ///< the wish that the open question is about
    bool m_hasTriedTwice = false;
    bool m_isWishNew = false; ///< no refusal has been reported
    QList<std::function<void(bool)>> m_waiting; ///< for the open question's answer
    QList<std::function<void(bool)>> m_waitingForNext; ///< for the one that follows
    QTimer m_patience{this};
    QTimer m_retry{this};
    QTimer m_secondTry{this};
    std::unique_ptr<AboveRoad> m_road;
};

} // namespace tunedeck
