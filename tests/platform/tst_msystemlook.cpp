// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#include <QSignalSpy>

#include "dbusmock.h"
#include "theme/msystemlook_p.h"

namespace {

const auto service = QStringLiteral("org.freedesktop.portal.Desktop");
const auto path = QStringLiteral("/org/freedesktop/portal/desktop");
const auto settings = QStringLiteral("org.freedesktop.portal.Settings");
const auto appearance = QStringLiteral("org.freedesktop.appearance");
const auto desktop = QStringLiteral("org.gnome.desktop.interface");

// A portal that answers with the given expression in Python.
struct Portal : DBusMock
{
    explicit Portal(const QString &answer)
        : DBusMock(service, {service, path, settings}, QDBusConnection::SessionBus)
    {
        ready =
            waitForRegistered() && addMethod(path, settings, QStringLiteral("ReadAll"), QStringLiteral("as"),
                                             QStringLiteral("a{sa{sv}}"), QStringLiteral("ret = ") + answer)
                                           .type() == QDBusMessage::ReplyMessage;
    }

    void change(const QString &group, const QString &key, const QVariant &value) const
    {
        const QVariantList what{group, key, value};
        call(path, QStringLiteral("org.freedesktop.DBus.Mock"), QStringLiteral("EmitSignal"),
             {settings, QStringLiteral("SettingChanged"), QStringLiteral("ssv"), what});
    }

    bool ready;
};

// Everything at once, as the portal of today has it.
const auto all = QStringLiteral(
    "{'org.freedesktop.appearance': {'color-scheme': dbus.UInt32(1), 'contrast': dbus.UInt32(1)}, "
    "'org.gnome.desktop.interface': {'text-scaling-factor': 1.5}}");

} // namespace

class TestMSystemLook : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void withoutPortalEverythingKeepsItsDefault();
    void answerOfThePortalIsUsed();
    void oldPortalKnowsOneDesktopOnly();
    void changeIsFollowedAtOnce();
    void changeOfAnotherSettingIsIgnored();
    void motionIsReducedWhereTheDesktopSaysSo_data();
    void motionIsReducedWhereTheDesktopSaysSo();
    void textStaysLegible_data();
    void textStaysLegible();
    void nonsenseIsTheDefault_data();
    void nonsenseIsTheDefault();
};

void TestMSystemLook::withoutPortalEverythingKeepsItsDefault()
{
    MSystemLook look;
    QSignalSpy changed(&look, &MSystemLook::changed);
    // Later than the bus's answer to the look.
    QDBusConnection::sessionBus().call(
        QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/"),
                                       QStringLiteral("org.freedesktop.DBus"), QStringLiteral("GetId")));
    QCoreApplication::processEvents();
    QCOMPARE(changed.count(), 0);
    QVERIFY(look.look() == MLook());
    QCOMPARE(MLook().textScale, 1);
}

void TestMSystemLook::answerOfThePortalIsUsed()
{
    const Portal portal(all);
    QVERIFY(portal.ready);
    MSystemLook look;
    QSignalSpy changed(&look, &MSystemLook::changed);
    QVERIFY(changed.wait());
    QVERIFY(look.look().dark);
    QVERIFY(look.look().highContrast);
    QCOMPARE(look.look().textScale, 1.5);
}

void TestMSystemLook::oldPortalKnowsOneDesktopOnly()
{
    const Portal portal(QStringLiteral("{'org.gnome.desktop.a11y.interface': {'high-contrast': True}}"));
    QVERIFY(portal.ready);
    MSystemLook look;
    QSignalSpy changed(&look, &MSystemLook::changed);
    QVERIFY(changed.wait());
    QVERIFY(!look.look().dark);
    QVERIFY(look.look().highContrast);
}

void TestMSystemLook::changeIsFollowedAtOnce()
{
    const Portal portal(all);
    QVERIFY(portal.ready);
    MSystemLook look;
    QSignalSpy changed(&look, &MSystemLook::changed);
    QVERIFY(changed.wait());
    portal.change(appearance, QStringLiteral("color-scheme"), 2U);
    QVERIFY(changed.count() == 2 || changed.wait());
    QVERIFY(!look.look().dark);
    QVERIFY(look.look().highContrast);
    portal.change(desktop, QStringLiteral("text-scaling-factor"), 1.25);
    QVERIFY(changed.count() == 3 || changed.wait());
    QCOMPARE(look.look().textScale, 1.25);
}

void TestMSystemLook::changeOfAnotherSettingIsIgnored()
{
    const Portal portal(all);
    QVERIFY(portal.ready);
    MSystemLook look;
    QSignalSpy changed(&look, &MSystemLook::changed);
    QVERIFY(changed.wait());
    portal.change(desktop, QStringLiteral("cursor-size"), 48);
    portal.change(QStringLiteral("org.example"), QStringLiteral("color-scheme"), 2U);
    portal.change(appearance, QStringLiteral("color-scheme"), 0U);
    QVERIFY(changed.count() == 2 || changed.wait());
    QCOMPARE(changed.count(), 2);
}

void TestMSystemLook::motionIsReducedWhereTheDesktopSaysSo_data()
{
    QTest::addColumn<QString>("group");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QVariant>("reducing");
    QTest::addColumn<QVariant>("moving");
    QTest::newRow("less motion") << appearance << QStringLiteral("reduced-motion") << QVariant(1U)
                                 << QVariant(0U);
    QTest::newRow("no animations") << desktop << QStringLiteral("enable-animations") << QVariant(false)
                                   << QVariant(true);
}

void TestMSystemLook::motionIsReducedWhereTheDesktopSaysSo()
{
    QFETCH(QString, group);
    QFETCH(QString, key);
    QFETCH(QVariant, reducing);
    QFETCH(QVariant, moving);
    const Portal portal(all);
    QVERIFY(portal.ready);
    MSystemLook look;
    QSignalSpy changed(&look, &MSystemLook::changed);
    QVERIFY(changed.wait());
    QVERIFY(!look.look().reducedMotion);
    portal.change(group, key, reducing);
    QVERIFY(changed.count() == 2 || changed.wait());
    QVERIFY(look.look().reducedMotion);
    portal.change(group, key, moving);
    QVERIFY(changed.count() == 3 || changed.wait());
    QVERIFY(!look.look().reducedMotion);
}

void TestMSystemLook::textStaysLegible_data()
{
    QTest::addColumn<qreal>("asked");
    QTest::addColumn<qreal>("shown");
    QTest::newRow("usual") << 0.85 << 0.85;
    QTest::newRow("dust") << 0.01 << 0.5;
    QTest::newRow("wall") << 400.0 << 3.0;
}

void TestMSystemLook::textStaysLegible()
{
    QFETCH(qreal, asked);
    QFETCH(qreal, shown);
    QCOMPARE(MSystemLook::legible(asked), shown);
}

void TestMSystemLook::nonsenseIsTheDefault_data()
{
    QTest::addColumn<QString>("settings");
    QTest::newRow("text for a number") << QStringLiteral("{'text-scaling-factor': 'large'}");
    QTest::newRow("negative") << QStringLiteral("{'text-scaling-factor': -2.0}");
    QTest::newRow("no number") << QStringLiteral("{'text-scaling-factor': float('nan')}");
    QTest::newRow("infinite") << QStringLiteral("{'text-scaling-factor': float('inf')}");
    QTest::newRow("list") << QStringLiteral("{'text-scaling-factor': dbus.Array([1.0], signature='d')}");
}

void TestMSystemLook::nonsenseIsTheDefault()
{
    QFETCH(QString, settings);
    // The color scheme shows that the answer has come.
    const Portal portal(QStringLiteral("{'org.freedesktop.appearance': {'color-scheme': dbus.UInt32(1)}, "
                                       "'org.gnome.desktop.interface': %1}")
                            .arg(settings));
    QVERIFY(portal.ready);
    MSystemLook look;
    QSignalSpy changed(&look, &MSystemLook::changed);
    QVERIFY(changed.wait());
    QVERIFY(look.look().dark);
    QCOMPARE(look.look().textScale, 1);
}

QTEST_GUILESS_MAIN(TestMSystemLook)
#include "tst_msystemlook.moc"
