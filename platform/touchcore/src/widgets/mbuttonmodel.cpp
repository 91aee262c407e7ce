// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "mbuttonmodel.h"

#include "widgets/mbuttonmodel_p.h"

MButtonModel::MButtonModel(const QString &text, M::ButtonRole role, M::StandardButton button, QObject *parent)
    : QObject(parent)
    , d(new MButtonModelPrivate{text, role, button})
{}

MButtonModel::~MButtonModel() = default;

QString MButtonModel::text() const
{
    return d->text;
}

void MButtonModel::setText(const QString &text)
{
    if (d->text == text)
        return;
    d->text = text;
    Q_EMIT textChanged(text);
}

M::ButtonRole MButtonModel::role() const
{
    return d->role;
}

M::StandardButton MButtonModel::standardButton() const
{
    return d->button;
}

void MButtonModel::click()
{
    Q_EMIT clicked();
}
