// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

// The heap memory of one more object of each kind: compared with a QObject, or for visible ones with
// a message box.
#include <malloc.h>
#include <memory>
#include <vector>

#include <QApplication>
#include <QMessageBox>

#include <MWindow>
#include <NdefMessageHandler>
#include <NfcAdapter>
#include <NfcAgent>
#include <NfcApplicationSelectionDialog>
#include <NfcEnableDialog>
#include <NfcFileReceiveSheet>
#include <NfcFileSendDialog>
#include <NfcFileSendPendingDialog>
#include <NfcPairingDialog>
#include <NfcSettingsView>
#include <NfcSharingPermissionDialog>
#include <NfcSharingSelectionDialog>
#include <NfcTagNotSupportedDialog>
#include <NfcTagReadPermissionDialog>

#include "measurement.h"

using namespace ConnUi;
using namespace Measurement;

namespace {

// Everything that can be kept until it is measured.
using Object = std::shared_ptr<void>;
using Make = std::function<Object()>;

template <typename T, typename... Arguments>
Make make(Arguments... arguments)
{
    return [=] { return std::make_shared<T>(arguments...); };
}

// A dialog or sheet with its contents, in a window.
template <typename T, typename... Arguments>
Make makeShown(MWindow *window, Arguments... arguments)
{
    return [=] {
        auto shown = std::make_shared<T>(arguments...);
        shown->appear(window);
        QCoreApplication::processEvents();
        return shown;
    };
}

double bytesOf(const Make &make)
{
    // The first object allocates the data that all of them share.
    const Object first = make();
    constexpr int count = 20;
    std::vector<Object> objects(count);
    const std::size_t before = mallinfo2().uordblks;
    for (Object &object : objects)
        object = make();
    return double(mallinfo2().uordblks - before) / count;
}

void ignoreWarning(QtMsgType, const QMessageLogContext &, const QString &)
{
    // Nothing is installed here: no daemon, no application.
}

} // namespace

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    begin(argc, argv);
    qInstallMessageHandler(ignoreWarning);
    MWindow window;
    window.show();
    const QString text = QStringLiteral("Welcome to the museum");
    const QString session = QStringLiteral("session");

    const double object = bytesOf(make<QObject>());
    const auto beside = [](const char *what, const std::string &base, double baseBytes, const Make &make) {
        print(std::string("Memory of ") + what, "bytes", base, baseBytes, "one more", bytesOf(make), {});
    };
    beside("NfcAdapter", "QObject", object, make<NfcAdapter>());
    beside("NfcAgent", "QObject", object, make<NfcAgent>());
    beside("NdefMessageHandler", "QObject", object,
           make<NdefMessageHandler>(QStringLiteral("viewer"), session, QStringLiteral("org.example.Viewer"),
                                    QDBusObjectPath(QStringLiteral("/viewer"))));

    const double box = bytesOf([&] {
        auto shown = std::make_shared<QMessageBox>(QMessageBox::NoIcon, text, text,
                                                   QMessageBox::Yes | QMessageBox::No);
        shown->show();
        QCoreApplication::processEvents();
        return shown;
    });
    const std::pair<const char *, Make> dialogs[] = {
        {"NfcTagReadPermissionDialog", makeShown<NfcTagReadPermissionDialog>(&window, text)},
        {"NfcApplicationSelectionDialog",
         makeShown<NfcApplicationSelectionDialog>(&window, QStringList(QStringLiteral("viewer")), 0)},
        {"NfcSharingPermissionDialog",
         makeShown<NfcSharingPermissionDialog>(&window, QStringList(QStringLiteral("/notes.txt")))},
        {"NfcSharingSelectionDialog",
         makeShown<NfcSharingSelectionDialog>(&window, NfcSharingSelectionDialog::ImageSelection)},
        {"NfcPairingDialog", makeShown<NfcPairingDialog>(&window, 0x240404u)},
        {"NfcTagNotSupportedDialog",
         makeShown<NfcTagNotSupportedDialog>(&window, NfcTagNotSupportedDialog::EmptyTagError)},
        {"NfcFileSendDialog", makeShown<NfcFileSendDialog>(&window)},
        {"NfcFileSendPendingDialog", makeShown<NfcFileSendPendingDialog>(&window)},
        {"NfcEnableDialog", makeShown<NfcEnableDialog>(&window)},
        {"NfcFileReceiveSheet", makeShown<NfcFileReceiveSheet>(&window)},
    };
    for (const auto &[what, make] : dialogs)
        beside(what, "QMessageBox", box, make);
    beside("NfcSettingsView", "QMessageBox", box, [] { return std::make_shared<NfcSettingsView>(nullptr); });
}
