// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_QML_NDEFMESSAGETYPE_H
#define CONNUI_QML_NDEFMESSAGETYPE_H

#include <QByteArray>
#include <QList>
#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include <NDEFGenerator>
#include <NdefRecord>

/**
 * Builds an NDEF message (NFC Forum NDEF 1.0) from URIs and MIME data, or reads one: the QML type
 * NdefMessage.
 *
 * Adding to a message that was read begins a new one.
 */
class NdefMessageType : public QObject
{
    Q_OBJECT
    QML_NAMED_ELEMENT(NdefMessage)
    /** The bytes, an ArrayBuffer; empty when there is no message. Written, the message that they are is read.
     */
    Q_PROPERTY(QByteArray bytes READ bytes WRITE setBytes NOTIFY changed FINAL)
    /** The records that are in the bytes; none when the bytes are not exactly one message. */
    Q_PROPERTY(QList<ConnUi::NdefRecord> records READ records NOTIFY changed FINAL)
    /** The reason why the records that were added make no message, for the log; empty otherwise. */
    Q_PROPERTY(QString error READ error NOTIFY changed FINAL)

public:
    explicit NdefMessageType(QObject *parent = nullptr);

    QByteArray bytes() const;
    void setBytes(const QByteArray &bytes);
    QList<ConnUi::NdefRecord> records() const;
    QString error() const;

    /** Appends a record of \a uri. */
    Q_INVOKABLE void addUri(const QString &uri);
    /** Appends a record of the text \a data, as UTF-8, of the MIME type \a mimeType. */
    Q_INVOKABLE void addText(const QString &mimeType, const QString &data);
    /** Appends a record of \a data, an ArrayBuffer, of the MIME type \a mimeType. */
    Q_INVOKABLE void addData(const QString &mimeType, const QByteArray &data);
    /** Removes all records. */
    Q_INVOKABLE void clear();

Q_SIGNALS:
    /** The message has changed. */
    void changed();

private:
    void add(NDEFGenerator::Record &&record);

    NDEFGenerator generator;
    QByteArray message;
    QString problem;
};

#endif
