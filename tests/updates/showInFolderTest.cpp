// SPDX-License-Identifier: MIT
#include "updates/showInFolder.h"

#include "FileManager.h"
#include "support/PrivateBus.h"
#include "support/registerTest.h"

#include <QApplication>
#include <QDesktopServices>
#include <QRegularExpression>
#include <QTest>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace tunedeck {

class showInFolderTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(u".*"_s));
        m_opened.clear();
        QDesktopServices::setUrlHandler(u"file"_s, this, "open");
    }
    void cleanup() { QDesktopServices::unsetUrlHandler(u"file"_s); }

    void theFileManagerIsAsked()
    {
        const PrivateBus bus;
        QVERIFY(bus.isRunning());
        FileManager manager;
        QVERIFY(manager.registerOn(bus.connect(u"desktop"_s)));
        showInFolder(bus.connect(u"program"_s), u"/tmp/a b/tunedeck (1).deb"_s);
        QTRY_COMPARE(manager.shown, QStringList(u"file:///tmp/a%20b/tunedeck%20(1).deb"_s));
        QCOMPARE(m_opened, QList<QUrl>());
    }

    void whereThereIsNoneTheFolderIsOpened()
    {
        const PrivateBus bus;
        QVERIFY(bus.isRunning());
        showInFolder(bus.connect(u"program alone"_s), u"/tmp/a b/tunedeck.deb"_s);
        QTRY_COMPARE(m_opened, QList<QUrl>({QUrl::fromLocalFile(u"/tmp/a b"_s)}));
    }

    void whereThereIsNoBusTheFolderIsOpened()
    {
        showInFolder(QDBusConnection(u"none"_s), u"/tmp/tunedeck.deb"_s);
        QTRY_COMPARE(m_opened, QList<QUrl>({QUrl::fromLocalFile(u"/tmp"_s)}));
    }

public Q_SLOTS:
    void open(const QUrl &url) { m_opened.append(url); }

private:
    QList<QUrl> m_opened;
};

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::showInFolderTest, QApplication)
#include "showInFolderTest.moc"
