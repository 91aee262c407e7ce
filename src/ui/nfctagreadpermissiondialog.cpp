// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "nfctagreadpermissiondialog.h"

#include <algorithm>
#include <initializer_list>

#include <QByteArray>
#include <QRegularExpression>
#include <QString>
#include <QUrl>
#include <QUrlQuery>

#include <ContactExporter>
#include <ContentAction>
#include <MButtonModel>
#include <MWidgetController>
#include <URINDEFRecord>

#include "ui/nfctagreadpermissiondialog_p.h"

namespace ConnUi {

namespace {

struct Message
{
    QString receiver;
    QString body;
};

// The URI is decoded whole before it is taken apart, so an encoded ampersand or equals sign ends the body
// too.
Message parseMessage(QString uri)
{
    // A percent sign that encodes nothing stands for itself.
    static const QRegularExpression lonePercent(QStringLiteral("%(?![0-9A-Fa-f]{2})"));
    uri.replace(lonePercent, QStringLiteral("%25"));
    QString decoded = QString::fromUtf8(QByteArray::fromPercentEncoding(uri.toUtf8()));
    // Any encoded character that remains was a percent sign of the text.
    decoded.replace(QLatin1Char('%'), QLatin1String("%25"));
    const QUrl url(decoded);
    const QString body = QUrlQuery(url).queryItemValue(QStringLiteral("body"), QUrl::FullyDecoded);
    return {url.path(QUrl::FullyDecoded), body.section(QLatin1Char('='), 0, 0)};
}

QString removeControls(const QString &text)
{
    QString shown = text;
    shown.removeIf(
        [](QChar c) { return c.unicode() <= 31 && c != QLatin1Char('\n') && c != QLatin1Char('\r'); });
    return shown;
}

bool startsWithAny(const QString &text, std::initializer_list<QLatin1String> beginnings)
{
    return std::any_of(
        beginnings.begin(), beginnings.end(),
        [&text](QLatin1String beginning) { return text.startsWith(beginning, Qt::CaseInsensitive); });
}

QStringList defaultHandler(const ContentAction::Action &action)
{
    return {action.isValid() ? action.name() : QString()};
}

} // namespace

NfcTagReadPermissionDialog::NfcTagReadPermissionDialog(const QString &text)
    : MMessageBox(QString(), M::YesButton | M::NoButton)
    , d(new NfcTagReadPermissionDialogPrivate(this))
{
    createContent(text);
}

NfcTagReadPermissionDialog::NfcTagReadPermissionDialog(const QStringList &applications,
                                                       const QString &defaultApplication)
    : MMessageBox(QString(), M::YesButton | M::NoButton)
    , d(new NfcTagReadPermissionDialogPrivate(this))
{
    d->selectedApplication = defaultApplication;
    createContent(applications);
}

NfcTagReadPermissionDialog::NfcTagReadPermissionDialog(const URINDEFRecord *record,
                                                       const QString &description)
    : MMessageBox(QString(), M::YesButton | M::NoButton)
    , d(new NfcTagReadPermissionDialogPrivate(this))
{
    createContent(record, description);
}

NfcTagReadPermissionDialog::NfcTagReadPermissionDialog(const QString &type, const QString &data)
    : MMessageBox(QString(), M::YesButton | M::NoButton)
    , d(new NfcTagReadPermissionDialogPrivate(this))
{
    createContent(type, data);
}

NfcTagReadPermissionDialog::NfcTagReadPermissionDialog(const QString &mimeType, const QFileInfo &file)
    : MMessageBox(QString(), M::YesButton | M::NoButton)
    , d(new NfcTagReadPermissionDialogPrivate(this))
{
    createContent(mimeType, file);
}

NfcTagReadPermissionDialog::~NfcTagReadPermissionDialog()
{
    delete d;
}

QString NfcTagReadPermissionDialog::selectedApplication() const
{
    return d->selectedApplication;
}

bool NfcTagReadPermissionDialog::isDirectActionSelected() const
{
    return d->directActionSelected;
}

void NfcTagReadPermissionDialog::applicationSelected()
{
    // Past done(): the button pressed last is still the one that opened the selection.
    MDialog::done(M::OkButton);
}

void NfcTagReadPermissionDialog::done(int result)
{
    const MButtonModel *clicked = clickedButton();
    if (clicked && clicked->role() == M::InvalidRole) {
        d->openSelection();
        return;
    }
    if (clicked && clicked->role() == M::ApplyRole)
        d->directActionSelected = false;
    MDialog::done(result);
}

void NfcTagReadPermissionDialog::createContent(const URINDEFRecord *record, const QString &description)
{
    d->setButtonTexts(qtTrId("qtn_nfc_tags_view"));

    QString uri = record ? QString::fromUtf8(record->getURI()) : QString();
    if (record && !uri.contains(QLatin1Char(':')))
        uri.prepend(QLatin1String("http://"));

    if (uri.startsWith(QLatin1String("http"))) {
        d->link = NfcLink(uri);
        d->createContent(QStringLiteral("icon-m-content-url-inverse"), qtTrId("qtn_nfc_tags_url_tit"),
                         description, uri);
    } else if (uri.startsWith(QLatin1String("tel:")) || uri.startsWith(QLatin1String("callto:"))) {
        QString number = uri;
        number.remove(uri.startsWith(QLatin1String("tel:")) ? QLatin1String("tel:")
                                                            : QLatin1String("callto:"));
        d->addLeftToRightMark(number);
        d->addDirectAction(qtTrId("qtn_comm_call"));
        d->createContent(QStringLiteral("icon-m-content-avatar-placeholder-inverse"),
                         qtTrId("qtn_nfc_tags_contact_tit"), description, number);
    } else if (uri.startsWith(QLatin1String("sms:"))) {
        Message message = parseMessage(uri);
        d->addLeftToRightMark(message.receiver);
        QString detail = qtTrId("qtn_nfc_tags_sms_receiver").arg(message.receiver);
        if (!message.body.isEmpty())
            detail += QLatin1Char('\n') + message.body;
        d->addDirectAction(qtTrId("qtn_comm_send"));
        d->createContent(QStringLiteral("icon-m-content-sms-inverse"), qtTrId("qtn_nfc_tags_sms_tit"),
                         description, detail);
    } else {
        createContent(defaultHandler(ContentAction::Action::defaultActionForScheme(uri)));
    }
}

void NfcTagReadPermissionDialog::createContent(const QString &mimeType, const QFileInfo &file)
{
    d->setButtonTexts(qtTrId("qtn_nfc_tags_view"));

    if (startsWithAny(mimeType, {QLatin1String("text/x-vcard"), QLatin1String("text/directory")})) {
        QString first;
        QString second;
        ContactExporter::resolveContactInfo(file, first, second);
        const QString name = QStringLiteral("%1 %2").arg(first, second).trimmed();
        d->isDescriptionForeign = true;
        d->createContent(QStringLiteral("icon-m-content-avatar-placeholder-inverse"),
                         qtTrId("qtn_nfc_tags_contact_tit"), name, QString());
        return;
    }

    const QUrl url = QUrl::fromLocalFile(file.absoluteFilePath());
    ContentAction::Action action = ContentAction::Action::defaultActionForFile(url, mimeType);
    if (!action.isValid())
        action = ContentAction::Action::defaultActionForFile(url);
    createContent(defaultHandler(action));
}

void NfcTagReadPermissionDialog::createContent(const QString &text)
{
    d->setButtonTexts(qtTrId("qtn_nfc_tags_view"));
    d->createContent(QStringLiteral("icon-m-content-note-inverse"), qtTrId("qtn_nfc_tags_text_tit"),
                     QString(), removeControls(text));
}

void NfcTagReadPermissionDialog::createContent(const QString &type, const QString &data)
{
    d->setButtonTexts(qtTrId("qtn_nfc_tags_view"));

    if (startsWithAny(type, {QLatin1String("ruvostore:link"), QLatin1String("tavix.com:ruvostore:link")})) {
        d->extraWidget = new MWidgetController;
        d->extraWidget->setStyleName(QStringLiteral("CommonXLargeSpacer"));
        d->createContent(QStringLiteral("icon-m-content-ruvo-store-inverse"),
                         qtTrId("qtn_nfc_tags_store_tit"), QString(), QString());
        return;
    }
    createContent(defaultHandler(ContentAction::Action::defaultActionForString(data)));
}

void NfcTagReadPermissionDialog::createContent(const QStringList &applications)
{
    d->setButtonTexts(qtTrId("qtn_nfc_tags_view"));
    d->applications = applications;
    if (d->selectedApplication.isEmpty() || !applications.contains(d->selectedApplication))
        d->selectedApplication = applications.value(0);
    if (applications.size() > 1 && !d->changeButtonAdded) {
        addButton(qtTrId("qtn_nfc_tags_change_app_open"));
        d->changeButtonAdded = true;
    }

    QString name;
    QString icon = QStringLiteral("icon-m-content-nfc-inverse");
    QString description;
    if (d->getApplicationInfo(d->selectedApplication, name, icon)) {
        description = qtTrId("qtn_nfc_tags_app_txt").arg(name);
        button(M::YesButton)->setText(qtTrId("qtn_nfc_tags_open"));
    }
    d->createContent(icon, qtTrId("qtn_nfc_tags_gen_tit"), description, QString());
}

} // namespace ConnUi
