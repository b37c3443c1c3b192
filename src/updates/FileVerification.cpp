// SPDX-License-Identifier: MIT
#include "updates/FileVerification.h"

#include "updates/NamelessFile.h"
#include "updates/inBackground.h"

#include <QCryptographicHash>
#include <QFile>

#include <array>
#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tunedeck {

namespace {
constexpr size_t pieceSize = 65'536;

/// Reads the file instead of mapping it: a mapped file that gets shorter ends the program.
bool isContent(int descriptor, const FileStatement &statement, const std::atomic_bool &isStopped)
{
    QCryptographicHash hash(QCryptographicHash::Sha512);
    std::array<char, pieceSize> piece = {};
    off_t position = 0;
    while (!isStopped && position <= statement.length) {
        const ssize_t size = ::pread(descriptor, piece.data(), piece.size(), position);
        if (size < 0 && errno == EINTR) {
            continue;
        }
        if (size <= 0) {
            return size == 0 && position == statement.length && hash.result() == statement.sha512;
        }
        hash.addData(QByteArrayView(piece.data(), size));
        position += size;
    }
    return false;
}

/// A link or a pipe may have taken the file's place.
bool isContentOfFile(const QString &path, const FileStatement &statement, const std::atomic_bool &isStopped)
{
    QFile file;
    const int descriptor = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
    if (descriptor < 0 || !file.open(descriptor, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle)) {
        return false;
    }
    struct stat status = {};
    return ::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode) && isContent(descriptor, statement, isStopped);
}
} // namespace

FileVerification::FileVerification(const FileStatement &statement, QObject *parent)
    : QObject(parent)
    , m_statement(statement)
{
    connect(&m_result, &QFutureWatcher<bool>::finished, this, [this] { Q_EMIT finished(m_result.result()); });
}

FileVerification::~FileVerification()
{
    *m_isStopped = true;
}

void FileVerification::start(const std::shared_ptr<const NamelessFile> &file)
{
    m_result.setFuture(inBackground([file, statement = m_statement, isStopped = m_isStopped] {
        return isContent(file->descriptor(), statement, *isStopped) && ::fdatasync(file->descriptor()) == 0;
    }));
}

void FileVerification::start(const QString &path)
{
    m_result.setFuture(inBackground([path, statement = m_statement, isStopped = m_isStopped] {
        return isContentOfFile(path, statement, *isStopped);
    }));
}

} // namespace tunedeck
