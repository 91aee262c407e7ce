// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_TESTS_FAILINGPCSCD_H
#define CONNUI_TESTS_FAILINGPCSCD_H

#include <cstring>
#include <winscard.h>

#include <QLocalServer>
#include <QLocalSocket>
#include <QObject>

/**
 * A pcscd that does all but one thing, without any reader.
 *
 * A request is its size, its command and so many bytes, which are also the answer; their last number is the
 * result (protocol 4.4 of pcsc-lite, numbers of 32 bits in native byte order).
 */
class FailingPcscd : public QObject
{
public:
    enum Command : quint32 { EstablishContext = 0x01, Connect = 0x04, BeginTransaction = 0x07 };

    /** One that fails to do this, with \a result. */
    FailingPcscd(Command failing, LONG result) : failing(failing), result(quint32(result))
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

    /** How often it has failed. */
    int failures() const { return count; }

private:
    struct Header
    {
        quint32 size;
        quint32 command;
    };

    void answer(QLocalSocket *client)
    {
        Header header = {};
        while (client->peek(reinterpret_cast<char *>(&header), sizeof header) == sizeof header &&
               client->bytesAvailable() >= qint64(sizeof header + header.size)) {
            client->skip(sizeof header);
            QByteArray data = client->read(header.size);
            // The only context and the only card have the number one.
            if (header.command == EstablishContext)
                put(data, contextPlace, 1);
            if (header.command == Connect)
                put(data, cardPlace, 1);
            if (header.command == failing) {
                put(data, data.size() - qsizetype(sizeof result), result);
                ++count;
            }
            client->write(data);
        }
    }

    static void put(QByteArray &data, qsizetype place, quint32 number)
    {
        std::memcpy(data.data() + place, &number, sizeof number);
    }

    static constexpr qsizetype contextPlace = 4; // behind the scope
    static constexpr qsizetype cardPlace = 140;  // behind the context, 128 bytes of a name, and two numbers

    const Command failing;
    const quint32 result;
    QLocalServer server;
    int count = 0;
};

#endif
