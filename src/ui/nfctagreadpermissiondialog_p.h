// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_NFCTAGREADPERMISSIONDIALOG_P_H
#define CONNUI_NFCTAGREADPERMISSIONDIALOG_P_H

#include <QObject>
#include <QString>
#include <QStringList>

#include "nfclink.h"

class MWidgetController;

namespace ConnUi {

class NfcTagReadPermissionDialog;

class NfcTagReadPermissionDialogPrivate : public QObject
{
    Q_OBJECT

public:
    explicit NfcTagReadPermissionDialogPrivate(NfcTagReadPermissionDialog *dialog);

    void createContent(const QString &icon, const QString &title, const QString &description,
                       const QString &detail);
    bool getApplicationInfo(const QString &application, QString &name, QString &icon) const;
    void addLeftToRightMark(QString &text) const;

    void setButtonTexts(const QString &yes);
    void addDirectAction(const QString &yes);
    void openSelection();

    NfcTagReadPermissionDialog *q;
    NfcLink link; // to the web
    MWidgetController *extraWidget = nullptr;
    QStringList applications;
    QString selectedApplication;
    bool changeButtonAdded = false;
    bool directActionSelected = false;
    bool isDescriptionForeign = false; // the tag's words, not the caller's

public Q_SLOTS:
    void applicationSelectionFinished(int result);
};

} // namespace ConnUi

#endif
