// SPDX-License-Identifier: MIT
#include "skin/views/MetalPopupButton.h"

#include "skin/drawing/metalBezel.h"
#include "skin/looks/FocusRing.h"
#include "skin/looks/skinLooks.h"
#include "widgets/isMouseButtonEvent.h"

#include <QKeyEvent>
#include <QListView>
#include <QMouseEvent>
#include <QPainter>
#include <QProxyStyle>
#include <QStyleOptionComplex>
#include <QWheelEvent>

namespace tunedeck {

namespace {
constexpr int leftMargin = 9;
constexpr int mostVisibleItems = 14;
constexpr int leastCharacters = 8;

QRectF faceOf(const QRectF &control)
{
    return control.adjusted(leftMargin, 0, 0, 0);
}

/// Opens a list under the rim, also where the desktop's style opens a menu as high as the screen.
class ListStyle : public QProxyStyle {
public:
    int styleHint(
        StyleHint hint, const QStyleOption *option, const QWidget *widget, QStyleHintReturn *returnData) const override
    {
        return hint == SH_ComboBox_Popup ? 0 : QProxyStyle::styleHint(hint, option, widget, returnData);
    }

    QRect subControlRect(ComplexControl control, const QStyleOptionComplex *option, SubControl part,
        const QWidget *widget) const override
    {
        return part == SC_ComboBoxListBoxPopup ? MetalPopupButtonCell::rim(faceOf(option->rect)).toRect()
                                               : QProxyStyle::subControlRect(control, option, part, widget);
    }
};

bool isTypingAskedFor(const QEvent &event)
{
    if (event.type() != QEvent::ShortcutOverride) {
        return false;
    }
    const auto &keyEvent = static_cast<const QKeyEvent &>(event);
    const bool isPlain = (keyEvent.modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier)) == Qt::NoModifier;
    return isPlain && !keyEvent.text().isEmpty() && keyEvent.text().front().isPrint();
}
} // namespace

MetalPopupButton::MetalPopupButton(const SkinEnvironment &environment, QWidget *parent)
    : QComboBox(parent)
    , m_environment(environment)
    , m_isMainWindow(environment.windowActivation, ActivationFlag::Status::Main)
{
    auto *style = new ListStyle;
    style->setParent(this);
    setStyle(style);
    auto *list = new QListView;
    list->setUniformItemSizes(true);
    list->installEventFilter(this);
    setView(list);
    setMaxVisibleItems(mostVisibleItems);
    // Sizing the button to its longest item would measure each of thousands of items.
    setSizeAdjustPolicy(AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(leastCharacters);
    setFocusPolicy(Qt::TabFocus);
    connect(&m_isMainWindow, &ActivationFlag::changed, this, qOverload<>(&QWidget::update));
    new FocusRing(
        *this, environment, [](const QRectF &control) { return MetalPopupButtonCell::rim(faceOf(control)); },
        metalRimRadius);
}

void MetalPopupButton::setAppearance(std::optional<AppearanceName> appearance)
{
    m_appearance = appearance;
}

void MetalPopupButton::showPopup()
{
    // The open list has the keyboard focus, so screen readers read its name.
    view()->setAccessibleName(accessibleName());
    view()->setPalette(listPalette());
    QComboBox::showPopup();
}

bool MetalPopupButton::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Show || event->type() == QEvent::Hide) {
        setListShown(event->type() == QEvent::Show);
    }
    return QComboBox::eventFilter(watched, event);
}

bool MetalPopupButton::event(QEvent *event)
{
    // A typed character finds an item; it must not also play or pause.
    if (isTypingAskedFor(*event) || (!isEnabled() && isMouseButtonEvent(*event))) {
        event->accept();
        return true;
    }
    return QComboBox::event(event);
}

void MetalPopupButton::mousePressEvent(QMouseEvent *event)
{
    if (!face().contains(event->position().toPoint())) {
        event->ignore();
        return;
    }
    QComboBox::mousePressEvent(event);
}

void MetalPopupButton::wheelEvent(QWheelEvent *event)
{
    event->ignore();
}

void MetalPopupButton::paintEvent(QPaintEvent *)
{
    const MetalPopupButtonState state = this->state();
    QPainter painter(this);
    m_faces.draw(painter, rect(), state, [this, &state](QPainter &picture) { m_cell.draw(picture, face(), state); });
}

QRect MetalPopupButton::face() const
{
    return faceOf(rect()).toRect();
}

MetalPopupButtonState MetalPopupButton::state() const
{
    return {.title = currentText(),
        .font = font(),
        .isPressed = m_isListShown,
        .isEnabled = isEnabled(),
        .isMainWindow = isMainWindow()};
}

QPalette MetalPopupButton::listPalette() const
{
    const bool dark = isDark(m_appearance.value_or(m_environment.appearance.effectiveAppearance()));
    QPalette palette(dark ? QColor(60, 62, 66) : QColor(240, 240, 240));
    palette.setColor(QPalette::Base, dark ? QColor(44, 46, 50) : QColor(250, 250, 250));
    palette.setColor(QPalette::Text, dark ? QColor(235, 235, 235) : QColor(30, 30, 30));
    palette.setColor(QPalette::Highlight, isGraphite(m_environment) ? QColor(97, 115, 138) : QColor(54, 112, 184));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    return palette;
}

void MetalPopupButton::setListShown(bool isShown)
{
    if (m_isListShown == isShown) {
        return;
    }
    m_isListShown = isShown;
    update();
}

} // namespace tunedeck
