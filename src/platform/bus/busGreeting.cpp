// SPDX-License-Identifier: MIT
#include "platform/bus/busGreeting.h"

#include <QByteArray>
#include <QLatin1String>
#include <QList>
#include <QStringList>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <optional>

#include <sys/socket.h>
#include <sys/time.h>
#include <sys/un.h>
#include <unistd.h>

namespace tunedeck {

namespace {

/// The name of the socket as the kernel takes it: an abstract one begins with a zero.
std::optional<QByteArray> socketName(const QString &address)
{
    if (!address.startsWith(QLatin1String("unix:"))) {
        return std::nullopt;
    }
    const QList<QByteArray> pairs = address.mid(5).toUtf8().split(',');
    for (const QByteArray &pair : pairs) {
        const QByteArray value = QByteArray::fromPercentEncoding(pair.mid(pair.indexOf('=') + 1));
        if (pair.startsWith("path=")) {
            return value;
        }
        if (pair.startsWith("abstract=")) {
            return '\0' + value;
        }
    }
    return std::nullopt;
}

/// A socket that is closed at the end.
class Socket {
public:
    explicit Socket(std::chrono::milliseconds patience)
    {
        const auto seconds = std::chrono::floor<std::chrono::seconds>(patience);
        const timeval limit{
            .tv_sec = seconds.count(), .tv_usec = std::chrono::microseconds(patience - seconds).count()};
        ::setsockopt(m_socket, SOL_SOCKET, SO_RCVTIMEO, &limit, sizeof limit);
        ::setsockopt(m_socket, SOL_SOCKET, SO_SNDTIMEO, &limit, sizeof limit);
    }
    ~Socket() { ::close(m_socket); }
    Socket(const Socket &) = delete;
    Socket &operator=(const Socket &) = delete;

    [[nodiscard]] bool connectTo(const QByteArray &name) const
    {
        sockaddr_un address = {.sun_family = AF_UNIX, .sun_path = {}};
        if (name.isEmpty() || size_t(name.size()) >= sizeof address.sun_path) {
            return false;
        }
        std::memcpy(address.sun_path, name.constData(), size_t(name.size()));
        const size_t length = offsetof(sockaddr_un, sun_path) + size_t(name.size()) + (name.startsWith('\0') ? 0 : 1);
        return ::connect(m_socket, reinterpret_cast<const sockaddr *>(&address), socklen_t(length)) == 0;
    }
    [[nodiscard]] bool send(const QByteArray &bytes) const
    {
        return ::send(m_socket, bytes.constData(), size_t(bytes.size()), MSG_NOSIGNAL) == bytes.size();
    }
    [[nodiscard]] bool receivesAnything() const
    {
        std::array<char, 64> answer{};
        return ::recv(m_socket, answer.data(), answer.size(), 0) > 0;
    }

private:
    int m_socket = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
};

bool isGreetedByBus(const QString &address, std::chrono::milliseconds patience)
{
    const std::optional<QByteArray> name = socketName(address);
    if (!name) {
        return true;
    }
    const Socket socket(patience);
    const QByteArray userId = QByteArray::number(::getuid()).toHex();
    return socket.connectTo(*name) && socket.send('\0' + ("AUTH EXTERNAL " + userId) + "\r\n")
        && socket.receivesAnything();
}

} // namespace

std::optional<QString> addressThatGreets(const QString &addresses, std::chrono::milliseconds patience)
{
    if (addresses.isEmpty()) {
        return addresses;
    }
    // An address may end with the semicolon that parts it from the next one.
    const QStringList each = addresses.split(u';', Qt::SkipEmptyParts);
    for (const QString &address : each) {
        if (isGreetedByBus(address, patience)) {
            return address;
        }
    }
    return std::nullopt;
}

} // namespace tunedeck
