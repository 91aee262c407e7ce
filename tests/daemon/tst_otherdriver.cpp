// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <memory>

#include <QDBusObjectPath>
#include <QFile>
#include <QHostAddress>
#include <QRegularExpression>
#include <QTcpSocket>
#include <QTest>

#include "agentprocess.h"
#include "pcscdaemon.h"
#include "pcscdprocess.h"
#include "readers.h"
#include "virtualtype2.h"

namespace {

constexpr quint16 firstSlot = 35963;

/**
 * A tag on the first slot of the driver of vsmartcard-vpcd, from its construction until it leaves.
 *
 * Both sides say two bytes for the length, the first one more significant, and so many bytes. One byte is for
 * the reader itself: power off, power on, reset, and the answer to reset, which alone is answered.
 */
class SlottedTag
{
public:
    explicit SlottedTag(VirtualTag &tag, int leavesAt = -1) : tag(tag), leavesAt(leavesAt)
    {
        QObject::connect(&socket, &QTcpSocket::readyRead, &socket, [this] { listen(); });
        socket.connectToHost(QHostAddress::LocalHost, firstSlot);
        if (!socket.waitForConnected())
            qFatal("there is no slot");
    }

    int commands() const { return count; }

private:
    void listen()
    {
        heard += socket.readAll();
        while (heard.size() >= 2 && heard.size() >= 2 + length()) {
            const QByteArray frame = heard.mid(2, length());
            heard.remove(0, 2 + length());
            hear(frame);
        }
    }

    void hear(const QByteArray &frame)
    {
        constexpr char answerToReset = 4;
        if (frame.size() > 1 && count++ == leavesAt)
            socket.abort();
        else if (frame.size() > 1)
            say(tag.answer(frame));
        else if (frame == QByteArray(1, answerToReset))
            say(tag.atr());
    }

    void say(const QByteArray &bytes)
    {
        socket.write(QByteArray(1, char(bytes.size() >> 8)) + char(bytes.size()) + bytes);
    }

    int length() const { return quint8(heard.at(0)) << 8 | quint8(heard.at(1)); }

    VirtualTag &tag;
    const int leavesAt;
    QTcpSocket socket;
    QByteArray heard;
    int count = 0;
};

void writeConfiguration()
{
    QFile file(qEnvironmentVariable("CONNUI_READER") + QStringLiteral("/conf/vpcd"));
    QVERIFY(file.open(QFile::WriteOnly));
    file.write("FRIENDLYNAME \"Virtual PCD\"\nDEVICENAME /dev/null:0x8C7B\n"
               "LIBPATH /usr/lib/pcsc/drivers/serial/libifdvpcd.so\nCHANNELID 0x8C7B\n");
}

} // namespace

/** Whether the daemon gets along with a driver that is not ours: that of vsmartcard-vpcd. */
class TestOtherDriver : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();

    void tagIsRead();
    void tagThatLeavesInMidReadIsAskedAboutWhenItIsBack();

private:
    int questions() { return int(agent->calls(QStringLiteral("RequestNDEFDataDelivery")).size()); }

    const QByteArray webLink = QByteArray::fromHex("d1010455036f7267");
    VirtualType2 tag = VirtualType2::sticker(webLink);
    PcscDaemon daemon;
    std::unique_ptr<AgentProcess> agent;
};

void TestOtherDriver::initTestCase()
{
    qRegisterMetaType<QDBusObjectPath>();
    PcscdProcess::die();
    writeConfiguration();
    PcscdProcess::come();
}

void TestOtherDriver::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
    daemon.startWithReaders();
    agent = std::make_unique<AgentProcess>();
    QCOMPARE(agent->registerAgent().error, QString());
}

void TestOtherDriver::cleanup()
{
    agent.reset();
    daemon.kill();
}

void TestOtherDriver::tagIsRead()
{
    const SlottedTag slotted(tag);
    QTRY_COMPARE_WITH_TIMEOUT(questions(), 1, 20000);
    QCOMPARE(
        agent->calls(QStringLiteral("RequestNDEFDataDelivery")).constFirst().arguments.at(2).toByteArray(),
        webLink);
    // The daemon has let go of it.
    QTRY_COMPARE(Readers::connectionsToPcscd(), 1);
}

void TestOtherDriver::tagThatLeavesInMidReadIsAskedAboutWhenItIsBack()
{
    {
        SlottedTag slotted(tag, 2);
        QTRY_COMPARE_WITH_TIMEOUT(slotted.commands(), 3, 20000);
    }
    // pcscd overlooks a tag that is back before it has looked for one.
    bool isAsked = false;
    for (int tries = 0; tries < 10 && !isAsked; ++tries) {
        const SlottedTag slotted(tag);
        isAsked = QTest::qWaitFor([this] { return questions() > 0; }, 3000);
    }
    QCOMPARE(questions(), 1);
    QCOMPARE(
        agent->calls(QStringLiteral("RequestNDEFDataDelivery")).constFirst().arguments.at(2).toByteArray(),
        webLink);
    QCOMPARE(agent->calls(QStringLiteral("NotifyTouch")).size(), 1);
}

QTEST_GUILESS_MAIN(TestOtherDriver)

#include "tst_otherdriver.moc"
