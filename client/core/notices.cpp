// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "core/notices.h"

#include <QCoreApplication>

Question notice(const QString &title, const QString &text)
{
    Question notice;
    notice.title = title;
    notice.notes.append(text);
    notice.no = QCoreApplication::translate("QPlatformTheme", "OK");
    return notice;
}

Question emptyTagNotice()
{
    Question told = notice(qtTrId("qtn_nfc_tags_empty_tit"), qtTrId("qtn_nfc_tags_empty_text"));
    told.kind = Question::EmptyTag;
    return told;
}

Question unreadableTagNotice()
{
    Question told = notice(qtTrId("qtn_nfc_tags_fail_tit"), qtTrId("qtn_nfc_tags_fail_text"));
    told.kind = Question::UnreadableTag;
    return told;
}
