// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_QML_NFCADAPTERTYPE_H
#define CONNUI_QML_NFCADAPTERTYPE_H

#include <memory>

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace ConnUi {
class NfcAdapter;
}

/**
 * The adapter of the NFC daemon: the QML type NfcAdapter.
 *
 * Nothing here waits for the daemon: a property has its last known value, and changes when the daemon has
 * replied.
 */
class NfcAdapterType : public QObject
{
    Q_OBJECT
    QML_NAMED_ELEMENT(NfcAdapter)
    /** Whether the daemon is there. */
    Q_PROPERTY(bool available READ isAvailable NOTIFY availableChanged FINAL)
    /** Whether the adapter is switched on; false without a daemon. Writing asks the daemon to switch, or
     * starts it; the value changes when it has switched. */
    Q_PROPERTY(bool powered READ isPowered WRITE setPowered NOTIFY poweredChanged FINAL)
    /** Whether the user wants to be asked before a tag is opened: a setting, which needs no daemon. */
    Q_PROPERTY(bool confirmationEnabled READ isConfirmationEnabled WRITE setConfirmationEnabled NOTIFY
                   confirmationEnabledChanged FINAL)

public:
    explicit NfcAdapterType(QObject *parent = nullptr);
    ~NfcAdapterType() override;

    bool isAvailable() const;
    bool isPowered() const;
    void setPowered(bool on);
    bool isConfirmationEnabled() const;
    void setConfirmationEnabled(bool enabled);

Q_SIGNALS:
    void availableChanged();
    void poweredChanged();
    void confirmationEnabledChanged();

private:
    void follow();
    void findPower();
    void update(bool isOn);

    const std::unique_ptr<ConnUi::NfcAdapter> d;
    bool powered = false;
};

#endif
