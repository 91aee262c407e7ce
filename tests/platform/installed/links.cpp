// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

// Something out of each library, so that each is linked and loaded.
#include <BluetoothDevice>
#include <ContentAction>
#include <MLabel>
#include <RadioState>
#include <Thumbnailer>
#include <URINDEFRecord>

int main()
{
    const bool right = URINDEFRecord(QByteArray("\x04"
                                                "a"))
                               .getURI() == "https://a" &&
                       !ContentAction::Action().isValid() && !ConnUi::BluetoothDevice().isValid() &&
                       ConnUi::RadioState::staticMetaObject.className() &&
                       Thumbnails::Thumbnailer::staticMetaObject.className() &&
                       MLabel::staticMetaObject.className();
    return right ? 0 : 1;
}
