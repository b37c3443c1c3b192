// SPDX-License-Identifier: MIT
#include "music/mpris/PlaylistFiles.h"
#include "support/registerTest.h"

#include <QByteArray>
#include <QByteArrayList>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QLocale>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <condition_variable>
#include <cstdarg>
#include <cstdio>
#include <memory>
#include <mutex>
#include <utility>

using namespace Qt::StringLiterals;
using namespace tunedeck;

namespace {
std::mutex hungMutex;
std::condition_variable hungChanged;
QByteArray hungFolder;

/// A folder whose disk does not answer.
class HungFolder {
public:
    explicit HungFolder(const QString &path) { set(QFile::encodeName(path)); }
    ~HungFolder() { answer(); }
    HungFolder(const HungFolder &) = delete;
    HungFolder &operator=(const HungFolder &) = delete;

    void answer() { set({}); }

private:
    static void set(const QByteArray &path)
    {
        {
            const std::lock_guard lock(hungMutex);
            hungFolder = path;
        }
        hungChanged.notify_all();
    }
};

QStringList names(const QList<PlaylistDetails> &playlists)
{
    QStringList names;
    for (const PlaylistDetails &playlist : playlists) {
        names.append(playlist.name);
    }
    return names;
}
} // namespace

/// Takes the place of the C library's, for the standard library too.
extern "C" __attribute__((visibility("default"))) int openat(int folder, const char *name, int flags, ...)
{
    using Open = int (*)(int, const char *, int, ...);
    static const auto open = reinterpret_cast<Open>(dlsym(RTLD_NEXT, "openat"));
    va_list rest;
    va_start(rest, flags);
    const mode_t mode = (flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(rest, mode_t) : 0;
    va_end(rest);
    std::unique_lock lock(hungMutex);
    hungChanged.wait(lock, [name] { return hungFolder.isEmpty() || hungFolder != name; });
    lock.unlock();
    return open(folder, name, flags, mode);
}

class PlaylistFilesTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QLocale::setDefault(QLocale(u"de_DE"_s)); }

    void init()
    {
        QTest::failOnWarning(QRegularExpression(u".*"_s));
        m_temporary = std::make_unique<QTemporaryDir>();
        qputenv("XDG_CONFIG_HOME", m_temporary->path().toUtf8());
        m_folder = QDir(m_temporary->path());
        QVERIFY(m_folder.mkdir(u"Music"_s) && m_folder.cd(u"Music"_s));
    }

    void theMusicFolderIsTheOneThatTheDesktopNames()
    {
        nameMusicFolder(m_folder.path());
        QCOMPARE(musicFolder(), m_folder.path());
    }

    void noMusicFolderIsNamedByTheHomeFolder()
    {
        nameMusicFolder(u"$HOME/"_s);
        QCOMPARE(musicFolder(), QString());
        QCOMPARE(names(found(QString())), QStringList());
    }

    void playlistFilesAreFoundByTheirSuffixInAllFolders()
    {
        keep({u"one.m3u"_s, u"two.M3U8"_s, u"a/b/c/three.pls"_s, u"a/four.xspf"_s, u"cover.jpg"_s, u"m3u"_s,
            u"a/x.m3u.bak"_s, u".hidden.m3u"_s});
        QCOMPARE(names(found()), (QStringList{u"four"_s, u"one"_s, u"three"_s, u"two"_s}));
    }

    void theyStandInTheOrderThatPeopleCountIn()
    {
        keep({u"Mix 10.m3u"_s, u"mix 9.m3u"_s, u"Älter.m3u"_s, u"Abend.m3u"_s});
        QCOMPARE(names(found()), (QStringList{u"Abend"_s, u"Älter"_s, u"mix 9"_s, u"Mix 10"_s}));
    }

    void filesOfTheSameNameAreToldApartByTheirFolders()
    {
        keep({u"Rock/Best.m3u"_s, u"Jazz/Best.m3u"_s, u"Jazz/Rest.m3u"_s});
        const QList<PlaylistDetails> files = found();
        QCOMPARE(names(files), (QStringList{u"Jazz/Best.m3u"_s, u"Rock/Best.m3u"_s, u"Rest"_s}));
        QVERIFY(files.at(0).id != files.at(1).id);
        QCOMPARE(files.at(0).path, m_folder.filePath(u"Jazz/Best.m3u"_s));
    }

    void anIdLastsAsLongAsItsFileIsInItsPlace()
    {
        keep({u"Best.m3u"_s});
        const qint64 before = found().constFirst().id;
        keep({u"Aaa.m3u"_s});
        QCOMPARE(found().constLast().id, before);
        QVERIFY(before >= 0);
    }

    void whatIsInAFileIsNoMatter()
    {
        keep({u"endless.m3u"_s, u"binary.pls"_s, u"../Music/away.m3u"_s});
        QFile endless(m_folder.filePath(u"endless.m3u"_s));
        QVERIFY(endless.resize(1'000'000'000'000)); // has no blocks on the disk
        QFile binary(m_folder.filePath(u"binary.pls"_s));
        QVERIFY(binary.open(QFile::WriteOnly));
        QVERIFY(binary.write(QByteArray(100'000, '\0') + "../../etc/passwd\nhttps://example.org/\xff\xfe") > 0);
        binary.close();
        QElapsedTimer time;
        time.start();
        QCOMPARE(names(found()), (QStringList{u"away"_s, u"binary"_s, u"endless"_s}));
        QVERIFY(time.elapsed() < 1'000);
    }

    void whatCannotBeReadIsSkipped()
    {
        QVERIFY(m_folder.mkdir(u"folder.m3u"_s));
        QVERIFY(QFile::link(m_folder.filePath(u"nowhere"_s), m_folder.filePath(u"broken.m3u"_s)));
        QCOMPARE(mkfifo(QFile::encodeName(m_folder.filePath(u"pipe.m3u"_s)).constData(), 0600), 0);
        keep({u"good.m3u"_s});
        QCOMPARE(names(found()), QStringList{u"good"_s});
    }

    void whatMayNotBeReadIsSkipped()
    {
        keep({u"good.m3u"_s, u"secret.m3u"_s});
        QFile secret(m_folder.filePath(u"secret.m3u"_s));
        QVERIFY(secret.setPermissions({}));
        if (secret.open(QFile::ReadOnly)) {
            QSKIP("The administrator may read everything");
        }
        QCOMPARE(names(found()), QStringList{u"good"_s});
    }

    void aFolderThatLeadsInCirclesIsNotFollowed()
    {
        keep({u"a/good.m3u"_s});
        QVERIFY(QFile::link(m_folder.path(), m_folder.filePath(u"a/up"_s)));
        QVERIFY(QFile::link(m_folder.path(), m_folder.filePath(u"a/up.m3u"_s)));
        QCOMPARE(names(found()), QStringList{u"good"_s});
    }

    void aDeepFolderDoesNotUseUpTheFilesThatTheProgramMayOpen()
    {
        QString deep = u"1"_s;
        for (int level = 2; level <= 200; ++level) {
            deep += u"/%1"_s.arg(level);
        }
        keep({deep + u"/good.m3u"_s});
        rlimit before = {};
        QCOMPARE(getrlimit(RLIMIT_NOFILE, &before), 0);
        const rlimit few{.rlim_cur = 100, .rlim_max = before.rlim_max};
        QCOMPARE(setrlimit(RLIMIT_NOFILE, &few), 0);
        const QStringList deepest = names(found());
        QCOMPARE(setrlimit(RLIMIT_NOFILE, &before), 0);
        QCOMPARE(deepest, QStringList{u"good"_s});
    }

    void manyFilesThatAreNoPlaylistsAreSeenInAMoment()
    {
        for (int number = 0; number < 20'000; ++number) {
            QFile file(m_folder.filePath(u"%1.mp3"_s.arg(number)));
            QVERIFY(file.open(QFile::WriteOnly));
        }
        keep({u"good.m3u"_s});
        QElapsedTimer time;
        time.start();
        QCOMPARE(names(found()), QStringList{u"good"_s});
        qInfo("20000 songs are passed over in %lld ms", time.elapsed());
        QVERIFY(time.elapsed() < 2'000);
    }

    void aDiskThatDoesNotAnswerHoldsOneThreadHoweverOftenItIsAsked()
    {
        // A program that opens a pipe without a writer waits, as on a disk that is gone.
        const QByteArray pipe = QFile::encodeName(m_temporary->filePath(u"user-dirs.dirs"_s));
        QCOMPARE(mkfifo(pipe.constData(), 0600), 0);
        const qsizetype before = threads();
        for (int question = 0; question < 3; ++question) {
            QVERIFY(!findPlaylistFiles({}, QDeadlineTimer(30), {}).has_value());
            QCOMPARE(threads(), before + 1);
        }
        std::stop_source stop;
        stop.request_stop();
        QElapsedTimer time;
        time.start();
        QVERIFY(!findPlaylistFiles({}, QDeadlineTimer(10'000), stop.get_token()).has_value());
        QVERIFY(time.elapsed() < 1'000);

        const int writer = ::open(pipe.constData(), O_WRONLY);
        QVERIFY(writer >= 0);
        QVERIFY(QFile::remove(m_temporary->filePath(u"user-dirs.dirs"_s)));
        nameMusicFolder(m_folder.path());
        ::close(writer);
        keep({u"good.m3u"_s});
        const auto again = findPlaylistFiles({}, QDeadlineTimer(5'000), {});
        QVERIFY(again.has_value());
        QCOMPARE(names(again->playlists), QStringList{u"good"_s});
    }

    void aMissingFolderHasNone() { QCOMPARE(names(found(m_folder.filePath(u"gone"_s))), QStringList()); }

    void oddNamesAreMadePlain()
    {
        keep({u"two\nlines.m3u"_s, u"  .m3u"_s, u"<b>&bold.m3u"_s});
        const QByteArray notText = QFile::encodeName(m_folder.path()) + "/\xff\xfe.m3u";
        std::unique_ptr<std::FILE, int (*)(std::FILE *)> file(std::fopen(notText.constData(), "w"), &std::fclose);
        QVERIFY(file);
        const QStringList plain = names(found());
        QVERIFY(plain.contains(u"two lines"_s));
        QVERIFY(plain.contains(u"<b>&bold"_s));
        QCOMPARE(plain.size(), 2);
        std::remove(notText.constData()); // the temporary folder could not name it either
    }

    void aNameThatIsNotTextHidesNoOther()
    {
        keep({u"before.m3u"_s, u"folder/within.m3u"_s, u"zeppelin.m3u"_s});
        // A disk lists names in an order of its own. Of three hundred, some come before every other name.
        QByteArrayList notText;
        for (int number = 0; number < 300; ++number) {
            notText.append(QFile::encodeName(m_folder.path()) + "/\xff" + QByteArray::number(number) + ".m3u");
            const int file = ::open(notText.constLast().constData(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
            QVERIFY(file >= 0);
            ::close(file);
        }
        const QStringList others{u"before"_s, u"within"_s, u"zeppelin"_s};
        QCOMPARE(names(found()), others);
        for (const QByteArray &name : std::as_const(notText)) {
            std::remove(name.constData()); // the temporary folder could not name them either
        }
    }

    void ofTooManyTheFirstOnesByNameAreOffered()
    {
        QStringList expected;
        for (qsizetype number = 0; number < 3 * maximumPlaylistFiles; ++number) {
            // The order in which a disk lists files is not that of their names.
            const qsizetype name = number * 7'919 % (3 * maximumPlaylistFiles);
            QFile file(m_folder.filePath(u"Mix %1.m3u"_s.arg(name)));
            QVERIFY(file.open(QFile::WriteOnly));
            expected.append(u"Mix %1"_s.arg(number));
        }
        const auto files = findPlaylistFiles(m_folder.path(), QDeadlineTimer(60'000), {});
        QVERIFY(files.has_value());
        QVERIFY(!files->isWhole);
        QCOMPARE(names(files->playlists), expected.first(maximumPlaylistFiles));
    }

    void aFolderThatDoesNotAnswerHidesNoOther()
    {
        keep({u"before.m3u"_s, u"a/one.m3u"_s, u"hung/never.m3u"_s, u"z/two.m3u"_s, u"z/deep/three.m3u"_s});
        HungFolder hung(m_folder.filePath(u"hung"_s));
        QElapsedTimer time;
        time.start();
        const auto files = findPlaylistFiles(m_folder.path(), QDeadlineTimer(1'000), {});
        QVERIFY(time.elapsed() < 1'500);
        QVERIFY(files.has_value());
        QVERIFY(!files->isWhole);
        const QStringList others{u"before"_s, u"one"_s, u"three"_s, u"two"_s};
        QCOMPARE(names(files->playlists), others);

        const qsizetype before = threads();
        for (int search = 0; search < 5; ++search) {
            const auto again = findPlaylistFiles(m_folder.path(), QDeadlineTimer(100), {});
            QVERIFY(again.has_value());
            QVERIFY(!again->isWhole);
            QCOMPARE(names(again->playlists), others);
        }
        QCOMPARE(threads(), before);
        hung.answer();
        const auto whole = findPlaylistFiles(m_folder.path(), QDeadlineTimer(20'000), {});
        QVERIFY(whole.has_value());
        QVERIFY(whole->isWhole);
        QCOMPARE(whole->playlists.size(), 5);
    }

    void whoeverIsStoppedGetsNothing()
    {
        keep({u"good.m3u"_s});
        std::stop_source stop;
        stop.request_stop();
        const QDeadlineTimer forever(QDeadlineTimer::Forever);
        QVERIFY(!findPlaylistFiles(m_folder.path(), forever, stop.get_token()).has_value());
        QVERIFY(!findPlaylistFiles(m_folder.path(), QDeadlineTimer(0), {}).has_value());
    }

private:
    static qsizetype threads()
    {
        return QDir(u"/proc/self/task"_s).entryList(QDir::Dirs | QDir::NoDotAndDotDot).size();
    }
    void nameMusicFolder(const QString &folder) const
    {
        QFile userFolders(m_temporary->filePath(u"user-dirs.dirs"_s));
        QVERIFY(userFolders.open(QFile::WriteOnly));
        userFolders.write("XDG_MUSIC_DIR=\"" + folder.toUtf8() + "\"\n");
    }
    void keep(const QStringList &files) const
    {
        for (const QString &name : files) {
            const QFileInfo place(m_folder.filePath(name));
            QVERIFY(m_folder.mkpath(place.path()));
            QFile file(place.filePath());
            QVERIFY(file.open(QFile::WriteOnly));
        }
    }
    [[nodiscard]] static QList<PlaylistDetails> found(const QString &folder)
    {
        const auto files = findPlaylistFiles(folder, QDeadlineTimer(QDeadlineTimer::Forever), {});
        return files ? files->playlists : QList<PlaylistDetails>();
    }
    [[nodiscard]] QList<PlaylistDetails> found() const { return found(m_folder.path()); }

    std::unique_ptr<QTemporaryDir> m_temporary;
    QDir m_folder;
};

TUNEDECK_TEST(PlaylistFilesTest, QCoreApplication)
#include "PlaylistFilesTest.moc"
