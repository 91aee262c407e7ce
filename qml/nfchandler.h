// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_QML_NFCHANDLER_H
#define CONNUI_QML_NFCHANDLER_H

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

/** An application that can get the content of a tag: the QML type NfcHandler. */
class NfcHandler : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("DeliveryRequest has them")
    /** The id of the application, the base name of its desktop file. */
    Q_PROPERTY(QString applicationId READ applicationId CONSTANT FINAL)
    /** The name of the application, one line of at most 64 characters. */
    Q_PROPERTY(QString name READ name CONSTANT FINAL)
    /** The name of the icon in the theme, or its path; empty for none. */
    Q_PROPERTY(QString icon READ icon CONSTANT FINAL)

public:
    /** Reads the desktop file of \a application. */
    explicit NfcHandler(const QString &application, QObject *parent = nullptr);

    QString applicationId() const;
    QString name() const;
    QString icon() const;

private:
    const QString id;
    const QString shownName;
    const QString iconName;
};

#endif
