// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "heldtag.h"

#include <algorithm>
#include <optional>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <QtGlobal>

namespace {

int connectedSocket(int reader)
{
    const QByteArray path = qgetenv("CONNUI_READER") + "/reader-" + QByteArray::number(reader);
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    if (size_t(path.size()) >= sizeof address.sun_path)
        qFatal("no socket can be named %s", path.constData());
    std::copy(path.cbegin(), path.cend(), address.sun_path);
    const int descriptor = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (connect(descriptor, reinterpret_cast<sockaddr *>(&address), sizeof address) != 0)
        qFatal("there is no reader at %s", path.constData());
    return descriptor;
}

bool sendFrame(int socket, const QByteArray &bytes)
{
    const QByteArray frame = QByteArray(1, char(bytes.size() >> 8)) + char(bytes.size()) + bytes;
    return send(socket, frame.constData(), size_t(frame.size()), MSG_NOSIGNAL) == frame.size();
}

std::optional<QByteArray> receiveBytes(int socket, qsizetype size)
{
    QByteArray bytes(size, Qt::Uninitialized);
    const ssize_t received = size == 0 ? 0 : recv(socket, bytes.data(), size_t(size), MSG_WAITALL);
    return received == size ? std::optional(bytes) : std::nullopt;
}

std::optional<QByteArray> receiveFrame(int socket)
{
    const std::optional<QByteArray> length = receiveBytes(socket, 2);
    if (!length)
        return std::nullopt;
    return receiveBytes(socket, quint8(length->at(0)) << 8 | quint8(length->at(1)));
}

} // namespace

HeldTag::HeldTag(VirtualTag &tag, const Fate &fate, int number)
    : tag(tag)
    , fate(fate)
    , socket(connectedSocket(number))
{
    sendFrame(socket, tag.atr());
    life = std::thread(&HeldTag::live, this);
}

HeldTag::HeldTag(VirtualTag &tag, int number) : HeldTag(tag, Fate(), number) {}

HeldTag::~HeldTag()
{
    leave();
    close(socket);
}

void HeldTag::leave()
{
    shutdown(socket, SHUT_RDWR);
    if (life.joinable())
        life.join();
}

int HeldTag::commands() const
{
    return count;
}

void HeldTag::live()
{
    while (const std::optional<QByteArray> command = receiveFrame(socket))
        if (!answer(*command))
            break;
    shutdown(socket, SHUT_RDWR);
}

bool HeldTag::answer(const QByteArray &command)
{
    const int number = count++;
    if (number == fate.leavesAt)
        return false;
    pollfd leaving = {socket, POLLRDHUP, 0};
    if (number == fate.hangsAt && poll(&leaving, 1, int(fate.hangsFor.count())) != 0)
        return false;
    return sendFrame(socket, tag.answer(command));
}

PulledReader::PulledReader(int number) : socket(connectedSocket(number))
{
    sendFrame(socket, {});
}

PulledReader::~PulledReader()
{
    close(socket);
}
