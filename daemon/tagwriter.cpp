// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "daemon/tagwriter.h"

#include <QDBusConnection>
#include <QString>

#include "daemon/adapter.h"
#include "daemon/buspeer.h"
#include "daemon/tags/ndefrecords.h"

namespace {

void reject(const QDBusMessage &call, const char *error, const QString &reason)
{
    const QString name = QStringLiteral("com.tavix.nfc.Error.") + QLatin1String(error);
    QDBusConnection::systemBus().send(call.createErrorReply(name, reason));
}

struct Failure
{
    const char *error;
    const char *reason;
};

Failure failureOf(TagStatus status)
{
    switch (status) {
    case TagStatus::ReadOnly:
        return {"ReadOnly", "The tag takes no message"};
    case TagStatus::TooSmall:
        return {"TooSmall", "The message is longer than the tag's room for it"};
    case TagStatus::NotFormatted:
        return {"NotFormatted", "The tag's memory has not been laid out for messages"};
    case TagStatus::Gone:
    case TagStatus::Torn:
        return {"Removed", "The tag was removed before the message was complete"};
    case TagStatus::Unsupported:
    case TagStatus::Malformed:
        return {"Unsupported", "No tag that this daemon knows how to write"};
    default:
        return {"WriteFailed", "The tag does not hold what was written"};
    }
}

} // namespace

TagWriter::TagWriter(Adapter *adapter) : QDBusAbstractAdaptor(adapter), adapter(adapter)
{
    connect(
        adapter, &Adapter::poweredChanged, this,
        [this](bool on) {
            if (!on)
                giveUp();
        });
}

std::optional<QByteArray> TagWriter::take()
{
    if (!job || job->isTaken)
        return std::nullopt;
    job->isTaken = true;
    return job->data;
}

void TagWriter::putBack()
{
    job->isTaken = false;
    if (job->isGivenUp)
        giveUp();
}

void TagWriter::finish(TagStatus status)
{
    const Job finished = endJob();
    if (status == TagStatus::Done) {
        QDBusConnection::systemBus().send(finished.call.createReply());
        return;
    }
    const Failure failure = failureOf(status);
    reject(finished.call, failure.error, QLatin1String(failure.reason));
}

void TagWriter::WriteNdef(const QByteArray &data, const QDBusMessage &message)
{
    message.setDelayedReply(true);
    adapter->authority().decide(message, [this, data](const QDBusMessage &call, uint) { begin(data, call); });
}

void TagWriter::begin(const QByteArray &data, const QDBusMessage &call)
{
    if (!ndefRecords(data)) {
        reject(call, "InvalidMessage", QStringLiteral("The bytes are not one conforming NDEF message"));
    } else if (!adapter->isPowered()) {
        reject(call, "Off", QStringLiteral("The adapter is switched off"));
    } else if (job) {
        reject(call, "Busy", QStringLiteral("Another message waits for its tag"));
    } else {
        job.emplace(Job{call, data, new BusPeer(call.service(), this)});
        connect(job->caller, &BusPeer::left, this, &TagWriter::giveUp);
    }
}

void TagWriter::Cancel(const QDBusMessage &message)
{
    message.setDelayedReply(true);
    // As the writing was: a caller's calls stay in their order.
    adapter->authority().decide(message, [this](const QDBusMessage &call, uint) {
        if (job && job->caller->name() == call.service())
            giveUp();
        QDBusConnection::systemBus().send(call.createReply());
    });
}

// The message has had its end: its caller may leave.
TagWriter::Job TagWriter::endJob()
{
    const Job ended = *job;
    job.reset();
    ended.caller->disconnect(this);
    ended.caller->deleteLater();
    return ended;
}

void TagWriter::giveUp()
{
    if (!job)
        return;
    job->isGivenUp = true;
    if (job->isTaken) {
        // In the adapter's name: the signals of this object go to the bus.
        Q_EMIT adapter->messageGivenUp();
        return;
    }
    reject(endJob().call, "Canceled", QStringLiteral("The message was given up"));
}
