// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

// Our side of the measurements that scripts take, in a process of its own. It prints its name on the bus and
// its agent's path, and then the time of each thing that is waited for:
//
//   peer_nfc binding    the daemon is bound
//   peer_nfc dialog     the dialog about a text from a tag is on the screen
//   peer_nfc prewarmed  the same, after the prewarming that nfc-ui begins with
//   peer_nfc whole      the same, with all that nfc-ui has: the daemon knows the path of its agent
#include <cstdio>
#include <cstring>

#include <QApplication>
#include <QDBusConnection>

#include <NfcAdapter>
#include <NfcAgent>
#include <NfcTagReadPermissionDialog>

#include "catalogue.h"
#include "core/session.h"
#include "firstframe.h"
#include "measurement.h"
#include "screen/prewarm.h"
#include "screen/screenface.h"

using namespace ConnUi;

namespace {

void introduce(const QString &path)
{
    std::printf("%s %s\n", qUtf8Printable(QDBusConnection::systemBus().baseService()), qUtf8Printable(path));
    std::fflush(stdout);
}

// The screen of nfc-ui, on which every question is dismissed as soon as it is seen.
class WatchedFace : public ScreenFace
{
public:
    void prepare() override
    {
        ScreenFace::prepare();
        frame.begin();
        introduce(QStringLiteral("/"));
    }

    void show(const Question &question) override
    {
        ScreenFace::show(question);
        frame.then([this] {
            withdraw();
            Q_EMIT answered({});
            frame.begin();
        });
    }

private:
    FirstFrame frame;
};

int askAsClient(int argc, char **argv)
{
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    const Catalogue catalogue;
    WatchedFace face;
    const Session session(&face);
    return QApplication::exec();
}

int bind(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    const NfcAdapter adapter;
    QObject::connect(&adapter, &NfcAdapter::adapterValid, qApp, [] {
        std::printf("%.0f\n", Measurement::now());
        std::fflush(stdout);
    });
    introduce(QStringLiteral("/"));
    return QCoreApplication::exec();
}

int askWithDialogs(int argc, char **argv, bool prewarmed)
{
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    const Catalogue catalogue;
    if (prewarmed)
        prewarmQuestion();
    FirstFrame frame;
    NfcAgent agent;
    QObject::connect(
        &agent, &NfcAgent::dataDeliveryRequested, qApp,
        [&](const NdefMessageHandlerList &, const QDBusObjectPath &target, const QByteArray &data) {
            frame.begin();
            auto *dialog = new NfcTagReadPermissionDialog(QString::fromUtf8(data));
            dialog->appear(MSceneWindow::DestroyWhenDone);
            frame.then([&agent, target, dialog] {
                dialog->reject();
                agent.rejectDevice(target);
            });
        });
    introduce(agent.path());
    return QApplication::exec();
}

} // namespace

int main(int argc, char **argv)
{
    const char *what = argc > 1 ? argv[1] : "";
    if (std::strcmp(what, "binding") == 0)
        return bind(argc, argv);
    if (std::strcmp(what, "whole") == 0)
        return askAsClient(argc, argv);
    return askWithDialogs(argc, argv, std::strcmp(what, "prewarmed") == 0);
}
