// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

// A driver for pcscd: a reader without a radio, whose tags are programs that connect to its socket.
//
// The reader's device is named "/dev/null:SOCKET", since pcscd wants the name to begin with a file that
// exists. A program that connects is on the reader until it closes the connection; the next one waits for
// that. The connection carries frames: two bytes for the length, the first one more significant,
// and so many bytes. The program's first frame is its answer to reset; after that each frame of the driver is
// a command, and each frame of the program an answer. While a program is connected whose answer to reset is
// empty, the reader is pulled out.
#include <algorithm>
#include <array>
#include <atomic>
#include <cstdint>
#include <cstring>
#include <map>
#include <mutex>
#include <optional>
#include <poll.h>
#include <string>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <thread>
#include <unistd.h>
#include <utility>
#include <vector>

// pcscd finds its functions by their names.
extern "C" {
#include <ifdhandler.h>
#include <reader.h>
}

namespace {

using Frame = std::vector<std::uint8_t>;

/** The time that the driver waits for the reply of a tag. */
constexpr timeval patience = {15, 0};

struct Reader
{
    int listener = -1;
    int stopped = -1; // an event that ends the waiting for news
    int tag = -1;
    int leftTag = -1; // which is closed by the thread that waits for its news
    // Of the thread that waits for news, which counts the tags. It asks several times between two waits, and
    // counts once.
    std::atomic<std::thread::id> counts;
    std::atomic<bool> wasTagTold = false; // since it waited last
    std::atomic<bool> isAbsenceTold = true;
    Frame answerToReset;
};

std::mutex readersMutex;
std::map<DWORD, Reader> readers; // by their Lun; each is used under pcscd's own lock

Reader &readerOf(DWORD lun)
{
    const std::lock_guard lock(readersMutex);
    return readers[lun];
}

bool receiveAll(int socket, std::uint8_t *bytes, std::size_t size)
{
    while (size > 0) {
        const ssize_t received = recv(socket, bytes, size, 0);
        if (received <= 0)
            return false;
        bytes += received;
        size -= std::size_t(received);
    }
    return true;
}

std::optional<Frame> receiveFrame(int socket)
{
    std::array<std::uint8_t, 2> length = {};
    if (!receiveAll(socket, length.data(), length.size()))
        return std::nullopt;
    Frame frame(std::size_t(length[0] << 8 | length[1]));
    if (!receiveAll(socket, frame.data(), frame.size()))
        return std::nullopt;
    return frame;
}

bool sendFrame(int socket, const std::uint8_t *bytes, std::size_t size)
{
    Frame frame = {std::uint8_t(size >> 8), std::uint8_t(size)};
    frame.insert(frame.end(), bytes, bytes + size);
    return send(socket, frame.data(), frame.size(), MSG_NOSIGNAL) == ssize_t(frame.size());
}

bool has(int socket, short event)
{
    pollfd descriptor = {socket, event, 0};
    return poll(&descriptor, 1, 0) > 0;
}

void takeTag(Reader &reader)
{
    const int tag = accept4(reader.listener, nullptr, nullptr, SOCK_CLOEXEC);
    if (tag < 0)
        return;
    setsockopt(tag, SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof patience);
    const std::optional<Frame> answer = receiveFrame(tag);
    if (!answer) {
        close(tag);
        return;
    }
    reader.answerToReset = *answer;
    reader.tag = tag;
}

void dropTag(Reader &reader)
{
    reader.leftTag = std::exchange(reader.tag, -1);
    reader.isAbsenceTold = false;
}

// Returns when a tag has come or gone, after the time, or when it is stopped.
RESPONSECODE waitForNews(DWORD lun, int milliseconds)
{
    Reader &reader = readerOf(lun);
    reader.counts = std::this_thread::get_id();
    if (!reader.wasTagTold.exchange(false))
        reader.isAbsenceTold = true;
    if (reader.leftTag >= 0)
        close(std::exchange(reader.leftTag, -1));
    const int tag = reader.tag;
    std::array<pollfd, 2> descriptors = {{{reader.stopped, POLLIN, 0}, {reader.listener, POLLIN, 0}}};
    if (tag >= 0)
        descriptors[1] = {tag, POLLRDHUP, 0};
    // A tag may have left since this thread asked last.
    poll(descriptors.data(), descriptors.size(), reader.isAbsenceTold ? milliseconds : 0);
    eventfd_t stops = 0;
    eventfd_read(reader.stopped, &stops);
    return IFD_SUCCESS;
}

RESPONSECODE stopWaiting(DWORD lun)
{
    eventfd_write(readerOf(lun).stopped, 1);
    return IFD_SUCCESS;
}

RESPONSECODE give(PDWORD length, PUCHAR value, const void *bytes, std::size_t size)
{
    if (*length < size)
        return IFD_ERROR_INSUFFICIENT_BUFFER;
    std::memcpy(value, bytes, size);
    *length = DWORD(size);
    return IFD_SUCCESS;
}

} // namespace

RESPONSECODE IFDHCreateChannelByName(DWORD lun, LPSTR deviceName)
{
    const std::string name = deviceName;
    const std::string path = name.substr(name.find(':') + 1);
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    if (path.size() >= sizeof address.sun_path)
        return IFD_NO_SUCH_DEVICE;
    std::copy(path.begin(), path.end(), address.sun_path);

    Reader &reader = readerOf(lun);
    unlink(address.sun_path);
    reader.listener = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    reader.stopped = eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
    if (bind(reader.listener, reinterpret_cast<sockaddr *>(&address), sizeof address) != 0 ||
        listen(reader.listener, SOMAXCONN) != 0)
        return IFD_COMMUNICATION_ERROR;
    return IFD_SUCCESS;
}

RESPONSECODE IFDHCreateChannel(DWORD, DWORD)
{
    return IFD_NO_SUCH_DEVICE;
}

RESPONSECODE IFDHCloseChannel(DWORD lun)
{
    Reader &reader = readerOf(lun);
    if (reader.tag >= 0)
        dropTag(reader);
    if (reader.leftTag >= 0)
        close(reader.leftTag);
    close(reader.listener);
    close(reader.stopped);
    const std::lock_guard lock(readersMutex);
    readers.erase(lun);
    return IFD_SUCCESS;
}

RESPONSECODE IFDHGetCapabilities(DWORD lun, DWORD tag, PDWORD length, PUCHAR value)
{
    static constexpr auto wait = &waitForNews;
    static constexpr auto stop = &stopWaiting;
    constexpr UCHAR yes = 1;
    constexpr UCHAR slots = 1;
    constexpr UCHAR manyReaders = 8;
    const Frame &answer = readerOf(lun).answerToReset;
    switch (tag) {
    case TAG_IFD_ATR:
    case SCARD_ATTR_ATR_STRING:
        return give(length, value, answer.data(), answer.size());
    case TAG_IFD_SIMULTANEOUS_ACCESS:
        return give(length, value, &manyReaders, 1);
    case TAG_IFD_THREAD_SAFE:
        return give(length, value, &yes, 1);
    case TAG_IFD_SLOTS_NUMBER:
        return give(length, value, &slots, 1);
    case TAG_IFD_POLLING_THREAD_WITH_TIMEOUT:
        return give(length, value, &wait, sizeof wait);
    case TAG_IFD_STOP_POLLING_THREAD:
        return give(length, value, &stop, sizeof stop);
    default:
        return IFD_ERROR_TAG;
    }
}

RESPONSECODE IFDHSetCapabilities(DWORD, DWORD, DWORD, PUCHAR)
{
    return IFD_NOT_SUPPORTED;
}

RESPONSECODE IFDHSetProtocolParameters(DWORD, DWORD, UCHAR, UCHAR, UCHAR, UCHAR)
{
    return IFD_SUCCESS;
}

RESPONSECODE IFDHPowerICC(DWORD lun, DWORD action, PUCHAR atr, PDWORD length)
{
    const Reader &reader = readerOf(lun);
    if (action == IFD_POWER_DOWN) {
        *length = 0;
        return IFD_SUCCESS;
    }
    if (reader.tag < 0)
        return IFD_ERROR_POWER_ACTION;
    *length = MAX_ATR_SIZE;
    return give(length, atr, reader.answerToReset.data(), reader.answerToReset.size());
}

RESPONSECODE IFDHTransmitToICC(DWORD lun, SCARD_IO_HEADER, PUCHAR command, DWORD commandLength, PUCHAR answer,
                               PDWORD answerLength, PSCARD_IO_HEADER)
{
    const Reader &reader = readerOf(lun);
    const std::optional<Frame> frame = reader.tag >= 0 && sendFrame(reader.tag, command, commandLength)
                                           ? receiveFrame(reader.tag)
                                           : std::nullopt;
    if (frame)
        return give(answerLength, answer, frame->data(), frame->size());
    *answerLength = 0;
    return IFD_COMMUNICATION_ERROR;
}

RESPONSECODE IFDHControl(DWORD, DWORD, PUCHAR, DWORD, PUCHAR, DWORD, LPDWORD returned)
{
    *returned = 0;
    return IFD_ERROR_NOT_SUPPORTED;
}

RESPONSECODE IFDHICCPresence(DWORD lun)
{
    Reader &reader = readerOf(lun);
    if (reader.tag >= 0 && has(reader.tag, POLLRDHUP))
        dropTag(reader);
    // Threads that talk to the tag ask, too. The next tag comes when the thread that counts them knows that
    // this one has left: else it would take both for one.
    if (reader.tag < 0 && reader.isAbsenceTold && has(reader.listener, POLLIN))
        takeTag(reader);
    if (reader.tag < 0)
        return IFD_ICC_NOT_PRESENT;
    if (reader.counts.load() == std::this_thread::get_id())
        reader.wasTagTold = true;
    return reader.answerToReset.empty() ? IFD_NO_SUCH_DEVICE : IFD_ICC_PRESENT;
}
