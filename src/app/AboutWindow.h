// SPDX-License-Identifier: MIT
#pragma once

#include "platform/BundleInfo.h"

#include <QDialog>
#include <QPointer>
#include <QString>

#include <optional>

class QLabel;
class QTextBrowser;

namespace tunedeck {

/// The about window: the program's icon, name, version and credits. It can have the keyboard focus, but is a panel (see
/// WindowActivation). Escape closes it and does not destroy it.
class AboutWindow : public QDialog {
    Q_OBJECT

public:
    /// `creditsFolder` has a file "Credits.html", and others such as "Credits_de.html" for the languages that the
    /// credits are translated into. The home page and the mail address follow the credits if there are any.
    explicit AboutWindow(const QString &creditsFolder = QStringLiteral(":/credits"),
        const std::optional<QString> &homepage = bundleInfo(u"TunedeckHomepage"),
        const std::optional<QString> &contact = bundleInfo(u"TunedeckContact"));

    /// Reads the credits in the current language and brings the window to the front.
    void orderFront();
    /// Puts `background` behind the contents and keeps it as large as the window, which becomes its parent.
    void setBackground(QWidget &background);

    [[nodiscard]] QLabel &nameLabel() { return *m_nameLabel; }
    [[nodiscard]] QLabel &versionLabel() { return *m_versionLabel; }
    /// Hidden if the credits cannot be read.
    [[nodiscard]] QTextBrowser &creditsText() { return *m_creditsText; }

protected:
    void changeEvent(QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void setUpFonts();
    void setUpTexts();
    void layOut();
    void showCredits();

    QString m_creditsFolder;
    QString m_addresses; ///< in HTML
    QPointer<QWidget> m_background;
    QWidget *m_icon;
    QLabel *m_nameLabel;
    QLabel *m_versionLabel;
    QTextBrowser *m_creditsText;
};

} // namespace tunedeck
