// SPDX-License-Identifier: MIT
#include "ApplicationInstance.h"

#include "PrivateBus.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>

#include <optional>

using namespace tunedeck;

class ApplicationInstanceTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
        qunsetenv("XDG_ACTIVATION_TOKEN");
    }

    void withoutABusEveryProcessIsTheFirst()
    {
        const ApplicationInstance instance(QDBusConnection(QStringLiteral("none")));
        QVERIFY(instance.isFirst());
    }

    void aSecondProcessActivatesTheFirst()
    {
        const PrivateBus bus;
        QVERIFY(bus.isRunning());
        const ApplicationInstance first(bus.connect(QStringLiteral("first")));
        ApplicationInstance second(bus.connect(QStringLiteral("second")));
        QVERIFY(first.isFirst());
        QVERIFY(!second.isFirst());

        qputenv("XDG_ACTIVATION_TOKEN", "token of the second");
        QSignalSpy activated(&first, &ApplicationInstance::activated);
        std::optional<bool> answered;
        second.activateFirst([&answered](bool isAnswered) { answered = isAnswered; });
        qunsetenv("XDG_ACTIVATION_TOKEN");
        QTRY_COMPARE(answered, true);
        QCOMPARE(activated.count(), 1);
        QCOMPARE(qgetenv("XDG_ACTIVATION_TOKEN"), QByteArrayLiteral("token of the second"));
    }

    void aFirstProcessThatDoesNotAnswerIsReported()
    {
        const PrivateBus bus;
        QVERIFY(bus.isRunning());
        // Owns the name and has nothing behind it.
        QDBusConnection mute = bus.connect(QStringLiteral("mute"));
        QVERIFY(mute.registerService(QStringLiteral("org.tunedeck.Tunedeck")));
        ApplicationInstance second(bus.connect(QStringLiteral("later")));
        QVERIFY(!second.isFirst());
        std::optional<bool> answered;
        second.activateFirst([&answered](bool isAnswered) { answered = isAnswered; });
        QTRY_COMPARE(answered, false);
    }

    void whateverIsInThePlatformDataItActivates()
    {
        ApplicationInstance instance(QDBusConnection(QStringLiteral("none")));
        QSignalSpy activated(&instance, &ApplicationInstance::activated);
        instance.Activate({{QStringLiteral("activation-token"), QString(100'000, u'x')}});
        instance.Activate({{QStringLiteral("activation-token"), QVariantList{1, 2}}});
        instance.Activate({});
        QCOMPARE(activated.count(), 3);
        QVERIFY(!qEnvironmentVariableIsSet("XDG_ACTIVATION_TOKEN"));
    }
};

QTEST_GUILESS_MAIN(ApplicationInstanceTest)
#include "ApplicationInstanceTest.moc"
