// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <memory>

#include <QFile>
#include <QSignalSpy>
#include <QTest>
#include <QXmlStreamReader>

#include <NfcAdapter>
#include <NfcAgent>
#include <RadioState>

#include "fakedaemon.h"
#include "fakeohm.h"

using namespace Qt::Literals::StringLiterals;
using ConnUi::NfcAdapter;
using ConnUi::NfcAgent;
using ConnUi::RadioState;

class TestInterfaces : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void exportedInterfaceIsAsPublished_data();
    void exportedInterfaceIsAsPublished();

private:
    static QStringList members(const QByteArray &introspection, const QString &interface);

    std::unique_ptr<FakeOhm> ohm; // for the agent's records
    std::unique_ptr<NfcAdapter> adapter;
    std::unique_ptr<NfcAgent> agent;
};

void TestInterfaces::initTestCase()
{
    RadioState(RadioState::NFC).setEnabled(false);
    ohm = std::make_unique<FakeOhm>();
    ohm->start();
    adapter = std::make_unique<NfcAdapter>();
    agent = std::make_unique<NfcAgent>();
}

void TestInterfaces::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
}

// Lines such as "method Name(in s carrier, out o path)", in the order of the introspection data.
QStringList TestInterfaces::members(const QByteArray &introspection, const QString &interface)
{
    QStringList members;
    QStringList arguments;
    QString current;
    QString member;
    QXmlStreamReader xml(introspection);
    while (!xml.atEnd()) {
        xml.readNext();
        const QString element = xml.name().toString();
        const auto attribute = [&xml](QLatin1String name) { return xml.attributes().value(name).toString(); };
        const bool isMember = element == u"method"_s || element == u"signal"_s || element == u"property"_s;
        if (xml.isStartElement() && element == u"interface"_s) {
            current = attribute(QLatin1String("name"));
        } else if (xml.isStartElement() && isMember) {
            member = element + u' ' + attribute(QLatin1String("name"));
            arguments.clear();
        } else if (xml.isStartElement() && element == u"arg"_s) {
            arguments.append(QStringList{attribute(QLatin1String("direction")),
                                         attribute(QLatin1String("type")), attribute(QLatin1String("name"))}
                                 .join(u' '));
        } else if (xml.isEndElement() && isMember && current == interface) {
            members.append(member + u'(' + arguments.join(u", "_s) + u')');
        }
    }
    return members;
}

void TestInterfaces::exportedInterfaceIsAsPublished_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("com.tavix.nfc.HandoverRequestor") << u"/com/tavix/nfcHandoverRequestor"_s;
    QTest::newRow("com.tavix.nfc.UIAgent") << agent->path();
}

void TestInterfaces::exportedInterfaceIsAsPublished()
{
    QFETCH(QString, path);
    const QString interface = QString::fromLatin1(QTest::currentDataTag());
    FakeDaemon daemon;
    QSignalSpy replied(&daemon, &FakeService::replied);
    daemon.call(QDBusConnection::systemBus().baseService(), path, u"org.freedesktop.DBus.Introspectable"_s,
                u"Introspect"_s);
    QVERIFY(!replied.isEmpty() || replied.wait());
    const FakeReply reply = daemon.replies().constFirst();
    QCOMPARE(reply.error, QString());

    QFile file(QStringLiteral(INTERFACES "/%1.xml").arg(interface));
    QVERIFY(file.open(QFile::ReadOnly));
    const QStringList published = members(file.readAll(), interface);
    QVERIFY(!published.isEmpty());
    QCOMPARE(members(reply.arguments.constFirst().toString().toUtf8(), interface), published);
}

QTEST_GUILESS_MAIN(TestInterfaces)
#include "tst_interfaces.moc"
