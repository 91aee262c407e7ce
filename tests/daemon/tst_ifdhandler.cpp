// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <functional>
#include <memory>

#include <QTemporaryDir>
#include <QTest>
#include <QThread>

#include "heldtag.h"
#include "virtualtype2.h"

extern "C" {
#include <ifdhandler.h>
#include <reader.h>
}

namespace {

constexpr DWORD lun = 0;
constexpr int longTime = 60000; // ms

/** A thread on which functions are called one by one. */
class OtherThread
{
public:
    OtherThread()
    {
        place.moveToThread(&thread);
        thread.start();
    }

    ~OtherThread()
    {
        thread.quit();
        thread.wait();
    }

    RESPONSECODE call(const std::function<RESPONSECODE()> &function)
    {
        RESPONSECODE result = IFD_NOT_SUPPORTED;
        QMetaObject::invokeMethod(
            &place, [&] { result = function(); }, Qt::BlockingQueuedConnection);
        return result;
    }

private:
    QThread thread;
    QObject place;
};

RESPONSECODE presence()
{
    return IFDHICCPresence(lun);
}

// Waits as the thread of pcscd does that counts the tags.
RESPONSECODE news()
{
    RESPONSECODE (*wait)(DWORD, int) = nullptr;
    DWORD length = sizeof wait;
    if (IFDHGetCapabilities(lun, TAG_IFD_POLLING_THREAD_WITH_TIMEOUT, &length,
                            reinterpret_cast<PUCHAR>(&wait)) != IFD_SUCCESS)
        return IFD_NOT_SUPPORTED;
    return wait(lun, longTime);
}

} // namespace

class TestIfdHandler : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void tagComesAndLeaves();
    void leavingOfATagIsNeverOverlooked();
    void leavingThatIsOnlySeenInPassingIsNoAbsence();

private:
    void exchangeTags();

    QTemporaryDir folder;
    VirtualType2 tag = VirtualType2::sticker("");
    OtherThread counting;
    std::unique_ptr<HeldTag> held;
};

void TestIfdHandler::init()
{
    qputenv("CONNUI_READER", folder.path().toLocal8Bit());
    QByteArray device = "/dev/null:" + folder.filePath(QStringLiteral("reader-0")).toLocal8Bit();
    QCOMPARE(IFDHCreateChannelByName(lun, device.data()), IFD_SUCCESS);
}

void TestIfdHandler::cleanup()
{
    held.reset();
    QCOMPARE(IFDHCloseChannel(lun), IFD_SUCCESS);
}

// A tag that was counted leaves, and another one is there at once.
void TestIfdHandler::exchangeTags()
{
    held = std::make_unique<HeldTag>(tag);
    QCOMPARE(counting.call(news), IFD_SUCCESS);
    QCOMPARE(counting.call(presence), IFD_ICC_PRESENT);
    held->leave();
    held = std::make_unique<HeldTag>(tag);
}

void TestIfdHandler::tagComesAndLeaves()
{
    QCOMPARE(counting.call(presence), IFD_ICC_NOT_PRESENT);
    {
        const HeldTag held(tag);
        QCOMPARE(counting.call(news), IFD_SUCCESS);
        QCOMPARE(counting.call(presence), IFD_ICC_PRESENT);
    }
    QCOMPARE(counting.call(news), IFD_SUCCESS);
    QCOMPARE(counting.call(presence), IFD_ICC_NOT_PRESENT);
}

// Else the two would be one tag that stays.
void TestIfdHandler::leavingOfATagIsNeverOverlooked()
{
    exchangeTags();
    // A program that talks to the first one finds out before.
    QCOMPARE(presence(), IFD_ICC_NOT_PRESENT);
    QCOMPARE(presence(), IFD_ICC_NOT_PRESENT);
    QCOMPARE(counting.call(news), IFD_SUCCESS);
    QCOMPARE(counting.call(presence), IFD_ICC_NOT_PRESENT);
    QCOMPARE(counting.call(news), IFD_SUCCESS);
    QCOMPARE(counting.call(presence), IFD_ICC_PRESENT);
}

// pcscd asks again before it switches a tag off or on, and does not count then.
void TestIfdHandler::leavingThatIsOnlySeenInPassingIsNoAbsence()
{
    exchangeTags();
    QCOMPARE(counting.call(news), IFD_SUCCESS);
    QCOMPARE(counting.call(presence), IFD_ICC_NOT_PRESENT);
    QCOMPARE(counting.call(presence), IFD_ICC_NOT_PRESENT);
    QCOMPARE(counting.call(news), IFD_SUCCESS);
    QCOMPARE(counting.call(presence), IFD_ICC_PRESENT);
}

QTEST_GUILESS_MAIN(TestIfdHandler)

#include "tst_ifdhandler.moc"
