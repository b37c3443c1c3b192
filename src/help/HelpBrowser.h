// SPDX-License-Identifier: MIT
#pragma once

#include "help/HelpBook.h"

#include <QTextBrowser>

namespace tunedeck {

/// Shows the pages of a book, and nothing else: no file and no address is ever loaded. Links inside the book move in
/// it, those to an https address go to the desktop's web browser, all others are dead.
class HelpBrowser : public QTextBrowser {
    Q_OBJECT

public:
    explicit HelpBrowser(const HelpBook &book, QWidget *parent = nullptr);

    void open(const HelpTopic &topic);
    /// The file name of the page that is shown; empty before the first one.
    [[nodiscard]] QString page() const;
    /// By one step, within limits at which it can still be read.
    void zoomBy(int steps);
    void resetZoom();

    [[nodiscard]] QVariant loadResource(int type, const QUrl &name) override;

protected:
    /// With Ctrl it zooms, as far as zoomBy() does.
    void wheelEvent(QWheelEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void follow(const QUrl &link);
    /// The page keeps the colours that it was made with.
    void makePageAnew();

    HelpBook m_book;
    int m_zoom = 0;
    int m_turned = 0; ///< of a notch of the wheel
};

} // namespace tunedeck
