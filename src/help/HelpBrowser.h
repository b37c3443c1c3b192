// SPDX-License-Identifier: MIT
#pragma once

#include "help/HelpBook.h"

#include <QTextBrowser>

namespace tunedeck {

/// Shows the pages of a book. It never loads other files or addresses. Links inside the book open its pages, links to
/// https addresses open in the desktop's web browser, and all others do nothing.
class HelpBrowser : public QTextBrowser {
    Q_OBJECT

public:
    explicit HelpBrowser(const HelpBook &book, QWidget *parent = nullptr);

    void open(const HelpTopic &topic);
    /// The file name of the shown page. Empty before the first page.
    [[nodiscard]] QString page() const;
    /// Changes the size of the text by `steps` points, from 3 points smaller to 15 points larger than the font.
    void zoomBy(int steps);
    void resetZoom();

    [[nodiscard]] QVariant loadResource(int type, const QUrl &name) override;

protected:
    /// Ctrl and the wheel zoom.
    void wheelEvent(QWheelEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void follow(const QUrl &link);
    /// Shows the page in the colours of the current palette.
    void reloadPage();

    HelpBook m_book;
    int m_zoom = 0; ///< in points
    int m_turned = 0; ///< how far the wheel has turned since the last notch, in eighths of a degree
};

} // namespace tunedeck
