#!/usr/bin/env -S python3 -B
# SPDX-License-Identifier: MIT
"""Each rule is shown a line that breaks it, and must see it: a check that cannot fail checks nothing."""

import tempfile
import unittest
import unittest.mock
from pathlib import Path

import rules

BUS = "#include <QDBusConnection>\n"

# file, a text whose last line breaks a rule, a word of what is said of it
BAD = [
    ("src/app/A.cpp", "QDBusInterface player;", "introspects"),
    ("src/app/A.h", "class Proxy : public QDBusAbstractInterface", "introspects"),
    ("src/music/mpris/A.cpp", "bus.call(message);", "asyncCall"),
    ("src/music/mpris/A.cpp", "m_bus->call(message);", "asyncCall"),
    ("src/music/mpris/A.cpp", "QDBusConnection::call(message);", "asyncCall"),
    ("src/music/mpris/A.cpp", "proxy.callWithArgumentList(mode, name, {});", "asyncCall"),
    ("src/music/mpris/A.cpp", "watcher.waitForFinished();", "waits"),
    ("src/music/mpris/A.cpp", "process.waitForStarted();", "waits"),
    ("src/music/mpris/A.cpp", "call->waitForReply();", "waits"),
    ("src/music/mpris/A.cpp", "if (bus->isServiceRegistered(name))", "asks the bus"),
    ("src/music/mpris/A.cpp", "bus->registeredServiceNames();", "asks the bus"),
    ("src/music/mpris/A.cpp", "bus->servicePid(name);", "asks the bus"),
    ("src/music/mpris/A.cpp", BUS + 'proxy->property("Metadata");', "D-Bus property"),
    ("src/music/mpris/A.cpp", BUS + 'proxy.property("Metadata");', "D-Bus property"),
    ("src/player/A.cpp", "QThread::msleep(1);", "sleeps"),
    ("src/player/A.cpp", "std::this_thread::sleep_for(1ms);", "sleeps"),
    ("src/player/A.cpp", "QEventLoop loop;", "event loop"),
    ("src/drawer/A.cpp", "setStyleSheet(text);", "style sheets"),
    ("src/drawer/A.qml", "Item {}", "no QML"),
    ("src/app/A.cpp", "#include <QQmlEngine>", "no QML"),
    ("src/app/A.cpp", "#include <QtQuick/QQuickItem>", "no QML"),
    ("src/app/CMakeLists.txt", "LINKS Qt6::Quick)", "no QML"),
    ("src/music/A.cpp", "#include <QWidget>", "QtCore alone"),
    ("src/music/A.h", "#include <QtGui/QColor>", "QtCore alone"),
    ("src/music/A.h", "#include <QDBusConnection>", "QtCore alone"),
    ("src/music/CMakeLists.txt", "LINKS Qt6::Core Qt6::DBus)", "QtCore alone"),
    ("src/app/A.cpp", 'auto name = u"org.mpris.MediaPlayer2"_s;', "players' D-Bus names"),
    ("src/music/A.cpp", 'auto path = u"/org/mpris/MediaPlayer2"_s;', "players' D-Bus names"),
    ("src/platform/A.cpp", '#include "music/MusicConnector.h"', "may not include music/"),
    ("src/music/A.cpp", '#include "music/mpris/Mirror.h"', "may not include music/mpris/"),
    ("src/skin/views/A.cpp", '#include "music/MusicConnector.h"', "may not include music/"),
    ("src/skin/cells/A.cpp", '#include "skin/views/MetalButton.h"', "may not include skin/views/"),
    ("src/skin/cells/A.cpp", '#include "skin/looks/SkinEnvironment.h"', "may not include skin/looks/"),
    ("src/skin/drawing/A.cpp", '#include "skin/cells/MetalButtonCell.h"', "may not include skin/cells/"),
    ("src/player/A.cpp", '#include "drawer/PlaylistWindow.h"', "may not include drawer/"),
    ("src/player/A.cpp", '#include "music/mpris/Mirror.h"', "may not include music/mpris/"),
    ("src/drawer/A.cpp", '#include "app/AppDelegate.h"', "may not include app/"),
    ("src/music/mpris/A.cpp", '#include "../MusicConnector.h"', "path below src/"),
    ("src/music/A.cpp", '#include "MusicConnector.h"', "path below src/"),
    ("src/gadgets/A.cpp", "", "no place among the layers"),
]

GOOD = [
    ("src/music/mpris/A.cpp", BUS + "// Not call(): it waits.\nbus.asyncCall(message); /* .call( */\n"),
    ("src/music/mpris/A.cpp", 'bus.call(message); // waits on a worker thread'),
    ("src/music/mpris/A.cpp", '#include "music/MusicConnector.h"\nauto name = u"org.mpris.MediaPlayer2"_s;'),
    ("src/music/A.cpp", "// What org.mpris calls a track.\n#include <QString>\n"),
    ("src/app/A.cpp", 'widget->property("title");\n#include "drawer/PlaylistWindow.h"\n#include "A.moc"\n'),
]


class Tree:
    """A small project that keeps every rule."""

    def __init__(self, root: Path) -> None:
        self.root = root
        for header in ("music/MusicConnector", "music/mpris/Mirror", "drawer/PlaylistWindow", "app/AppDelegate"):
            self.write(f"src/{header}.h", "#pragma once\n")

    def write(self, name: str, text: str) -> None:
        path = self.root / name
        path.parent.mkdir(parents=True, exist_ok=True)
        mark = "#" if name.endswith("txt") else "//"
        path.write_text(f"{mark} {rules.SPDX}\n{text}\n")


class RulesTest(unittest.TestCase):
    def setUp(self) -> None:
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.tree = Tree(Path(folder.name))
        nobody = unittest.mock.patch.object(rules, "MAY_SLEEP", {})
        nobody.start()
        self.addCleanup(nobody.stop)

    def test_a_tree_that_keeps_every_rule_has_no_breach(self) -> None:
        for name, text in GOOD:
            with self.subTest(text):
                self.tree.write(name, text)
                self.assertEqual(rules.breaches(self.tree.root), [])
                (self.tree.root / name).unlink()

    def test_each_bad_line_is_one_breach_and_named_by_file_and_line(self) -> None:
        for name, text, why in BAD:
            with self.subTest(text or name):
                self.tree.write(name, text)
                found = rules.breaches(self.tree.root)
                self.assertEqual(len(found), 1, found)
                self.assertIn(why, found[0])
                number = 1 + len(text.splitlines()) if text and not name.endswith("qml") else 1
                self.assertTrue(found[0].startswith(f"{name}:{number}: "), found[0])
                (self.tree.root / name).unlink()

    def test_every_pattern_is_broken_by_a_line_here(self) -> None:
        patterns = (
            rules.WAITING | rules.WAITING_ON_THE_BUS | rules.EVERYWHERE | rules.IN_MUSIC | rules.OUTSIDE_MPRIS)
        for pattern in patterns:
            with self.subTest(pattern):
                self.assertTrue(any(rules.re.search(pattern, text) for _, text, _ in BAD))

    def test_a_folder_with_too_many_files_is_a_breach(self) -> None:
        for number in range(rules.MOST_FILES):
            self.tree.write(f"src/app/many/{number}.txt", "")
        self.assertEqual(rules.breaches(self.tree.root), [])
        self.tree.write("src/app/many/last.txt", "")
        self.assertEqual(rules.breaches(self.tree.root), ["src/app/many:1: 41 files are more than 40: divide the folder"])

    def test_each_way_to_sleep_is_a_breach_in_tests_and_tools(self) -> None:
        lines = ["QTest::qWait(5);", "QTest::qSleep(5);", "QThread::msleep(5);", "std::this_thread::sleep_for(5ms);",
            "time.sleep(5)", "QTest::qWaitFor([&] { return timer.elapsed() >= 5; });"]
        for name in ("tests/app/ATest.cpp", "tests/app/A.h", "tools/a.py", "tools/a"):
            for line in lines:
                with self.subTest(f"{name}: {line}"):
                    self.tree.write(name, f"\n{line}")
                    self.assertEqual(
                        rules.breaches(self.tree.root),
                        [f"{name}:3: sleeps 1 times, and may 0 times: wait for the event"])
                    (self.tree.root / name).unlink()

    def test_waiting_for_a_state_is_not_sleeping(self) -> None:
        self.tree.write("tests/A.cpp", "QTest::qWaitFor(isDone); // not qWait(5)\nQTRY_VERIFY(isDone());")
        self.assertEqual(rules.breaches(self.tree.root), [])

    def test_a_file_sleeps_exactly_as_often_as_it_may(self) -> None:
        line = "QTest::qWait(5);\n"
        where = "tests/A.cpp"
        with unittest.mock.patch.object(rules, "MAY_SLEEP", {where: (2, "")}):
            self.tree.write(where, line * 3)
            self.assertEqual(
                rules.breaches(self.tree.root), [f"{where}:4: sleeps 3 times, and may 2 times: wait for the event"])
            self.tree.write(where, line * 2)
            self.assertEqual(rules.breaches(self.tree.root), [])
            fewer = "let MAY_SLEEP in tools/checks/rules.py say so instead of 2"
            self.tree.write(where, line)
            self.assertEqual(rules.breaches(self.tree.root), [f"{where}:1: sleeps 1 times: {fewer}"])
            (self.tree.root / where).unlink()
            self.assertEqual(rules.breaches(self.tree.root), [f"{where}:1: sleeps 0 times: {fewer}"])

    def test_an_address_that_is_neither_others_nor_reserved_is_a_breach(self) -> None:
        for name in ("README.md", "packaging/a.xml", "resources/help/en/a.html", "src/app/A.cpp"):
            for address in ("https://tunedeck.{}", "http://tunedeck-music.{}/a", "mailto:a@tunedeck.{}", "<a.b@mail.{}>"):
                with self.subTest(f"{name}: {address}"):
                    self.tree.write(name, address.format("org"))
                    found = rules.breaches(self.tree.root)
                    self.assertEqual(len(found), 1, found)
                    self.assertRegex(found[0], rf"^{name}:2: [\w.-]+\.org -- promises an address$")
                    self.tree.write(name, address.format("example") + " https://www.qt.io a.dark@2x.png")
                    self.assertEqual(rules.breaches(self.tree.root), [])
                    (self.tree.root / name).unlink()

    def test_a_circle_of_folders_is_a_breach(self) -> None:
        folders = {"below": {"above"}, "above": {"below"}}
        with unittest.mock.patch.object(rules, "MAY_INCLUDE", folders):
            self.assertEqual(
                list(rules.breaches_of_order()),
                ["tools/checks/rules.py:1: below/ may include above/, which is not above it"])

    def test_a_source_without_its_licence_is_a_breach(self) -> None:
        for name in ("src/app/A.cpp", "tests/A.h", "tools/a.py", "cmake/A.cmake", "tests/CMakeLists.txt", "run"):
            with self.subTest(name):
                path = self.tree.root / name
                path.parent.mkdir(parents=True, exist_ok=True)
                path.write_text("#!/bin/sh\n")
                self.assertEqual(len(rules.breaches(self.tree.root)), 1)
                path.unlink()


if __name__ == "__main__":
    unittest.main()
