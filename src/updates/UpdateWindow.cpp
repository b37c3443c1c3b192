// SPDX-License-Identifier: MIT
#include "updates/UpdateWindow.h"

#include "platform/BundleInfo.h"
#include "updates/failureMessage.h"
#include "updates/feed/Appcast.h"
#include "updates/feed/isSecureAddress.h"
#include "updates/safeReleaseNotes.h"

#include <QAccessible>
#include <QApplication>
#include <QDesktopServices>
#include <QDialogButtonBox>
#include <QDir>
#include <QEvent>
#include <QFileInfo>
#include <QGridLayout>
#include <QIcon>
#include <QLabel>
#include <QLocale>
#include <QProgressBar>
#include <QPushButton>
#include <QSize>
#include <QStyle>
#include <QTextBrowser>

namespace tunedeck {

namespace {
constexpr int charactersPerLine = 72;
constexpr int linesOfNotes = 14;
constexpr QSize iconSize(48, 48);

/// Shows its text, and loads nothing.
class NotesBrowser : public QTextBrowser {
public:
    using QTextBrowser::QTextBrowser;

    QVariant loadResource(int, const QUrl &) override { return {}; }
};

QString sizeText(qint64 bytes)
{
    return QLocale().formattedDataSize(bytes, 1, QLocale::DataSizeSIFormat);
}

void openLink(const QUrl &url)
{
    if (isSecureAddress(url)) {
        QDesktopServices::openUrl(url);
    }
}

QLabel *newTextLabel()
{
    auto *label = new QLabel;
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    return label;
}
} // namespace

UpdateWindow::UpdateWindow(QWidget *parent)
    : QDialog(parent)
    , m_icon(new QLabel)
    , m_headline(newTextLabel())
    , m_text(newTextLabel())
    , m_progress(new QProgressBar)
    , m_notes(new NotesBrowser)
    , m_buttons(new QDialogButtonBox)
{
    setAttribute(Qt::WA_QuitOnClose, false);
    setWindowTitle(tr("Software Update", "Updates: title of the window"));
    const QIcon icon = QIcon::fromTheme(applicationId.toString(), QApplication::windowIcon());
    m_icon->setPixmap(icon.pixmap(iconSize, devicePixelRatioF()));
    m_icon->setHidden(icon.isNull());
    QFont headlineFont = font();
    headlineFont.setBold(true);
    m_headline->setFont(headlineFont);
    m_progress->setTextVisible(false);
    m_progress->setAccessibleName(tr("Progress", "Updates: for accessibility, the progress bar"));
    m_notes->setOpenLinks(false);
    m_notes->setAccessibleName(tr("What is new", "Updates: for accessibility, the text on what is new in a version"));
    connect(m_notes, &QTextBrowser::anchorClicked, this, &openLink);
    connect(m_buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    layOut();
}

void UpdateWindow::showChecking()
{
    beginPage(tr("Checking for updates…", "Updates: a search is under way"), QString());
    showProgress(0);
    endPage(m_buttons->addButton(QDialogButtonBox::Cancel));
}

void UpdateWindow::showUpToDate(const QString &runningVersion)
{
    beginPage(tr("Tunedeck is up to date.", "Updates: there is no newer version"),
        tr("You have version %1, which is the newest.", "Updates: %1 is a version").arg(runningVersion));
    endPage(m_buttons->addButton(QDialogButtonBox::Close));
}

void UpdateWindow::showForNewerSystem(const AppcastItem &newest, const QString &runningVersion)
{
    beginPage(tr("A new version of Tunedeck is available, but not for your system.",
                  "Updates: there is a newer version, which needs a newer system"),
        tr("Version %1 needs version %2 of your system or a later one. You have version %3, the newest that runs on "
           "your system.",
            "Updates: %1 and %3 are versions of Tunedeck, %2 is one of the operating system")
            .arg(newest.displayVersion(), newest.minimumSystemVersion, runningVersion));
    endPage(m_buttons->addButton(QDialogButtonBox::Close));
}

void UpdateWindow::showUpdate(const AppcastItem &update, const QString &runningVersion)
{
    beginPage(tr("A new version of Tunedeck is available.", "Updates: there is a newer version"),
        tr("Version %1 is available; you have version %2.", "Updates: %1 and %2 are versions")
            .arg(update.displayVersion(), runningVersion));
    m_notes->setHtml(safeReleaseNotes(update.releaseNotes));
    m_notes->setHidden(update.releaseNotes.isEmpty());
    QPushButton *download =
        addButton(tr("&Download", "Updates: button that downloads the new version"), &UpdateWindow::downloadRequested);
    m_buttons->addButton(
        tr("&Later", "Updates: button that leaves the new version for another day"), QDialogButtonBox::RejectRole);
    endPage(download);
}

void UpdateWindow::showDownload(const AppcastItem &update)
{
    beginPage(tr("Downloading Tunedeck %1…", "Updates: %1 is a version").arg(update.displayVersion()), QString());
    showProgress(update.length);
    setReceived(0);
    endPage(m_buttons->addButton(QDialogButtonBox::Cancel));
}

void UpdateWindow::setReceived(qint64 bytes)
{
    m_progress->setValue(static_cast<int>(bytes));
    m_text->setText(tr("%1 of %2", "Updates: how much has come of a download, such as 1.2 MB of 3 MB")
            .arg(sizeText(bytes), sizeText(m_progress->maximum())));
}

void UpdateWindow::showVerifying()
{
    beginPage(tr("Checking that the download is genuine…", "Updates: the file's signature is looked at"), QString());
    showProgress(0);
    endPage(m_buttons->addButton(QDialogButtonBox::Cancel));
}

void UpdateWindow::showSaved(const QString &path)
{
    const QFileInfo file(path);
    beginPage(tr("The new version has been downloaded.", "Updates: the file is there"),
        tr("It was verified and saved as “%1” in “%2”. To install it, quit Tunedeck and open the file.",
            "Updates: %1 is the name of a file, %2 of a folder")
            .arg(file.fileName(), QDir::toNativeSeparators(file.path())));
    endPageOfFile();
}

void UpdateWindow::showGenuine(const QString &path)
{
    const QFileInfo file(path);
    beginPage(tr("The file is genuine.", "Updates: the file was verified again"),
        tr("“%1” in “%2” is the file that Tunedeck's makers signed. To install it, quit Tunedeck and open the file.",
            "Updates: %1 is the name of a file, %2 of a folder")
            .arg(file.fileName(), QDir::toNativeSeparators(file.path())));
    endPageOfFile();
}

void UpdateWindow::endPageOfFile()
{
    QPushButton *show = addButton(tr("Show in &Folder", "Updates: button that shows the file in the file manager"),
        &UpdateWindow::showInFolderRequested);
    addButton(tr("&Verify Again", "Updates: button that checks once more that the saved file is genuine"),
        &UpdateWindow::verificationRequested);
    m_buttons->addButton(QDialogButtonBox::Close);
    endPage(show);
}

void UpdateWindow::showFailure(UpdateFailure failure)
{
    const FailureMessage message = failureMessage(failure);
    beginPage(message.headline, message.advice);
    endPage(m_buttons->addButton(QDialogButtonBox::Close));
}

void UpdateWindow::showNoFeed()
{
    beginPage(tr("This copy of Tunedeck does not look for new versions itself.",
                  "Updates: Tunedeck came with the system, or was built by hand"),
        tr("If it came with your system, new versions come with the system's updates. If you built it yourself, build "
           "it again from newer sources.",
            "Updates: Tunedeck came with the system, or was built by hand"));
    endPage(m_buttons->addButton(QDialogButtonBox::Close));
}

void UpdateWindow::offerSystemUpdater()
{
    endPage(addButton(tr("&Open Software Updater", "Updates: button that starts the system's own program for updates"),
        &UpdateWindow::systemUpdaterRequested));
}

void UpdateWindow::changeEvent(QEvent *event)
{
    QDialog::changeEvent(event);
    if (event->type() == QEvent::FontChange) {
        makeRoomForTexts();
        adjustSize();
    }
}

void UpdateWindow::layOut()
{
    auto *layout = new QGridLayout(this);
    const int gap = style()->pixelMetric(QStyle::PM_LayoutTopMargin, nullptr, this);
    layout->setHorizontalSpacing(gap);
    m_buttons->setContentsMargins(0, gap, 0, 0);
    layout->addWidget(m_icon, 0, 0, 3, 1, Qt::AlignTop);
    layout->addWidget(m_headline, 0, 1);
    layout->addWidget(m_text, 1, 1);
    layout->addWidget(m_progress, 2, 1);
    layout->addWidget(m_notes, 3, 1);
    layout->addWidget(m_buttons, 4, 0, 1, 2);
    layout->setColumnStretch(1, 1);
    layout->setRowStretch(3, 1);
    m_layout = layout;
    makeRoomForTexts();
}

void UpdateWindow::makeRoomForTexts()
{
    const QFontMetrics metrics = fontMetrics();
    m_notes->setMinimumHeight(linesOfNotes * metrics.lineSpacing());
    m_layout->setColumnMinimumWidth(1, charactersPerLine * metrics.averageCharWidth());
}

void UpdateWindow::beginPage(const QString &headline, const QString &text)
{
    m_headline->setText(headline);
    m_text->setText(text);
    m_progress->hide();
    m_notes->hide();
    m_notes->clear();
    m_buttons->clear();
}

QPushButton *UpdateWindow::addButton(const QString &text, void (UpdateWindow::*request)())
{
    QPushButton *button = m_buttons->addButton(text, QDialogButtonBox::ActionRole);
    // The connection is queued because the receiver may replace the button.
    connect(button, &QPushButton::clicked, this, request, Qt::QueuedConnection);
    return button;
}

void UpdateWindow::endPage(QPushButton *defaultButton)
{
    m_text->setHidden(m_text->text().isEmpty());
    defaultButton->setDefault(true);
    defaultButton->setFocus();
    adjustSize();
    setAccessibleDescription(m_headline->text() + u'\n' + m_text->text());
    QAccessibleEvent newPage(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&newPage);
}

void UpdateWindow::showProgress(qint64 size)
{
    m_progress->setRange(0, static_cast<int>(size));
    m_progress->reset();
    m_progress->show();
}

} // namespace tunedeck
