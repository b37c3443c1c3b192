// SPDX-License-Identifier: MIT
#include "skin/views/MetalPopupButton.h"

#include "skin/FocusedWindow.h"
#include "skin/PaintCounter.h"
#include "skin/Picture.h"
#include "skin/looksLike.h"
#include "support/SkinDesk.h"
#include "support/failOnWarning.h"
#include "support/registerTest.h"

#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QSignalSpy>
#include <QStyledItemDelegate>
#include <QTest>
#include <QWheelEvent>

#include <memory>

namespace tunedeck {

namespace {
class ListeningWindow : public QWidget {
public:
    int presses = 0;

protected:
    void mousePressEvent(QMouseEvent *) override { ++presses; }
};

/// Counts how often an item of the list is measured.
class MeasuredDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        ++measured;
        return QStyledItemDelegate::sizeHint(option, index);
    }

    mutable int measured = 0;
};

QStringList names(int count)
{
    QStringList names;
    for (int i = 0; i < count; ++i) {
        names.append(QStringLiteral("Playlist %1").arg(i));
    }
    return names;
}
} // namespace

class MetalPopupButtonTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        // Qt's offscreen platform warns that it neither raises a list's window nor gives it the keyboard.
        tunedeck::failOnWarning();
        m_desk = std::make_unique<SkinDesk>();
        m_window = std::make_unique<ListeningWindow>();
        m_window->resize(240, 60);
        m_button = new MetalPopupButton(m_desk->environment, m_window.get());
        m_button->setGeometry(20, 20, 189, 22);
    }

    void cleanup()
    {
        m_window.reset();
        m_desk.reset();
    }

    void theFocusMarkComesBackWhenTheListCloses_data()
    {
        QTest::addColumn<Qt::Key>("key");
        QTest::newRow("with a choice") << Qt::Key_Return;
        QTest::newRow("without one") << Qt::Key_Escape;
    }

    void theFocusMarkComesBackWhenTheListCloses()
    {
        QFETCH(const Qt::Key, key);
        m_button->addItems(names(3));
        m_window->show();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
        m_button->clearFocus();
        const QImage plain = m_window->grab().toImage();
        m_button->setFocus(Qt::TabFocusReason);
        const QImage marked = m_window->grab().toImage();
        QVERIFY(marked != plain);
        m_button->showPopup();
        QVERIFY(QApplication::activePopupWidget());
        QTest::keyClick(m_button->view(), key);
        QTRY_VERIFY(!QApplication::activePopupWidget());
        QVERIFY(m_button->hasFocus());
        QCOMPARE(m_window->grab().toImage(), marked);
    }

    void itShowsItsStateAsTheCellDrawsItRightOfAMargin()
    {
        m_button->addItems({QStringLiteral("Blue"), QStringLiteral("Green")});
        const auto expected = [this](const QString &title, bool isEnabled) {
            const MetalPopupButtonState state{.title = title,
                .font = m_button->font(),
                .isEnabled = isEnabled,
                .isMainWindow = m_button->isMainWindow()};
            return Picture(m_button->size(), 1, [&state](QPainter &painter) {
                painter.resetTransform();
                MetalPopupButtonCell().draw(painter, QRectF(9, 0, 180, 22), state);
            });
        };
        QVERIFY(looksLike(Picture(*m_button), expected(QStringLiteral("Blue"), true), m_button->size()));
        m_button->setCurrentIndex(1);
        QVERIFY(looksLike(Picture(*m_button), expected(QStringLiteral("Green"), true), m_button->size()));
        m_button->setCurrentIndex(-1);
        QVERIFY(looksLike(Picture(*m_button), expected(QString(), true), m_button->size()));
        m_button->setEnabled(false);
        QVERIFY(looksLike(Picture(*m_button), expected(QString(), false), m_button->size()));
    }

    void itIsPaintedAgainWhenAWindowBecomesMain()
    {
        PaintCounter paints(*m_button);
        focus(nullptr);
        static_cast<void>(paints.takeCount());
        focus(m_window->windowHandle());
        QVERIFY(m_button->isMainWindow());
        QCOMPARE(paints.takeCount(), 1);
        focus(nullptr);
        QVERIFY(!m_button->isMainWindow());
        QCOMPARE(paints.takeCount(), 1);
    }

    void aPressOpensTheListAndIsShownUntilItCloses()
    {
        m_button->addItems(names(3));
        show();
        const Picture atRest(*m_button);
        QTest::mousePress(m_button, Qt::LeftButton, {}, QPoint(60, 10));
        QVERIFY(m_button->view()->isVisible());
        QVERIFY(isNear(Picture(*m_button).at(100, 22 - 2.5), grey(119)));
        m_button->hidePopup();
        QVERIFY(!m_button->view()->isVisible());
        QCOMPARE(Picture(*m_button), atRest);
    }

    void aPressOnTheMarginIsTheWindows()
    {
        m_button->addItems(names(3));
        show();
        QTest::mousePress(m_window->windowHandle(), Qt::LeftButton, {}, QPoint(24, 30));
        QVERIFY(!m_button->view()->isVisible());
        QCOMPARE(m_window->presses, 1);
    }

    void aDisabledButtonKeepsTheMouseFromTheWindow()
    {
        m_button->addItems(names(3));
        m_button->setEnabled(false);
        show();
        QTest::mouseClick(m_window->windowHandle(), Qt::LeftButton, {}, QPoint(80, 30));
        QVERIFY(!m_button->view()->isVisible());
        QCOMPARE(m_window->presses, 0);
    }

    void aListOfTenThousandOpensWithoutMeasuringThemAll()
    {
        m_button->addItems(names(10'000));
        auto *delegate = new MeasuredDelegate(m_button);
        m_button->setItemDelegate(delegate);
        show();
        m_button->setCurrentIndex(9'000);
        m_button->showPopup();
        QVERIFY(m_button->view()->isVisible());
        QVERIFY(delegate->measured > 0);
        QVERIFY(delegate->measured < 200);
    }

    void aLongListIsOfLimitedHeightAndShowsTheChosenItem()
    {
        m_button->addItems(names(10'000));
        m_button->setCurrentIndex(9'000);
        show();
        m_button->showPopup();
        const QAbstractItemView *list = m_button->view();
        const int row = list->visualRect(m_button->model()->index(9'000, 0)).height();
        QVERIFY(row > 0);
        QVERIFY(list->window()->height() < 16 * row);
        QVERIFY(list->viewport()->rect().contains(list->visualRect(m_button->model()->index(9'000, 0))));
    }

    void theListOpensUnderTheRim()
    {
        m_button->addItems(names(3));
        show();
        m_button->showPopup();
        const QRectF face = QRectF(m_button->rect()).adjusted(9, 0, 0, 0);
        const QRect rim = MetalPopupButtonCell::rim(face).toRect();
        const QRect list = m_button->view()->window()->geometry();
        QCOMPARE(list.left(), m_button->mapToGlobal(rim.topLeft()).x());
        QCOMPARE(list.width(), rim.width());
        QCOMPARE(list.top(), m_button->mapToGlobal(rim.bottomLeft()).y());
    }

    void itsSizeDoesNotComeFromItsItems()
    {
        const QSize before = m_button->sizeHint();
        m_button->addItem(QString(1000, u'M'));
        QCOMPARE(m_button->sizeHint(), before);
    }

    void arrowsChooseAndTypingFinds()
    {
        m_button->addItems({QStringLiteral("Blue"), QStringLiteral("Green"), QStringLiteral("Red")});
        show();
        QTest::keyClick(m_button, Qt::Key_Down);
        QCOMPARE(m_button->currentText(), QStringLiteral("Green"));
        QTest::keyClick(m_button, Qt::Key_R);
        QCOMPARE(m_button->currentText(), QStringLiteral("Red"));
    }

    void spaceOpensTheListAndReturnChooses()
    {
        m_button->addItems({QStringLiteral("Blue"), QStringLiteral("Green"), QStringLiteral("Red")});
        show();
        QSignalSpy activated(m_button, &QComboBox::activated);
        QTest::keyClick(m_button, Qt::Key_Space);
        QVERIFY(m_button->view()->isVisible());
        QTest::keyClick(m_button->view(), Qt::Key_G);
        QTest::keyClick(m_button->view(), Qt::Key_Return);
        QVERIFY(!m_button->view()->isVisible());
        QCOMPARE(m_button->currentText(), QStringLiteral("Green"));
        QCOMPARE(activated.count(), 1);
    }

    void whatIsTypedIsNotTakenByAShortcut()
    {
        QAction playPause;
        playPause.setShortcut(Qt::Key_Space);
        QAction next;
        next.setShortcut(Qt::CTRL | Qt::Key_Right);
        m_window->addActions({&playPause, &next});
        m_button->addItems(names(3));
        show();
        m_button->setFocus();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
        QSignalSpy played(&playPause, &QAction::triggered);
        QSignalSpy skipped(&next, &QAction::triggered);
        QTest::keyClick(m_window->windowHandle(), Qt::Key_Right, Qt::ControlModifier);
        QCOMPARE(skipped.count(), 1);
        QTest::keyClick(m_window->windowHandle(), Qt::Key_Space);
        QCOMPARE(played.count(), 0);
        QVERIFY(m_button->view()->isVisible());
    }

    void aClickDoesNotTakeTheKeyboard()
    {
        m_button->addItems(names(3));
        m_window->setFocusPolicy(Qt::ClickFocus);
        show();
        m_window->setFocus();
        QTest::mouseClick(m_window->windowHandle(), Qt::LeftButton, {}, QPoint(80, 30));
        QVERIFY(!m_button->hasFocus());
        QCOMPARE(m_button->focusPolicy(), Qt::TabFocus);
    }

    void aWheelDoesNotChoose()
    {
        m_button->addItems(names(3));
        QWheelEvent down({60, 10}, {60, 10}, {}, {0, -120}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(m_button, &down);
        QCOMPARE(m_button->currentIndex(), 0);
        QVERIFY(!down.isAccepted());
    }

    void theListIsDrawnForTheApplicationsAppearanceUnlessTheButtonHasItsOwn()
    {
        m_button->addItems(names(3));
        show();
        const auto isListDark = [this] {
            m_button->showPopup();
            const bool isDark = m_button->view()->palette().color(QPalette::Base).lightness() < 128;
            m_button->hidePopup();
            return isDark;
        };
        QVERIFY(!isListDark());
        m_desk->setDark(true);
        QVERIFY(isListDark());
        m_button->setAppearance(AppearanceName::Aqua);
        QVERIFY(!isListDark());
        m_desk->setDark(false);
        m_button->setAppearance(AppearanceName::DarkAqua);
        QVERIFY(isListDark());
        m_button->setAppearance(std::nullopt);
        QVERIFY(!isListDark());
    }

    void theMetalLooksTheSameInEveryAppearance()
    {
        const Picture light(*m_button);
        m_button->setAppearance(AppearanceName::DarkAqua);
        QCOMPARE(Picture(*m_button), light);
    }

private:
    void show()
    {
        m_window->show();
        QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
    }

    std::unique_ptr<SkinDesk> m_desk;
    std::unique_ptr<ListeningWindow> m_window;
    MetalPopupButton *m_button = nullptr;
};

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::MetalPopupButtonTest, QApplication)
#include "MetalPopupButtonTest.moc"
