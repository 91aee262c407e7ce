// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_TESTS_REFUSINGPCSCD_H
#define CONNUI_TESTS_REFUSINGPCSCD_H

#include <array>
#include <winscard.h>

#include <QLocalServer>
#include <QLocalSocket>
#include <QObject>

/**
 * A pcscd that lets nobody in, as one does when polkit says so.
 *
 * A request is two numbers, its size and its command, and then three more for both commands that are needed;
 * the answer is the latter three, of which the last is the result (protocol 4.4 of pcsc-lite, native byte
 * order).
 */
class RefusingPcscd : public QObject
{
public:
    RefusingPcscd()
    {
        const QString path = QStringLiteral("/run/pcscd/pcscd.comm");
        QLocalServer::removeServer(path);
        if (!server.listen(path))
            qFatal("nobody can listen at %s", qUtf8Printable(path));
        connect(&server, &QLocalServer::newConnection, this, [this] {
            QLocalSocket *client = server.nextPendingConnection();
            connect(client, &QLocalSocket::readyRead, this, [this, client] { answer(client); });
            connect(client, &QLocalSocket::disconnected, client, &QObject::deleteLater);
        });
    }

    int refusals() const { return refused; }

private:
    void answer(QLocalSocket *client)
    {
        constexpr quint32 establishContext = 0x01;
        std::array<quint32, 5> request = {};
        while (client->bytesAvailable() >= qint64(sizeof request)) {
            client->read(reinterpret_cast<char *>(request.data()), sizeof request);
            if (request[1] == establishContext) {
                request[4] = quint32(SCARD_W_SECURITY_VIOLATION);
                ++refused;
            }
            client->write(reinterpret_cast<const char *>(&request[2]), 3 * sizeof(quint32));
        }
    }

    QLocalServer server;
    int refused = 0;
};

#endif
