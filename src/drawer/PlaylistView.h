// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

namespace tunedeck {

class EngravedLabel;
class MetalButton;
class MetalPopupButton;
struct SkinEnvironment;

/// The controls of the drawer, in one row. It makes, names and lays them out on the drawer's inset field. The
/// PlaylistViewController decides what they show and do.
class PlaylistView : public QWidget {
    Q_OBJECT

public:
    explicit PlaylistView(const SkinEnvironment &environment, QWidget *parent = nullptr);

    [[nodiscard]] EngravedLabel &playlistLabel() { return *m_playlistLabel; }
    [[nodiscard]] MetalPopupButton &playlistPicker() { return *m_playlistPicker; }
    [[nodiscard]] MetalButton &doneButton() { return *m_doneButton; }
    [[nodiscard]] MetalButton &shuffleButton() { return *m_shuffleButton; }
    [[nodiscard]] MetalButton &repeatButton() { return *m_repeatButton; }

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    EngravedLabel *m_playlistLabel;
    MetalPopupButton *m_playlistPicker;
    MetalButton *m_doneButton;
    MetalButton *m_shuffleButton;
    MetalButton *m_repeatButton;
};

} // namespace tunedeck
