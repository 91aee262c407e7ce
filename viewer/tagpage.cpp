// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "tagpage.h"

#include "section.h"
#include "sectionwidgets.h"

TagPage::TagPage() : MDialog(qtTrId("qtn_nfc_viewer_tit"))
{
    addButton(qtTrId("qtn_comm_close"), M::RejectRole);
    setMessage(QByteArray());
}

void TagPage::setMessage(const QByteArray &message)
{
    setCentralWidget(newSectionWidgets(readSections(message)));
}
