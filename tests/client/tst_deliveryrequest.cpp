// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <memory>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QNdefMessage>
#include <QNdefNfcTextRecord>
#include <QNdefNfcUriRecord>
#include <QTemporaryDir>
#include <QTest>
#include <QUrl>

#include <NfcAdapter>
#include <NfcReplyOrder>

#include "core/deliveries.h"
#include "core/deliveryrequest.h"
#include "core/questionqueue.h"
#include "fakedaemon.h"
#include "fakeface.h"
#include "fakehandler.h"
#include "fakeohm.h"

using ConnUi::NdefMessageHandler;
using ConnUi::NdefMessageHandlerList;
using ConnUi::NfcAdapter;
using ConnUi::NfcReplyOrder;

namespace {

const QDBusObjectPath tag(QStringLiteral("/tag"));

QByteArray textTag(const QString &text)
{
    QNdefNfcTextRecord record;
    record.setText(text);
    return QNdefMessage(record).toByteArray();
}

QByteArray uriTag(const QString &uri)
{
    QNdefNfcUriRecord record;
    record.setUri(QUrl(uri));
    return QNdefMessage(record).toByteArray();
}

} // namespace

class TestDeliveryRequest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();

    void onlyHandlerGetsTextUnasked();
    void sessionThatIsLockedMeanwhileHasTheUserAsked();
    void releasedRequestForwardsNothing_data();
    void releasedRequestForwardsNothing();
    void numberMayBeCalledWhereTheDesktopCan_data();
    void numberMayBeCalledWhereTheDesktopCan();

private:
    void add(const QString &text) { add(text, textTag(text)); }
    void add(const QString &name, const QByteArray &message);
    void write(const QString &file, const QByteArray &content) const;

    const QTemporaryDir folder;
    FakeDaemon daemon;
    FakeOhm ohm;
    FakeHandler viewer;
    std::unique_ptr<NfcAdapter> adapter;
    FakeFace face;
    std::unique_ptr<QuestionQueue> queue;
    std::unique_ptr<Deliveries> deliveries;
    std::shared_ptr<NfcReplyOrder> order;
    QStringList replies;
    qint64 time = 0;
};

void TestDeliveryRequest::write(const QString &file, const QByteArray &content) const
{
    QFile written(folder.filePath(file));
    QVERIFY(written.open(QIODevice::WriteOnly));
    QCOMPARE(written.write(content), content.size());
}

void TestDeliveryRequest::initTestCase()
{
    // GIO looks there once.
    qputenv("XDG_DATA_HOME", QFile::encodeName(folder.path()));
    qputenv("XDG_CONFIG_HOME", QFile::encodeName(folder.path()));
    QVERIFY(QDir(folder.path()).mkdir(QStringLiteral("applications")));
    write(QStringLiteral("applications/dialer.desktop"),
          "[Desktop Entry]\nType=Application\nName=Dialer\nExec=true %u\n");
    write(QStringLiteral("mimeapps.list"), "[Default Applications]\nx-scheme-handler/tel=dialer.desktop\n");
    daemon.start();
    ohm.start();
    viewer.start();
}

void TestDeliveryRequest::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
    adapter.reset(NfcAdapter::defaultAdapterAsync());
    queue = std::make_unique<QuestionQueue>(&face, [this] { return time; });
    deliveries = std::make_unique<Deliveries>(queue.get());
    order = std::make_shared<NfcReplyOrder>();
    replies.clear();
    viewer.clearCalls();
}

void TestDeliveryRequest::cleanup()
{
    deliveries.reset();
    queue.reset();
    adapter.reset();
}

void TestDeliveryRequest::add(const QString &name, const QByteArray &message)
{
    const NdefMessageHandler handler(QStringLiteral("viewer"), QStringLiteral("session"), viewer.service(),
                                     QDBusObjectPath(QStringLiteral("/viewer")));
    const PendingReply reply(
        order, tag.path(), [this, name] { replies.append(QStringLiteral("granted ") + name); },
        [this, name] { replies.append(QStringLiteral("rejected ") + name); });
    queue->add(std::make_unique<DeliveryRequest>(
        DeliveryRequest::Surroundings{adapter.get(), deliveries.get(), queue.get()},
        NdefMessageHandlerList{handler}, tag, message, reply));
}

void TestDeliveryRequest::onlyHandlerGetsTextUnasked()
{
    add(QStringLiteral("text"));
    QTRY_COMPARE(replies, QStringList{QStringLiteral("granted text")});
    QCOMPARE(viewer.calls(QStringLiteral("NDEFData")).size(), 1);
}

void TestDeliveryRequest::sessionThatIsLockedMeanwhileHasTheUserAsked()
{
    add(QStringLiteral("text"));
    // Now it is known whether the handler is in front, but the request has not heard so.
    viewer.calls();
    queue->setPaused(true);
    QCoreApplication::processEvents();
    queue->setPaused(false);
    QTRY_VERIFY(face.shown);
    QCOMPARE(viewer.calls(QStringLiteral("NDEFData")).size(), 0);
    face.answer(Answer::No);
    QCOMPARE(replies, QStringList{QStringLiteral("rejected text")});
}

void TestDeliveryRequest::releasedRequestForwardsNothing_data()
{
    QTest::addColumn<bool>("isReplaced");
    QTest::newRow("dropped") << false;
    QTest::newRow("replaced") << true;
}

void TestDeliveryRequest::releasedRequestForwardsNothing()
{
    QFETCH(bool, isReplaced);
    add(QStringLiteral("released"));
    // Now it is known whether the handler is in front, but the request has not heard so.
    viewer.calls();
    if (isReplaced) {
        queue->setPaused(true);
    } else {
        queue->clear();
        order = std::make_shared<NfcReplyOrder>();
    }
    add(QStringLiteral("later"));
    queue->setPaused(false);
    QCoreApplication::processEvents();
    if (isReplaced) {
        // The session was locked when it came.
        QTRY_VERIFY(face.shown);
        face.answer(Answer::Yes);
    }
    // The handler gets one message at a time, so an earlier one would be there by then.
    QTRY_VERIFY(replies.contains(QStringLiteral("granted later")));
    QCOMPARE(replies.contains(QStringLiteral("rejected released")), isReplaced);
    QCOMPARE(viewer.calls(QStringLiteral("NDEFData")).size(), 1);
}

void TestDeliveryRequest::numberMayBeCalledWhereTheDesktopCan_data()
{
    QTest::addColumn<QString>("uri");
    QTest::addColumn<bool>("mayBeCalled");
    QTest::newRow("application for it") << QStringLiteral("tel:+491711234567") << true;
    QTest::newRow("application for none") << QStringLiteral("callto:+491711234567") << false;
}

void TestDeliveryRequest::numberMayBeCalledWhereTheDesktopCan()
{
    QFETCH(QString, uri);
    QFETCH(bool, mayBeCalled);
    add(uri, uriTag(uri));
    QTRY_VERIFY(face.shown);
    QCOMPARE(!face.shown->direct.isEmpty(), mayBeCalled);
    face.answer(Answer::No);
}

QTEST_GUILESS_MAIN(TestDeliveryRequest)
#include "tst_deliveryrequest.moc"
