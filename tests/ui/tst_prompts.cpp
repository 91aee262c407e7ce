// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <functional>
#include <utility>

#include <QMetaEnum>
#include <QScopedPointer>
#include <QSignalSpy>
#include <QTranslator>
#include <QtTest>

#include <MButton>
#include <MButtonModel>
#include <MImageWidget>
#include <MLabel>
#include <MProgressIndicator>
#include <MWindow>
#include <NfcEnableDialog>
#include <NfcFileSendDialog>
#include <NfcFileSendPendingDialog>
#include <NfcPairingDialog>
#include <NfcSharingSelectionDialog>
#include <NfcTagNotSupportedDialog>

#include "catalogue.h"
#include "fakeservice.h"
#include "shownwidgets.h"

using namespace ConnUi;

namespace {

using Make = std::function<MMessageBox *()>;

struct Button
{
    M::StandardButton code;
    QString text;
};

constexpr unsigned int smartphone = 0x5a020c;
constexpr unsigned int headset = 0x240404;
constexpr unsigned int uncategorized = 0x1f00;

Make pairing(unsigned int classOfDevice)
{
    return [=] { return new NfcPairingDialog(classOfDevice); };
}

Make selection(int type)
{
    return [=] { return new NfcSharingSelectionDialog(NfcSharingSelectionDialog::SelectionType(type)); };
}

Make unsupported(int error)
{
    return [=] { return new NfcTagNotSupportedDialog(NfcTagNotSupportedDialog::ErrorType(error)); };
}

template <typename Dialog>
Make make()
{
    return [] { return new Dialog; };
}

QString text(const char *text)
{
    return QString::fromLatin1(text);
}

// A catalogue with a word for canceling that Qt's own one does not have.
class OwnWord : public QTranslator
{
public:
    QString translate(const char *, const char *id, const char *, int) const override
    {
        return QLatin1String(id) == QLatin1String("qtn_comm_cancel") ? QStringLiteral("Stop it") : QString();
    }

    bool isEmpty() const override { return false; }
};

// A dialog on the screen of a phone.
class Shown
{
public:
    explicit Shown(const Make &make) : dialog(make())
    {
        window.show();
        dialog->appear(&window);
        ready = QTest::qWaitForWindowExposed(&window);
    }

    QString icon() const
    {
        const QList<MImageWidget *> icons = shownWidgets<MImageWidget>(dialog.data());
        return icons.isEmpty() ? QString() : icons.constFirst()->imageId();
    }

    bool ready;
    MWindow window;
    const QScopedPointer<MMessageBox> dialog;
};

} // namespace

Q_DECLARE_METATYPE(Make)
Q_DECLARE_METATYPE(QList<Button>)

class TestPrompts : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void promptShowsItsTexts_data();
    void promptShowsItsTexts();
    void cancelIsWordedByTheCatalogue_data();
    void cancelIsWordedByTheCatalogue();
    void pressIsTheResult_data() { promptShowsItsTexts_data(); }
    void pressIsTheResult();
    void escapeIsCancel_data() { promptShowsItsTexts_data(); }
    void escapeIsCancel();
    void everyTextIsTranslated_data();
    void everyTextIsTranslated();
    void enablingAsksAccordingToFlightMode();
    void enablingDoesNotFollowLaterFlightMode();
    void enablingDoesNotAskForAModeThatIsKnown();
    void enablingAsksAsUsualWhenTheModeIsUnknown();
    void errorTypesAreKnownToQt();

private:
    static void setFlightMode(FakeService &manager, bool on);

    const Catalogue english;
};

void TestPrompts::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

void TestPrompts::setFlightMode(FakeService &manager, bool on)
{
    manager.reply(QStringLiteral("GetProperties"), {QVariantMap{{QStringLiteral("OfflineMode"), on}}});
}

void TestPrompts::promptShowsItsTexts_data()
{
    QTest::addColumn<Make>("make");
    QTest::addColumn<QStringList>("labels");
    QTest::addColumn<QString>("icon");
    QTest::addColumn<QList<Button>>("buttons");
    QTest::addColumn<bool>("progress");

    const QStringList pair{text("Pair with this device?"),
                           text("The device you touched wants to connect over Bluetooth.")};
    const QList<Button> pairOrNot{{M::OkButton, text("Pair")}, {M::CancelButton, text("Don't pair")}};
    QTest::newRow("pairing with a phone")
        << pairing(smartphone) << pair << text("icon-m-bluetooth-phone") << pairOrNot << false;
    QTest::newRow("pairing with a headset")
        << pairing(headset) << pair << text("icon-m-bluetooth-headset") << pairOrNot << false;
    QTest::newRow("pairing with a thing without a class")
        << pairing(uncategorized) << pair << text("icon-m-bluetooth-generic") << pairOrNot << false;
    QTest::newRow("pairing with a class of more than 24 bits")
        << pairing(0xffffffff) << pair << text("icon-m-bluetooth-generic") << pairOrNot << false;

    QTest::newRow("enabling") << make<NfcEnableDialog>()
                              << QStringList{text("Switch NFC on?"),
                                             text("NFC is off. Switch it on to read tags and to share by "
                                                  "touch.")}
                              << QString()
                              << QList<Button>{{M::YesButton, text("Yes")}, {M::NoButton, text("No")}}
                              << false;

    const QList<Button> cancel{{M::CancelButton, text("Cancel")}};
    QTest::newRow("sending") << make<NfcFileSendDialog>()
                             << QStringList{text("Touch to share"), text("Touch the other device with the "
                                                                         "back of this phone.")}
                             << QString() << cancel << false;
    QTest::newRow("waiting") << make<NfcFileSendPendingDialog>()
                             << QStringList{text("Sharing"), text("Waiting for the other device.")}
                             << QString() << cancel << true;

    const QList<Button> continueOrCancel{{M::OkButton, text("Continue")}, {M::CancelButton, text("Cancel")}};
    const QStringList picture{text("Choose what to share"),
                              text("Choose the picture to share, then touch the other device again.")};
    const QStringList contact{text("Choose what to share"),
                              text("Choose the contact to share, then touch the other device again.")};
    QTest::newRow("selecting a picture") << selection(NfcSharingSelectionDialog::ImageSelection) << picture
                                         << QString() << continueOrCancel << false;
    QTest::newRow("selecting a contact") << selection(NfcSharingSelectionDialog::ContactSelection) << contact
                                         << QString() << continueOrCancel << false;
    for (const int type : {2, 255, -1})
        QTest::addRow("selecting something of the type %d", type)
            << selection(type) << contact << QString() << continueOrCancel << false;

    const QList<Button> ok{{M::OkButton, text("OK")}};
    const QStringList failed{text("Tag not supported"), text("The phone cannot read this tag.")};
    QTest::newRow("unsupported tag") << unsupported(NfcTagNotSupportedDialog::UnsupportedTagError) << failed
                                     << QString() << ok << false;
    QTest::newRow("empty tag") << unsupported(NfcTagNotSupportedDialog::EmptyTagError)
                               << QStringList{text("Empty tag"), text("There is nothing on this tag.")}
                               << QString() << ok << false;
    for (const int error : {2, 255, -1})
        QTest::addRow("tag with the error %d", error)
            << unsupported(error) << failed << QString() << ok << false;
}

void TestPrompts::promptShowsItsTexts()
{
    QFETCH(Make, make);
    QFETCH(QStringList, labels);
    QFETCH(QString, icon);
    QFETCH(QList<Button>, buttons);
    QFETCH(bool, progress);
    const Shown shown(make);
    QVERIFY(shown.ready);
    QCOMPARE(shownTexts<MLabel>(shown.dialog.data()), labels);
    QCOMPARE(shown.icon(), icon);
    QCOMPARE(shownWidgets<MProgressIndicator>(shown.dialog.data()).size(), progress ? 1 : 0);

    QStringList texts = shownTexts<MButton>(shown.dialog.data());
    const QList<MButtonModel *> models = shown.dialog->buttons();
    QCOMPARE(models.size(), buttons.size());
    QCOMPARE(texts.size(), buttons.size());
    for (qsizetype i = 0; i < buttons.size(); ++i) {
        QCOMPARE(models[i]->standardButton(), buttons[i].code);
        QCOMPARE(models[i]->text(), buttons[i].text);
        QVERIFY2(texts.removeOne(buttons[i].text), qPrintable(buttons[i].text));
    }
}

void TestPrompts::cancelIsWordedByTheCatalogue_data()
{
    QTest::addColumn<Make>("make");
    QTest::newRow("sending") << make<NfcFileSendDialog>();
    QTest::newRow("waiting") << make<NfcFileSendPendingDialog>();
}

void TestPrompts::cancelIsWordedByTheCatalogue()
{
    QFETCH(Make, make);
    OwnWord word;
    QVERIFY(QCoreApplication::installTranslator(&word));
    const QScopedPointer<MMessageBox> dialog(make());
    QCOMPARE(dialog->button(M::CancelButton)->text(), QStringLiteral("Stop it"));
}

void TestPrompts::pressIsTheResult()
{
    QFETCH(Make, make);
    QFETCH(QList<Button>, buttons);
    for (const Button &button : std::as_const(buttons)) {
        const Shown shown(make);
        QVERIFY(shown.ready);
        QSignalSpy finished(shown.dialog.data(), &MDialog::finished);
        for (MButton *view : shownWidgets<MButton>(shown.dialog.data()))
            if (view->text() == button.text)
                view->click();
        QCOMPARE(finished, QList<QVariantList>({{int(button.code)}}));
        QCOMPARE(shown.dialog->result(), int(button.code));
        QCOMPARE(shown.dialog->clickedButton(), shown.dialog->button(button.code));
    }
}

void TestPrompts::escapeIsCancel()
{
    QFETCH(Make, make);
    Shown shown(make);
    QVERIFY(shown.ready);
    QSignalSpy finished(shown.dialog.data(), &MDialog::finished);
    QTest::keyClick(shown.window.viewport(), Qt::Key_Escape);
    QCOMPARE(finished, QList<QVariantList>({{int(M::CancelButton)}}));
    QCOMPARE(shown.dialog->clickedButton(), nullptr);
}

void TestPrompts::everyTextIsTranslated_data()
{
    QTest::addColumn<QString>("language");
    for (const char *language : {"ar", "de", "fi"})
        QTest::newRow(language) << text(language);
}

// Every text goes through the catalogue: none stays as it is in English, and none is an id.
void TestPrompts::everyTextIsTranslated()
{
    QFETCH(QString, language);
    const auto textsOf = [](const Make &make) {
        const Shown shown(make);
        return shownTexts<MLabel>(shown.dialog.data());
    };
    const QList<Make> makers{pairing(smartphone),
                             make<NfcEnableDialog>(),
                             make<NfcFileSendDialog>(),
                             make<NfcFileSendPendingDialog>(),
                             selection(0),
                             selection(1),
                             unsupported(0),
                             unsupported(1)};
    for (const Make &make : makers) {
        const QStringList inEnglish = textsOf(make);
        const Catalogue other(language);
        const QStringList translated = textsOf(make);
        QCOMPARE(translated.size(), 2);
        for (const QString &one : translated) {
            QVERIFY2(!inEnglish.contains(one), qPrintable(one));
            QVERIFY2(!one.startsWith(text("qtn_")), qPrintable(one));
        }
    }
}

void TestPrompts::enablingAsksAccordingToFlightMode()
{
    FakeService manager(QDBusConnection::SystemBus, text("net.connman"));
    setFlightMode(manager, true);
    manager.start();
    const QStringList inFlight{text("Flight mode is on"), text("Switch on NFC while flight mode stays on?")};
    const Shown first(make<NfcEnableDialog>());
    QVERIFY(first.ready);
    QCOMPARE(shownTexts<MLabel>(first.dialog.data()), inFlight);
    QCOMPARE(shownTexts<MButton>(first.dialog.data()).size(), 2);

    setFlightMode(manager, false);
    const Shown second(make<NfcEnableDialog>());
    QVERIFY(second.ready);
    QCOMPARE(shownTexts<MLabel>(second.dialog.data()).value(0), text("Switch NFC on?"));
}

void TestPrompts::enablingDoesNotFollowLaterFlightMode()
{
    FakeService manager(QDBusConnection::SystemBus, text("net.connman"));
    setFlightMode(manager, false);
    manager.start();
    const Shown shown(make<NfcEnableDialog>());
    QVERIFY(shown.ready);
    const QStringList before = shownTexts<MLabel>(shown.dialog.data());
    manager.clearCalls();
    setFlightMode(manager, true);
    manager.emitSignal(text("/"), text("net.connman.Manager"), text("PropertyChanged"),
                       {text("OfflineMode"), QVariant::fromValue(QDBusVariant(true))});
    QCoreApplication::processEvents();
    QCOMPARE(shownTexts<MLabel>(shown.dialog.data()), before);
    QCOMPARE(manager.members(), QStringList());
}

void TestPrompts::enablingDoesNotAskForAModeThatIsKnown()
{
    FakeService manager(QDBusConnection::SystemBus, QStringLiteral("net.connman"));
    manager.start();
    const NfcEnableDialog usual(false);
    QCOMPARE(usual.MMessageBox::title(), qtTrId("qtn_nfc_enablenfc_tit"));
    QCOMPARE(usual.MMessageBox::text(), qtTrId("qtn_nfc_enablenfc_text"));
    const NfcEnableDialog inFlightMode(true);
    QCOMPARE(inFlightMode.MMessageBox::title(), qtTrId("qtn_nfc_start_flightmode_tit"));
    QCOMPARE(inFlightMode.MMessageBox::text(), qtTrId("qtn_nfc_start_flightmode"));
    QCOMPARE(manager.calls().size(), 0);
}

void TestPrompts::enablingAsksAsUsualWhenTheModeIsUnknown()
{
    FakeService manager(QDBusConnection::SystemBus, text("net.connman"));
    manager.fail(text("GetProperties"), text("net.connman.Error.Failed"), text("not now"));
    manager.start();
    // Once for the title and once for the text.
    for (int i = 0; i < 2; ++i)
        QTest::ignoreMessage(QtWarningMsg,
                             "OfflineMode: GetProperties returned error 'net.connman.Error.Failed': not now");
    const Shown shown(make<NfcEnableDialog>());
    QVERIFY(shown.ready);
    QCOMPARE(shownTexts<MLabel>(shown.dialog.data()).value(0), text("Switch NFC on?"));
}

void TestPrompts::errorTypesAreKnownToQt()
{
    const auto errors = QMetaEnum::fromType<NfcTagNotSupportedDialog::ErrorType>();
    QCOMPARE(errors.keyToValue("UnsupportedTagError"), 0);
    QCOMPARE(errors.keyToValue("EmptyTagError"), 1);
    QCOMPARE(errors.keyCount(), 2);
    QCOMPARE(int(NfcSharingSelectionDialog::ImageSelection), 0);
    QCOMPARE(int(NfcSharingSelectionDialog::ContactSelection), 1);
}

QTEST_MAIN(TestPrompts)
#include "tst_prompts.moc"
