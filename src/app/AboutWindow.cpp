// SPDX-License-Identifier: MIT
#include "app/AboutWindow.h"

#include "help/pageStyle.h"
#include "platform/BundleInfo.h"
#include "platform/FatalError.h"
#include "widgets/bringToFront.h"
#include "widgets/scaledFont.h"

#include <QDesktopServices>
#include <QEvent>
#include <QFile>
#include <QLabel>
#include <QLocale>
#include <QPaintEvent>
#include <QPainter>
#include <QResizeEvent>
#include <QShortcut>
#include <QStringDecoder>
#include <QSvgRenderer>
#include <QTextBrowser>
#include <QTextCursor>
#include <QTextDocument>
#include <QUrl>
#include <QVBoxLayout>

#include <algorithm>
#include <array>
#include <cmath>
#include <memory>
#include <optional>

namespace tunedeck {

namespace {
constexpr QSize iconSize(96, 96);
constexpr int margin = 20;
constexpr int gap = 6;
constexpr int leastCreditsWidth = 340;
constexpr int charactersPerLine = 50;
constexpr int mostCreditsHeight = 300;
constexpr double nameScale = 1.5;
constexpr double smallScale = 0.9;
constexpr std::array<QStringView, 4> creditsLanguages{u"es", u"de", u"fi", u"pl"};

class IconView : public QWidget {
public:
    explicit IconView(QWidget *parent)
        : QWidget(parent)
        , m_picture(QStringLiteral(":/icons/%1.svg").arg(applicationId))
    {
        setFixedSize(iconSize);
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        m_picture.render(&painter, rect());
    }

private:
    QSvgRenderer m_picture;
};

QString fact(QStringView key)
{
    const auto value = bundleInfo(key);
    if (!value) {
        fatalError("a fact about the application is missing");
    }
    return *value;
}

QString creditsName()
{
    const QString language = QLocale::languageToCode(QLocale().language());
    const bool isWritten = std::ranges::find(creditsLanguages, language) != creditsLanguages.end();
    return isWritten ? QStringLiteral("Credits_") + language : QStringLiteral("Credits");
}

std::optional<QString> readText(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        return std::nullopt;
    }
    QStringDecoder decode(QStringDecoder::Utf8);
    const QString text = decode(file.readAll());
    return decode.hasError() || text.isEmpty() ? std::nullopt : std::optional(text);
}

QString addressesInHtml(const std::optional<QString> &homepage, const std::optional<QString> &contact)
{
    QStringList lines;
    if (homepage) {
        lines.append(QStringLiteral("<a href=\"%1\">%2</a>").arg(*homepage, QUrl(*homepage).host()));
    }
    if (contact) {
        lines.append(contact->toHtmlEscaped());
    }
    return lines.isEmpty() ? QString()
                           : QStringLiteral("<p align=\"center\">%1</p>").arg(lines.join(QStringLiteral("<br/>")));
}

int widthOfCredits(const QFont &font)
{
    return std::max(leastCreditsWidth, charactersPerLine * QFontMetrics(font).averageCharWidth());
}

int heightOf(const QTextDocument &credits, int width)
{
    // The view's own document may still have the layout of another width.
    const std::unique_ptr<QTextDocument> copy(credits.clone());
    copy->setTextWidth(width);
    return static_cast<int>(std::ceil(copy->size().height()));
}
} // namespace

AboutWindow::AboutWindow(
    const QString &creditsFolder, const std::optional<QString> &homepage, const std::optional<QString> &contact)
    : QDialog(nullptr, Qt::Dialog)
    , m_creditsFolder(creditsFolder)
    , m_addresses(addressesInHtml(homepage, contact))
    , m_icon(new IconView(this))
    , m_nameLabel(new QLabel(fact(u"CFBundleName"), this))
    , m_versionLabel(new QLabel(this))
    , m_creditsText(new QTextBrowser(this))
{
    setWindowTitle(tr("About", "About window title"));
    // Closing the player quits the program, even if this window is open.
    setAttribute(Qt::WA_QuitOnClose, false);
    setUpTexts();
    setUpFonts();
    layOut();
    auto *closeKeys = new QShortcut(this);
    closeKeys->setKeys(QKeySequence::Close);
    connect(closeKeys, &QShortcut::activated, this, &QWidget::close);
}

void AboutWindow::orderFront()
{
    showCredits();
    bringToFront(*this);
}

void AboutWindow::setBackground(QWidget &background)
{
    m_background = &background;
    background.setParent(this);
    background.setGeometry(rect());
    background.lower();
    background.show();
}

void AboutWindow::changeEvent(QEvent *event)
{
    QDialog::changeEvent(event);
    if (event->type() == QEvent::FontChange) {
        setUpFonts();
    }
    // The text's colours and height come from the former palette and font.
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::FontChange) {
        showCredits();
    }
}

void AboutWindow::resizeEvent(QResizeEvent *event)
{
    QDialog::resizeEvent(event);
    if (m_background) {
        m_background->setGeometry(rect());
    }
}

void AboutWindow::setUpFonts()
{
    QFont nameFont = scaledFont(font(), nameScale);
    nameFont.setBold(true);
    m_nameLabel->setFont(nameFont);
    m_versionLabel->setFont(scaledFont(font(), smallScale));
    m_creditsText->setFont(scaledFont(font(), smallScale));
}

void AboutWindow::setUpTexts()
{
    m_versionLabel->setText(tr("Version %1 (%2)", "About window: the version and the number of its build")
            .arg(fact(u"CFBundleShortVersionString"), fact(u"CFBundleVersion")));
    for (QLabel *label : {m_nameLabel, m_versionLabel}) {
        label->setTextFormat(Qt::PlainText);
        label->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    }

    m_creditsText->setAccessibleName(tr("Credits", "For accessibility: the about window's text"));
    m_creditsText->setFrameShape(QFrame::NoFrame);
    m_creditsText->viewport()->setAutoFillBackground(false);
    m_creditsText->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_creditsText->setOpenLinks(false);
    connect(m_creditsText, &QTextBrowser::anchorClicked, this, [](const QUrl &link) {
        if (link.scheme() == QLatin1String("https")) {
            QDesktopServices::openUrl(link);
        }
    });
}

void AboutWindow::layOut()
{
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(margin, margin, margin, margin);
    layout->setSpacing(gap);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    for (QWidget *line : std::initializer_list<QWidget *>{m_icon, m_nameLabel, m_versionLabel}) {
        layout->addWidget(line, 0, Qt::AlignHCenter);
    }
    layout->addSpacing(gap);
    layout->addWidget(m_creditsText);
}

void AboutWindow::showCredits()
{
    const auto credits = readText(m_creditsFolder + u'/' + creditsName() + QStringLiteral(".html"));
    m_creditsText->setVisible(credits.has_value());
    if (!credits) {
        return;
    }
    m_creditsText->document()->setDefaultStyleSheet(pageStyle(palette()));
    m_creditsText->setHtml(*credits);
    if (!m_addresses.isEmpty()) {
        QTextCursor end(m_creditsText->document());
        end.movePosition(QTextCursor::End);
        end.insertBlock();
        end.insertHtml(m_addresses);
    }
    const int width = widthOfCredits(m_creditsText->font());
    m_creditsText->setFixedSize(width, std::min(heightOf(*m_creditsText->document(), width), mostCreditsHeight));
}

} // namespace tunedeck
