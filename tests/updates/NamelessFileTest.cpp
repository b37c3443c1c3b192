// SPDX-License-Identifier: MIT
#include "updates/NamelessFile.h"

#include "FileSystem.h"
#include "support/failOnWarning.h"
#include "support/registerTest.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <cerrno>
#include <memory>

#include <fcntl.h>
#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace tunedeck {

class NamelessFileTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        failOnWarning();
        m_folder = std::make_unique<QTemporaryDir>();
    }
    void cleanup() { fileSystem().knowsNamelessFiles = true; }

    void aFileGetsItsNameWhenItIsComplete_data() { fileSystems(); }
    void aFileGetsItsNameWhenItIsComplete()
    {
        QFETCH(const bool, knowsNameless);
        fileSystem().knowsNamelessFiles = knowsNameless;
        const auto file = NamelessFile::create(m_folder->path());
        QVERIFY(file);
        QVERIFY(file->write("content"));
        QCOMPARE(visibleFiles(), QStringList());
        QCOMPARE(int(file->giveName(m_folder->filePath(u"a"_s))), int(NamelessFile::Naming::Done));
        QCOMPARE(allFiles(), QStringList(u"a"_s));
        QCOMPARE(contentOf(u"a"_s), QByteArray("content"));
    }

    void aFileWithoutANameLeavesNothing_data() { fileSystems(); }
    void aFileWithoutANameLeavesNothing()
    {
        QFETCH(const bool, knowsNameless);
        fileSystem().knowsNamelessFiles = knowsNameless;
        auto file = NamelessFile::create(m_folder->path());
        QVERIFY(file && file->write("content"));
        struct stat status = {};
        QCOMPARE(::fstat(file->descriptor(), &status), 0);
        QCOMPARE(status.st_mode & 0777, mode_t(S_IRUSR | S_IWUSR));
        QCOMPARE(::fcntl(file->descriptor(), F_GETFD), FD_CLOEXEC);
        QCOMPARE(allFiles().size(), knowsNameless ? 0 : 1);
        file.reset();
        QCOMPARE(allFiles(), QStringList());
    }

    void aNameThatIsTakenStays_data() { fileSystems(); }
    void aNameThatIsTakenStays()
    {
        QFETCH(const bool, knowsNameless);
        fileSystem().knowsNamelessFiles = knowsNameless;
        QVERIFY(QFile::link(u"/nonexistent"_s, m_folder->filePath(u"a"_s)));
        const auto file = NamelessFile::create(m_folder->path());
        QVERIFY(file && file->write("content"));
        QCOMPARE(int(file->giveName(m_folder->filePath(u"a"_s))), int(NamelessFile::Naming::IsTaken));
        QCOMPARE(int(file->giveName(m_folder->filePath(u"none/a"_s))), int(NamelessFile::Naming::Failed));
        QCOMPARE(int(file->giveName(m_folder->filePath(u"b"_s))), int(NamelessFile::Naming::Done));
        QCOMPARE(contentOf(u"b"_s), QByteArray("content"));
    }

    void aFolderThatDoesNotExistHasNoFile() { QVERIFY(!NamelessFile::create(m_folder->filePath(u"none"_s))); }

private:
    static void fileSystems()
    {
        QTest::addColumn<bool>("knowsNameless");
        QTest::newRow("knows files without a name") << true;
        QTest::newRow("knows none") << false;
    }

    [[nodiscard]] QStringList visibleFiles() const { return QDir(m_folder->path()).entryList(QDir::Files); }
    [[nodiscard]] QStringList allFiles() const
    {
        return QDir(m_folder->path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    }
    [[nodiscard]] QByteArray contentOf(const QString &name) const
    {
        QFile file(m_folder->filePath(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    std::unique_ptr<QTemporaryDir> m_folder;
};

} // namespace tunedeck

TUNEDECK_TEST(tunedeck::NamelessFileTest, QCoreApplication)
#include "NamelessFileTest.moc"
