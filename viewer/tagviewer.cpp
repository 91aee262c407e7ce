// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tagviewer.h"

#include <QTimer>

TagViewer::TagViewer(QObject *parent) : QObject(parent)
{
    window.setWindowTitle(page.title());
    page.appear(&window);
    connect(&page, &MDialog::finished, &window, &QWidget::close);
}

void TagViewer::show(const QByteArray &message)
{
    QTimer::singleShot(
        0, this,
        [this, message] {
            page.setMessage(message);
            comeToFront();
        });
}

void TagViewer::comeToFront()
{
    window.show();
    window.raise();
    window.activateWindow();
}
