// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QTest>

#include "daemon/adapter.h"
#include "daemon/tagwriter.h"
#include "fakeservice.h"

namespace {

const QByteArray message = QByteArray::fromHex("d1010655053132333435");

// A program that writes tags, in a process of its own.
class Writer : public FakeService
{
public:
    explicit Writer(const QString &name) : FakeService(QDBusConnection::SystemBus, name) { start(); }

    void write(const QByteArray &data = message) { callWriter(QStringLiteral("WriteNdef"), {data}); }
    void cancel() { callWriter(QStringLiteral("Cancel")); }

    // The errors of the calls that have been answered, in their order; nothing for a success.
    QStringList answers()
    {
        QStringList errors;
        const QList<FakeReply> all = replies();
        for (const FakeReply &reply : all)
            errors.append(reply.error);
        return errors;
    }

private:
    void callWriter(const QString &member, const QVariantList &arguments = {})
    {
        call(QDBusConnection::systemBus().baseService(), QStringLiteral("/adapter"),
             QStringLiteral("com.tavix.nfc.TagWriter"), member, arguments);
    }
};

} // namespace

class TestTagWriter : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void messageWaitsForItsTag();
    void endOfTheTagIsTheAnswer_data();
    void endOfTheTagIsTheAnswer();
    void nonconformingMessageIsRefused_data();
    void nonconformingMessageIsRefused();
    void oneMessageWaitsAtATime();
    void canceledMessageIsNotWritten();
    void strangerCannotCancel();
    void messageOfALeavingProcessIsGivenUp();
    void switchedOffAdapterWritesNothing();
    void messageThatWasTakenIsFinished();
    void messageThatIsPutBackInTimeIsNotWritten();

private:
    bool takesMessage() const;

    std::unique_ptr<Adapter> adapter;
    TagWriter *tagWriter = nullptr;
};

void TestTagWriter::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
    qRegisterMetaType<QDBusObjectPath>();
    adapter = std::make_unique<Adapter>();
    tagWriter = new TagWriter(adapter.get());
    QVERIFY(QDBusConnection::systemBus().registerObject(QStringLiteral("/adapter"), adapter.get()));
}

void TestTagWriter::cleanup()
{
    QDBusConnection::systemBus().unregisterObject(QStringLiteral("/adapter"));
    adapter.reset();
}

// Whether the message comes to wait, and can be taken for a tag.
bool TestTagWriter::takesMessage() const
{
    return QTest::qWaitFor([this] { return tagWriter->take() == message; }, 30000);
}

void TestTagWriter::messageWaitsForItsTag()
{
    Writer program(QStringLiteral("org.connui.test.Writer"));
    QVERIFY(!tagWriter->take());
    program.write();
    QVERIFY(takesMessage());
    QVERIFY(!tagWriter->take());
    QCOMPARE(program.answers(), QStringList());
    tagWriter->finish(TagStatus::Done);
    QTRY_COMPARE(program.answers(), QStringList{QString()});
    QVERIFY(!tagWriter->take());
}

void TestTagWriter::endOfTheTagIsTheAnswer_data()
{
    QTest::addColumn<TagStatus>("end");
    QTest::addColumn<QString>("error");
    const auto end = [](TagStatus end, const QString &error) {
        QTest::newRow(qUtf8Printable(error)) << end << QStringLiteral("com.tavix.nfc.Error.") + error;
    };
    end(TagStatus::ReadOnly, QStringLiteral("ReadOnly"));
    end(TagStatus::TooSmall, QStringLiteral("TooSmall"));
    end(TagStatus::NotFormatted, QStringLiteral("NotFormatted"));
    end(TagStatus::Unsupported, QStringLiteral("Unsupported"));
    end(TagStatus::Gone, QStringLiteral("Removed"));
    end(TagStatus::Refused, QStringLiteral("WriteFailed"));
}

void TestTagWriter::endOfTheTagIsTheAnswer()
{
    QFETCH(TagStatus, end);
    QFETCH(QString, error);
    Writer program(QStringLiteral("org.connui.test.Writer"));
    program.write();
    QVERIFY(takesMessage());
    tagWriter->finish(end);
    QTRY_COMPARE(program.answers(), QStringList{error});
}

void TestTagWriter::nonconformingMessageIsRefused_data()
{
    QTest::addColumn<QByteArray>("data");
    QTest::newRow("nothing") << QByteArray();
    QTest::newRow("cut") << message.chopped(1);
    QTest::newRow("bytes behind its end") << message + '\0';
    QTest::newRow("no beginning") << QByteArray::fromHex("51010655053132333435");
}

void TestTagWriter::nonconformingMessageIsRefused()
{
    QFETCH(QByteArray, data);
    Writer program(QStringLiteral("org.connui.test.Writer"));
    program.write(data);
    QTRY_COMPARE(program.answers(), QStringList{QStringLiteral("com.tavix.nfc.Error.InvalidMessage")});
    QVERIFY(!tagWriter->take());
}

void TestTagWriter::oneMessageWaitsAtATime()
{
    Writer first(QStringLiteral("org.connui.test.First"));
    Writer second(QStringLiteral("org.connui.test.Second"));
    first.write();
    first.write();
    QTRY_COMPARE(first.answers(), QStringList{QStringLiteral("com.tavix.nfc.Error.Busy")});
    second.write();
    QTRY_COMPARE(second.answers(), QStringList{QStringLiteral("com.tavix.nfc.Error.Busy")});
    QVERIFY(tagWriter->take());
}

void TestTagWriter::canceledMessageIsNotWritten()
{
    Writer program(QStringLiteral("org.connui.test.Writer"));
    program.write();
    program.cancel();
    QTRY_COMPARE(program.answers(), (QStringList{QStringLiteral("com.tavix.nfc.Error.Canceled"), QString()}));
    QVERIFY(!tagWriter->take());
    program.cancel();
    QTRY_COMPARE(program.answers().size(), 3);
    QCOMPARE(program.answers().constLast(), QString());
}

void TestTagWriter::strangerCannotCancel()
{
    Writer program(QStringLiteral("org.connui.test.Writer"));
    Writer stranger(QStringLiteral("org.connui.test.Stranger"));
    program.write();
    program.write();
    QTRY_COMPARE(program.answers().size(), 1);
    stranger.cancel();
    QTRY_COMPARE(stranger.answers(), QStringList{QString()});
    QVERIFY(tagWriter->take());
}

void TestTagWriter::messageOfALeavingProcessIsGivenUp()
{
    Writer next(QStringLiteral("org.connui.test.Next"));
    {
        Writer program(QStringLiteral("org.connui.test.Writer"));
        program.write();
        program.write();
        QTRY_COMPARE(program.answers().size(), 1);
    }
    const auto isAccepted = [&next] {
        const qsizetype answered = next.answers().size();
        next.write();
        next.cancel();
        const auto areAnswered = [&next, answered] { return next.answers().size() == answered + 2; };
        return QTest::qWaitFor(areAnswered, 30000) &&
               next.answers().at(answered) == QStringLiteral("com.tavix.nfc.Error.Canceled");
    };
    QVERIFY(QTest::qWaitFor(isAccepted, 30000));
}

void TestTagWriter::switchedOffAdapterWritesNothing()
{
    Writer program(QStringLiteral("org.connui.test.Writer"));
    program.write();
    program.write();
    QTRY_COMPARE(program.answers().size(), 1);
    adapter->setPowered(false);
    QTRY_COMPARE(program.answers(), (QStringList{QStringLiteral("com.tavix.nfc.Error.Busy"),
                                                 QStringLiteral("com.tavix.nfc.Error.Canceled")}));
    program.write();
    QTRY_COMPARE(program.answers().value(2), QStringLiteral("com.tavix.nfc.Error.Off"));
    QVERIFY(!tagWriter->take());
}

// Nothing of it is on the tag yet.
void TestTagWriter::messageThatIsPutBackInTimeIsNotWritten()
{
    Writer program(QStringLiteral("org.connui.test.Writer"));
    program.write();
    QVERIFY(takesMessage());
    connect(adapter.get(), &Adapter::messageGivenUp, tagWriter, &TagWriter::putBack);
    program.cancel();
    QTRY_COMPARE(program.answers(), (QStringList{QStringLiteral("com.tavix.nfc.Error.Canceled"), QString()}));
    QVERIFY(!tagWriter->take());
}

// A message on its way onto the tag cannot be called back.
void TestTagWriter::messageThatWasTakenIsFinished()
{
    Writer program(QStringLiteral("org.connui.test.Writer"));
    program.write();
    QVERIFY(takesMessage());
    adapter->setPowered(false);
    program.cancel();
    QTRY_COMPARE(program.answers(), QStringList{QString()});
    tagWriter->finish(TagStatus::Gone);
    QTRY_COMPARE(program.answers(), (QStringList{QString(), QStringLiteral("com.tavix.nfc.Error.Removed")}));
}

QTEST_GUILESS_MAIN(TestTagWriter)
#include "tst_tagwriter.moc"
