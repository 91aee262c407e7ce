// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "core/bluetoothrequest.h"

#include <QtGlobal>

#include <NfcForeignText>

#include "core/devicename.h"

using ConnUi::foreignName;

namespace {

struct HandoverWords
{
    Question::Kind kind;
    const char *title;
    const char *text;
    const char *verb;
};

HandoverWords wordsFor(Request::Kind kind)
{
    if (kind == Request::Pairing)
        return {Question::Pairing, "qtn_nfc_pair_tit", "qtn_nfc_pair_text", "qtn_nfc_pair"};
    if (kind == Request::Connection)
        return {Question::Connection, "qtn_nfc_connect_to_tit", "qtn_nfc_connect_text", "qtn_nfc_connect"};
    return {Question::Disconnection, "qtn_nfc_disconnect_tit", "qtn_nfc_disconnect_text",
            "qtn_nfc_disconnect"};
}

// The device stands in one of the two.
QString named(const char *id, const QString &device)
{
    const QString text = qtTrId(id);
    return text.contains(QLatin1String("%1")) ? text.arg(device) : text;
}

QByteArray contentOf(const TouchedDevice &device)
{
    return QStringList{device.address, device.name, device.pin}.join(QLatin1Char('\n')).toUtf8();
}

} // namespace

BluetoothRequest::BluetoothRequest(Kind kind, const QString &target, const TouchedDevice &device,
                                   const PendingReply &reply)
    : Request(kind, target, contentOf(device), reply)
    , device(device)
{}

void BluetoothRequest::begin()
{
    const HandoverWords words = wordsFor(kind);
    const QString name = foreignName(device.name, deviceName(device.address));
    Question question;
    question.kind = words.kind;
    question.title = named(words.title, name);
    question.notes.append(named(words.text, name));
    if (!device.pin.isEmpty())
        question.notes.append(qtTrId("qtn_nfc_pair_pin").arg(foreignName(device.pin, QStringLiteral("?"))));
    question.yes = qtTrId(words.verb);
    question.no = qtTrId("qtn_comm_cancel");
    question.deviceClass = device.deviceClass;
    Q_EMIT asks(question);
}

void BluetoothRequest::decide(const Answer &answer)
{
    if (answer.choice == Answer::No)
        reject();
    else
        grant();
    Q_EMIT done();
}
