// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <QDBusConnection>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QSignalSpy>
#include <QTest>

#include "core/sessionlock.h"
#include "fakeservice.h"

namespace {

const QString sessionPath = QStringLiteral("/org/freedesktop/login1/session/_31");
const QString sessionInterface = QStringLiteral("org.freedesktop.login1.Session");

/** Stands in for logind, with one session. */
class FakeLogin : public FakeService
{
public:
    FakeLogin() : FakeService(QDBusConnection::SystemBus, QStringLiteral("org.freedesktop.login1"))
    {
        reply(QStringLiteral("GetSession"), {QVariant::fromValue(QDBusObjectPath(sessionPath))});
        setLocked(false);
    }

    void setLocked(bool locked) { reply(QStringLiteral("Get"), {QVariant::fromValue(QDBusVariant(locked))}); }

    void announce(const QString &interface, const QVariantMap &changed)
    {
        emitSignal(sessionPath, QStringLiteral("org.freedesktop.DBus.Properties"),
                   QStringLiteral("PropertiesChanged"), {interface, changed, QStringList()});
    }
};

/** Stands in for the desktop's screen saver. */
class FakeSaver : public FakeService
{
public:
    FakeSaver() : FakeService(QDBusConnection::SessionBus, QStringLiteral("org.freedesktop.ScreenSaver"))
    {
        reply(QStringLiteral("GetActive"), {false});
    }

    void announce(bool active)
    {
        emitSignal(QStringLiteral("/org/freedesktop/ScreenSaver"), service(), QStringLiteral("ActiveChanged"),
                   {active});
    }
};

} // namespace

class TestSessionLock : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void nobodyLocksIt();
    void hintIsRead();
    void hintIsFollowed();
    void otherPropertiesChangeNothing();
    void screenSaverIsRead();
    void screenSaverIsFollowed();
    void bothHaveToUnlockIt();
    void serviceThatComesIsAsked();
    void serviceThatGoesLocksNothing();
};

void TestSessionLock::nobodyLocksIt()
{
    const SessionLock lock;
    QVERIFY(!lock.isLocked());
}

void TestSessionLock::hintIsRead()
{
    FakeLogin login;
    login.setLocked(true);
    login.start();
    const SessionLock lock;
    QTRY_VERIFY(lock.isLocked());
    QCOMPARE(login.calls(QStringLiteral("GetSession"))[0].arguments, QVariantList{QStringLiteral("auto")});
    QCOMPARE(login.calls(QStringLiteral("Get"))[0].path, sessionPath);
}

void TestSessionLock::hintIsFollowed()
{
    FakeLogin login;
    login.start();
    const SessionLock lock;
    QSignalSpy changed(&lock, &SessionLock::changed);
    QTRY_COMPARE(login.calls(QStringLiteral("Get")).size(), 1);
    login.announce(sessionInterface, {{QStringLiteral("LockedHint"), true}});
    QTRY_COMPARE(changed, QList<QVariantList>{{true}});
    login.announce(sessionInterface, {{QStringLiteral("LockedHint"), false}});
    QTRY_COMPARE(changed.size(), 2);
    QVERIFY(!lock.isLocked());
}

void TestSessionLock::otherPropertiesChangeNothing()
{
    FakeLogin login;
    login.start();
    const SessionLock lock;
    QSignalSpy changed(&lock, &SessionLock::changed);
    QTRY_COMPARE(login.calls(QStringLiteral("Get")).size(), 1);
    login.announce(sessionInterface, {{QStringLiteral("IdleHint"), true}});
    login.announce(QStringLiteral("org.example"), {{QStringLiteral("LockedHint"), true}});
    login.announce(sessionInterface, {{QStringLiteral("LockedHint"), true}});
    QTRY_COMPARE(changed.size(), 1);
}

void TestSessionLock::screenSaverIsRead()
{
    FakeSaver saver;
    saver.reply(QStringLiteral("GetActive"), {true});
    saver.start();
    const SessionLock lock;
    QTRY_VERIFY(lock.isLocked());
}

void TestSessionLock::screenSaverIsFollowed()
{
    FakeSaver saver;
    saver.start();
    const SessionLock lock;
    QTRY_COMPARE(saver.calls(QStringLiteral("GetActive")).size(), 1);
    saver.announce(true);
    QTRY_VERIFY(lock.isLocked());
    saver.announce(false);
    QTRY_VERIFY(!lock.isLocked());
}

void TestSessionLock::bothHaveToUnlockIt()
{
    FakeLogin login;
    login.setLocked(true);
    login.start();
    FakeSaver saver;
    saver.reply(QStringLiteral("GetActive"), {true});
    saver.start();
    const SessionLock lock;
    QSignalSpy changed(&lock, &SessionLock::changed);
    QTRY_COMPARE(saver.calls(QStringLiteral("GetActive")).size(), 1);
    QTRY_COMPARE(login.calls(QStringLiteral("Get")).size(), 1);
    saver.announce(false);
    login.announce(sessionInterface, {{QStringLiteral("LockedHint"), false}});
    QTRY_COMPARE(changed, (QList<QVariantList>{{true}, {false}}));
}

void TestSessionLock::serviceThatComesIsAsked()
{
    FakeLogin login;
    login.setLocked(true);
    FakeSaver saver;
    const SessionLock lock;
    login.start();
    saver.start();
    QTRY_VERIFY(lock.isLocked());
    QTRY_COMPARE(saver.calls(QStringLiteral("GetActive")).size(), 1);
}

void TestSessionLock::serviceThatGoesLocksNothing()
{
    FakeLogin login;
    login.setLocked(true);
    login.start();
    const SessionLock lock;
    QTRY_VERIFY(lock.isLocked());
    login.kill();
    QTRY_VERIFY(!lock.isLocked());
}

QTEST_GUILESS_MAIN(TestSessionLock)
#include "tst_sessionlock.moc"
