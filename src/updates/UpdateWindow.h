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

/// The window that shows the state of a check or a download. Each page replaces the one before. QDialog::rejected() is
/// emitted whenever the user closes the window.
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
    /// Call this only while the page of showDownload() is shown.
    void setReceived(qint64 bytes);
    void showVerifying();
    /// `path` is that of the saved file.
    void showSaved(const QString &path);
    /// The file at `path` was verified again.
    void showGenuine(const QString &path);
    void showFailure(UpdateFailure failure);
    /// Explains that this copy of the program gets its updates from the system, or was built by the user.
    void showNoFeed();
    /// Adds a button to the page of showNoFeed().
    void offerSystemUpdater();

Q_SIGNALS:
    void downloadRequested();
    void showInFolderRequested();
    void verificationRequested();
    void systemUpdaterRequested();

protected:
    void changeEvent(QEvent *event) override;

private:
    void layOut();
    void makeRoomForTexts();
    void beginPage(const QString &headline, const QString &text);
    QPushButton *addButton(const QString &text, void (UpdateWindow::*request)());
    void endPage(QPushButton *defaultButton);
    void endPageOfFile();
    /// In bytes. 0 for a task of unknown size.
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
