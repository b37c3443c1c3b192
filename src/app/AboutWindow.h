// SPDX-License-Identifier: MIT
#pragma once

#include <QDialog>
#include <QPointer>
#include <QString>

class QLabel;
class QTextBrowser;

namespace tunedeck {

/// The about window: the program's icon, name, version and credits. It can be key but not main, and is closed, not
/// destroyed, by Escape.
class AboutWindow : public QDialog {
    Q_OBJECT

public:
    /// The credits are looked for in `creditsFolder`, in files named "Credits_de.html" and alike for the languages they
    /// are written in and "Credits.html" for all others.
    explicit AboutWindow(const QString &creditsFolder = QStringLiteral(":/credits"), QWidget *parent = nullptr);

    /// Takes the credits in the language of the moment, if they can be read, and brings the window to the front.
    void orderFront();
    /// Puts `background` below everything else, as large as the window. It stays in the window.
    void setBackground(QWidget &background);

    [[nodiscard]] QLabel &nameLabel();
    [[nodiscard]] QLabel &versionLabel();
    /// Hidden where there are no credits.
    [[nodiscard]] QTextBrowser &creditsText();

protected:
    void changeEvent(QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void setUpFonts();
    void setUpTexts();
    void layOut();
    void showCredits();

    QString m_creditsFolder;
    QPointer<QWidget> m_background;
    QWidget *m_icon;
    QLabel *m_nameLabel;
    QLabel *m_versionLabel;
    QTextBrowser *m_creditsText;
};

} // namespace tunedeck
