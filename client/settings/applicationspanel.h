// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_CLIENT_APPLICATIONSPANEL_H
#define CONNUI_CLIENT_APPLICATIONSPANEL_H

#include <QList>

#include <MLinearLayoutPolicy>
#include <MWidgetController>

#include "settings/defaultapplications.h"

/** Shows which application opens what, a row for each kind of content; nothing when there is none. */
class ApplicationsPanel : public MWidgetController
{
    Q_OBJECT

public:
    ApplicationsPanel();

    /** Shows \a applications in the place of those before. */
    void list(const QList<DefaultApplication> &applications);

private:
    MLinearLayoutPolicy *const policy;
    MWidget *rows = nullptr;
};

#endif
