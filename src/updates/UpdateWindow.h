// SPDX-License-Identifier: MIT
#pragma once

#include "updates/UpdateFailure.h"

#include <QDialog>
#include <QString>

class QDialogButtonBox;
class QGridLayout;
class QLabel;
class QProgressBar;
class QPushButton;
class QTextBrowser;

namespace tunedeck {

struct AppcastItem;

/// The window that tells how the search for an update goes: one page at a time, each of which replaces the one before.
/// Closing it, by whatever button or key, is told by QDialog::rejected().
class UpdateWindow : public QDialog {
    Q_OBJECT

public:
    explicit UpdateWindow(QWidget *parent = nullptr);

    void showChecking();
    void showUpToDate(const QString &runningVersion);
    /// `newest` needs a newer system.
    void showForNewerSystem(const AppcastItem &newest, const QString &runningVersion);
    void showUpdate(const AppcastItem &update, const QString &runningVersion);
    void showDownload(const AppcastItem &update);
    /// Of the download, which must be shown.
    void setReceived(qint64 bytes);
    void showVerifying();
    /// With the path of the file.
    void showSaved(const QString &path);
    void showFailure(UpdateFailure failure);
    /// This copy of the program came with the system, whose software updater brings the next one, or was built by hand.
    void showNoFeed();
    /// Adds a button to the page of showNoFeed().
    void offerSystemUpdater();

    /// Shows the window, if need be on top of others.
    void bringForward();

Q_SIGNALS:
    void downloadRequested();
    void showInFolderRequested();
    void systemUpdaterRequested();

protected:
    void changeEvent(QEvent *event) override;

private:
    void layOut();
    void makeRoomForTexts();
    void beginPage(const QString &headline, const QString &text);
    QPushButton *addButton(const QString &text, void (UpdateWindow::*request)());
    void endPage(QPushButton *defaultButton);
    /// 0 for a task of unknown size.
    void showProgress(qint64 size);

    QLabel *m_icon;
    QLabel *m_headline;
    QLabel *m_text;
    QProgressBar *m_progress;
    QTextBrowser *m_notes;
    QDialogButtonBox *m_buttons;
    QGridLayout *m_layout = nullptr;
};

} // namespace tunedeck
