// SPDX-License-Identifier: MIT
#include "updates/NamelessFile.h"

#include <QFile>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tunedeck {

namespace {
constexpr mode_t forItsOwner = S_IRUSR | S_IWUSR;
constexpr mode_t forAllToRead = S_IRUSR | S_IWUSR | S_IRGRP | S_IROTH;
} // namespace

std::unique_ptr<NamelessFile> NamelessFile::create(const QString &folder)
{
    const QByteArray path = QFile::encodeName(folder);
    if (const int nameless = ::open(path.constData(), O_TMPFILE | O_RDWR | O_CLOEXEC, forItsOwner); nameless >= 0) {
        return std::unique_ptr<NamelessFile>(new NamelessFile(nameless, QByteArray()));
    }
    QByteArray hiddenPath = path + "/.tunedeck-XXXXXX";
    const int hidden = ::mkostemp(hiddenPath.data(), O_CLOEXEC);
    return hidden >= 0 ? std::unique_ptr<NamelessFile>(new NamelessFile(hidden, hiddenPath)) : nullptr;
}

NamelessFile::NamelessFile(int descriptor, const QByteArray &hiddenPath)
    : m_descriptor(descriptor)
    , m_hiddenPath(hiddenPath)
{
}

NamelessFile::~NamelessFile()
{
    if (!m_hiddenPath.isEmpty()) {
        ::unlink(m_hiddenPath.constData());
    }
    ::close(m_descriptor);
}

bool NamelessFile::write(QByteArrayView bytes) const
{
    while (!bytes.isEmpty()) {
        const ssize_t written = ::write(m_descriptor, bytes.data(), static_cast<size_t>(bytes.size()));
        if (written <= 0 && errno != EINTR) {
            return false;
        }
        bytes = bytes.sliced(std::max<ssize_t>(written, 0));
    }
    return true;
}

NamelessFile::Naming NamelessFile::giveName(const QString &path)
{
    const QByteArray name = QFile::encodeName(path);
    const QByteArray self = "/proc/self/fd/" + QByteArray::number(m_descriptor);
    const bool isNamed = ::fchmod(m_descriptor, forAllToRead) == 0
        && (m_hiddenPath.isEmpty()
                   ? ::linkat(AT_FDCWD, self.constData(), AT_FDCWD, name.constData(), AT_SYMLINK_FOLLOW)
                   : ::renameat2(AT_FDCWD, m_hiddenPath.constData(), AT_FDCWD, name.constData(), RENAME_NOREPLACE))
            == 0;
    if (!isNamed) {
        return errno == EEXIST ? Naming::IsTaken : Naming::Failed;
    }
    m_hiddenPath.clear();
    return Naming::Done;
}

} // namespace tunedeck
