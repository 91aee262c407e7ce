// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_NFCOVERLAY_P_H
#define CONNUI_NFCOVERLAY_P_H

#include <QObject>
#include <QPropertyAnimation>

class QTimer;

namespace ConnUi {

class IndicationItem;
class NfcOverlay;

class NfcOverlayPrivate : public QObject
{
    Q_OBJECT

public:
    explicit NfcOverlayPrivate(NfcOverlay *overlay);

    void createItem();
    void slideOut();

    NfcOverlay *overlay;
    IndicationItem *item = nullptr;
    bool showing = false;
    QPropertyAnimation *animation = nullptr;
    QTimer *timer;

public Q_SLOTS:
    void updateWindowMask();
    void clearWindowMask();
    void show();
    void hide();

private:
    void animate(float from, float to);
};

} // namespace ConnUi

#endif
