// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "core/sharingrequest.h"

#include <memory>

#include <QDataStream>
#include <QFileInfo>
#include <QIODevice>
#include <QTemporaryFile>
#include <QUrl>

#include <ContactExporter>
#include <NfcBluetoothHandoverInfo>
#include <NfcForeignText>

#include "core/contactcard.h"
#include "core/notices.h"
#include "core/peername.h"

using ConnUi::ContactExporter;
using ConnUi::foreignName;
using ConnUi::NfcBluetoothHandoverInfo;

namespace {

// There is one conversation about sharing at a time, whoever the peer is.
constexpr QLatin1String conversation("sharing");

// The question names one peer, so an answer sends nothing to another one. Peers without an address cannot be
// told apart, so no two of their requests are the same.
QByteArray contentOf(const QVariant &info, const QStringList &resources)
{
    static quint64 unnamed = 0;
    QByteArray content;
    QDataStream out(&content, QIODevice::WriteOnly);
    out << resources;
    const QString address = NfcBluetoothHandoverInfo(info).deviceAddress();
    if (address.isEmpty())
        out << ++unnamed;
    else
        out << address.toUpper();
    return content;
}

bool isContact(const QString &resource)
{
    return resource.startsWith(QLatin1String("contact:"));
}

QString localFile(const QString &resource)
{
    const QUrl url(resource);
    return url.isLocalFile() ? url.toLocalFile() : resource;
}

QString contactName(const QString &contact)
{
    const std::unique_ptr<QTemporaryFile> card(ContactExporter::createContactCardFile(contact));
    const QString name = nameOnCard(QFileInfo(card->fileName()));
    return name.isEmpty() && card->size() > 0 ? contact : name;
}

// Empty for what is not there.
QString nameOf(const QString &resource)
{
    if (isContact(resource))
        return contactName(resource);
    const QFileInfo file(localFile(resource));
    return file.isFile() ? file.fileName() : QString();
}

QString shownName(const QString &name)
{
    return foreignName(name, QStringLiteral("?"));
}

} // namespace

SharingRequest::SharingRequest(const QVariant &info, const QStringList &resources, const PendingReply &reply)
    : Request(Sharing, conversation, contentOf(info, resources), reply)
    , info(info)
    , resources(resources)
{}

SharingRequest::SharingRequest(const QVariant &info, const PendingReply &reply)
    : Request(Selection, conversation, {}, reply)
    , info(info)
{}

void SharingRequest::begin()
{
    const QString reason = kind == Sharing ? problem() : QString();
    if (reason.isEmpty()) {
        findPeerName(info, this, [this](const QString &peer) {
            if (!isAbandoned())
                askFor(peer);
        });
        return;
    }
    reject();
    Q_EMIT tells(notice(qtTrId("qtn_nfc_share_fail_tit"), reason));
    Q_EMIT done();
}

// Why nothing can be sent, in words for the user; empty when it can.
QString SharingRequest::problem() const
{
    if (resources.isEmpty())
        return qtTrId("qtn_nfc_share_nothing");
    for (const QString &resource : resources)
        if (nameOf(resource).isEmpty())
            return qtTrId("qtn_nfc_share_gone")
                .arg(shownName(isContact(resource) ? resource : QFileInfo(localFile(resource)).fileName()));
    return {};
}

void SharingRequest::askFor(const QString &peer)
{
    Question question;
    question.kind = kind == Sharing ? Question::Sharing : Question::Selection;
    question.no = qtTrId("qtn_comm_cancel");
    if (kind == Sharing) {
        question.title = qtTrId("qtn_nfc_share_tit");
        question.notes.append(qtTrId("qtn_nfc_share_receiver").arg(peer));
        QStringList names;
        for (const QString &resource : resources)
            names.append(shownName(nameOf(resource)));
        question.data = names.join(QLatin1Char('\n'));
        question.yes = qtTrId("qtn_comm_send");
        question.resources = resources;
    } else {
        question.title = qtTrId("qtn_nfc_selecttoshare_tit");
        question.notes.append(qtTrId("qtn_nfc_selecttoshare_img_text"));
        question.yes = qtTrId("qtn_comm_command_continue");
    }
    Q_EMIT asks(question);
}

void SharingRequest::decide(const Answer &answer)
{
    if (answer.choice == Answer::No) {
        reject();
    } else {
        grant();
        if (kind == Selection)
            Q_EMIT selectionGranted();
    }
    Q_EMIT done();
}
