// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_SAMPLE_RECORDTEXT_H
#define CONNUI_SAMPLE_RECORDTEXT_H

#include <QString>

#include <NdefRecord>

/** Describes an NDEF record in one line, in which nothing but printable characters stands. */
QString recordText(const ConnUi::NdefRecord &record);

#endif
