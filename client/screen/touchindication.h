// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_TOUCHINDICATION_H
#define CONNUI_TOUCHINDICATION_H

#include <QDBusObjectPath>
#include <QObject>

namespace ConnUi {
class NfcAgent;
class NfcOverlay;
} // namespace ConnUi

class DialogQueue;

/** Shows every touch by the banner, and tells when a tag cannot be read. */
class TouchIndication : public QObject
{
    Q_OBJECT

public:
    TouchIndication(ConnUi::NfcAgent *agent, ConnUi::NfcOverlay *overlay, DialogQueue *queue);

private:
    void tell(const QDBusObjectPath &target, int status);

    ConnUi::NfcOverlay *const overlay;
    DialogQueue *const queue;
};

#endif
