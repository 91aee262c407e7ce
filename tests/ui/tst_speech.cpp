// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <functional>
#include <memory>

#include <QApplication>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTemporaryFile>
#include <QtTest>

#include <DialogHelperWidget>
#include <MButtonModel>
#include <MMessageBox>
#include <MWindow>
#include <NfcApplicationSelectionDialog>
#include <NfcEnableDialog>
#include <NfcFileReceiveSheet>
#include <NfcFileSendDialog>
#include <NfcFileSendPendingDialog>
#include <NfcOverlay>
#include <NfcPairingDialog>
#include <NfcSettingsView>
#include <NfcSharingPermissionDialog>
#include <NfcSharingSelectionDialog>
#include <NfcTagNotSupportedDialog>
#include <NfcTagReadPermissionDialog>
#include <SimpleCheckBoxLabel>
#include <SimpleSheet>
#include <URINDEFRecord>

#include "applicationsfolder.h"
#include "catalogue.h"
#include "screenreader.h"

using namespace ConnUi;

namespace {

using Make = std::function<MDialog *()>;

constexpr unsigned int headset = 0x240404;

// The spoken texts of a dialog: its texts by their ids, and what the tag or the device says.
struct Spoken
{
    Make make;
    QString name;
    QStringList description;
    QStringList buttons;
};

Make uri(const QByteArray &uri, const QString &description)
{
    return [=] {
        const URINDEFRecord record('\0' + uri);
        return new NfcTagReadPermissionDialog(&record, description);
    };
}

MDialog *newCard()
{
    QTemporaryFile card;
    if (card.open())
        card.write("BEGIN:VCARD\r\nVERSION:3.0\r\nN:Virtanen;Anna;;;\r\nEND:VCARD\r\n");
    card.close();
    return new NfcTagReadPermissionDialog(QStringLiteral("text/x-vcard"), QFileInfo(card.fileName()));
}

QString text(const char *id)
{
    return qtTrId(id);
}

// The longest variant, which is what is spoken.
QString longest(const char *id)
{
    return text(id).section(QChar(0x9c), 0, 0);
}

} // namespace

Q_DECLARE_METATYPE(Spoken)

class TestSpeech : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void cleanupTestCase();

    void everyQuestionIsHeardAndAnswered_data();
    void everyQuestionIsHeardAndAnswered();
    void applicationIsChosen();
    void settingsRowsAreSwitched();
    void settingsTellThatNfcStarts();
    void arrivingFileIsFollowed();
    void bannerIsAnnounced();

private:
    std::unique_ptr<Catalogue> texts;
    std::unique_ptr<ApplicationsFolder> applications;
    std::unique_ptr<ScreenReader> reader;
    std::unique_ptr<MWindow> window;
};

void TestSpeech::initTestCase()
{
    texts = std::make_unique<Catalogue>();
    applications = std::make_unique<ApplicationsFolder>();
    applications->install(QStringLiteral("viewer"), QStringLiteral("Tag viewer"),
                          QStringLiteral("icon-m-service-nfc"));
    applications->install(QStringLiteral("notes"), QStringLiteral("Notes"),
                          QStringLiteral("icon-m-service-nfc"));
    reader = std::make_unique<ScreenReader>();
}

void TestSpeech::init()
{
    failOnWarningsExceptOfThingsThatAreGone();
    window = std::make_unique<MWindow>();
    window->show();
    window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(window.get()));
    reader->listen();
}

void TestSpeech::cleanup()
{
    window.reset();
}

void TestSpeech::cleanupTestCase()
{
    reader.reset();
    applications.reset();
    texts.reset();
}

void TestSpeech::everyQuestionIsHeardAndAnswered_data()
{
    QTest::addColumn<Spoken>("spoken");
    const QString view = text("qtn_nfc_tags_view");
    const QString discard = text("qtn_nfc_tags_discard");
    const QString ok = QStringLiteral("OK");
    const QStringList yesOrNo{QStringLiteral("Yes"), QStringLiteral("No")};
    const QStringList cancel{text("qtn_comm_cancel")};
    const QString menu = QStringLiteral("Menu of the day");
    const QString link = QStringLiteral("https://www.example.com/menu?table=12");

    QTest::newRow("text on a tag") << Spoken{
        [] { return new NfcTagReadPermissionDialog(QStringLiteral("Open from 9 to 18.")); },
        text("qtn_nfc_tags_text_tit"),
        {QStringLiteral("Open from 9 to 18.")},
        {view, discard}};
    QTest::newRow("web link") << Spoken{
        uri(link.toUtf8(), menu), text("qtn_nfc_tags_url_tit"), {menu, link}, {view, discard}};
    QTest::newRow("phone number") << Spoken{uri("tel:+358501234567", QString()),
                                            text("qtn_nfc_tags_contact_tit"),
                                            {QStringLiteral("+358501234567")},
                                            {text("qtn_comm_call"), view, discard}};
    QTest::newRow("text message") << Spoken{
        uri("sms:+358501234567?body=Zone%20A", QString()),
        text("qtn_nfc_tags_sms_tit"),
        {text("qtn_nfc_tags_sms_receiver").arg(QStringLiteral("+358501234567")), QStringLiteral("Zone A")},
        {text("qtn_comm_send"), view, discard}};
    QTest::newRow("store link") << Spoken{
        [] { return new NfcTagReadPermissionDialog(QStringLiteral("ruvostore:link"), QString()); },
        text("qtn_nfc_tags_store_tit"),
        {},
        {view, discard}};
    QTest::newRow("contact card") << Spoken{
        newCard, text("qtn_nfc_tags_contact_tit"), {QStringLiteral("Anna Virtanen")}, {view, discard}};
    QTest::newRow("application") << Spoken{
        [] {
            return new NfcTagReadPermissionDialog(
                QStringList{QStringLiteral("viewer"), QStringLiteral("notes")}, QString());
        },
        text("qtn_nfc_tags_gen_tit"),
        {text("qtn_nfc_tags_app_txt").arg(QStringLiteral("Tag viewer"))},
        {text("qtn_nfc_tags_open"), longest("qtn_nfc_tags_change_app_open"), discard}};
    QTest::newRow("pairing") << Spoken{[] { return new NfcPairingDialog(headset); },
                                       text("qtn_nfc_connect_tit"),
                                       {text("qtn_nfc_connect_text")},
                                       {text("qtn_comm_command_yes"), text("qtn_comm_command_no")}};
    QTest::newRow("switching on") << Spoken{[] { return new NfcEnableDialog; },
                                            text("qtn_nfc_enablenfc_tit"),
                                            {text("qtn_nfc_enablenfc_text")},
                                            yesOrNo};
    QTest::newRow("touch to share") << Spoken{[] { return new NfcFileSendDialog; },
                                              text("qtn_nfc_touchtoshare_tit"),
                                              {text("qtn_nfc_touchtoshare_img_text")},
                                              cancel};
    QTest::newRow("waiting") << Spoken{[] { return new NfcFileSendPendingDialog; },
                                       text("qtn_nfc_waiting_dialog_tit"),
                                       {text("qtn_nfc_waiting_dialog_text")},
                                       cancel};
    QTest::newRow("what to share") << Spoken{
        [] { return new NfcSharingSelectionDialog(NfcSharingSelectionDialog::ImageSelection); },
        text("qtn_nfc_selecttoshare_tit"),
        {text("qtn_nfc_selecttoshare_img_text")},
        {text("qtn_comm_command_continue"), QStringLiteral("Cancel")}};
    QTest::newRow("sharing") << Spoken{
        [] { return new NfcSharingPermissionDialog({QStringLiteral("/home/user/minutes.pdf")}); },
        text("qtn_nfc_share_tit"),
        {text("qtn_nfc_share_img").arg(QStringLiteral("minutes.pdf"))},
        yesOrNo};
    QTest::newRow("empty tag") << Spoken{
        [] { return new NfcTagNotSupportedDialog(NfcTagNotSupportedDialog::EmptyTagError); },
        text("qtn_nfc_tags_empty_tit"),
        {text("qtn_nfc_tags_empty_text")},
        {ok}};
    QTest::newRow("unreadable tag") << Spoken{
        [] { return new NfcTagNotSupportedDialog(NfcTagNotSupportedDialog::UnsupportedTagError); },
        text("qtn_nfc_tags_fail_tit"),
        {text("qtn_nfc_tags_fail_text")},
        {ok}};
}

void TestSpeech::everyQuestionIsHeardAndAnswered()
{
    QFETCH(Spoken, spoken);
    const auto dialog = std::unique_ptr<MDialog>(spoken.make());
    dialog->appear(window.get());
    QVERIFY(reader->hears(QStringLiteral("object:state-changed:focused"), spoken.name));

    const SpokenNode tree = reader->tree();
    const SpokenNode *heard = tree.find("dialog");
    QVERIFY(heard);
    QCOMPARE(heard->name, spoken.name);
    // Foreign text and numbers are isolated so that they stay by themselves.
    QString description = heard->description;
    description.remove(QRegularExpression(QStringLiteral("[\\x{2066}\\x{2068}\\x{2069}]")));
    QCOMPARE(description, spoken.description.join(QLatin1Char('\n')));
    QCOMPARE(heard->names("push button"), spoken.buttons);
    QVERIFY(heard->is("modal"));

    const QList<MButtonModel *> models = dialog->buttons();
    QCOMPARE(models.size(), spoken.buttons.size());
    for (const MButtonModel *model : models) {
        // Its shorter variants follow.
        const QString button = model->text().section(M::lengthVariantSeparator, 0, 0);
        QSignalSpy pressed(model, &MButtonModel::clicked);
        QVERIFY2(reader->press(button), qPrintable(button));
        QTRY_COMPARE(pressed.count(), 1);
        // The choice of another application stands above the question.
        if (dialog->sceneManager()) {
            QTRY_VERIFY(reader->tree().find("dialog", text("qtn_nfc_tags_selapp_tit")));
            continue;
        }
        dialog->appear(window.get());
    }
}

void TestSpeech::applicationIsChosen()
{
    NfcApplicationSelectionDialog dialog({QStringLiteral("viewer"), QStringLiteral("notes")}, 0);
    dialog.appear(window.get());
    const SpokenNode tree = reader->tree();
    QCOMPARE(tree.find("dialog")->name, text("qtn_nfc_tags_selapp_tit"));
    QCOMPARE(tree.find("list")->names("list item"),
             QStringList({QStringLiteral("Tag viewer"), QStringLiteral("Notes")}));
    QVERIFY(tree.find("list item", QStringLiteral("Tag viewer"))->is("selected"));
    QVERIFY(reader->press(QStringLiteral("Notes")));
    QTRY_VERIFY(!dialog.sceneManager());
    QCOMPARE(dialog.selectedApplication(), QStringLiteral("notes"));
}

void TestSpeech::settingsRowsAreSwitched()
{
    SimpleSheet page;
    page.setTitle(text("qtn_nfc_settings_tit"));
    page.setRejectButtonText(text("qtn_comm_command_done"));
    page.setCentralWidget(new DialogHelperWidget(new NfcSettingsView(nullptr)));
    page.appear(window.get());
    const SpokenNode tree = reader->tree();
    QCOMPARE(tree.find("panel")->name, text("qtn_nfc_settings_tit"));
    const QStringList rows{longest("qtn_nfc_fullname"), longest("qtn_nfc_sett_confs")};
    QCOMPARE(tree.names("check box"), rows);
    for (const QString &row : rows) {
        QVERIFY(!tree.find("check box", row)->is("checked"));
        QVERIFY(reader->press(row));
        QVERIFY(reader->hears(QStringLiteral("object:state-changed:checked"), row));
        QVERIFY(reader->tree().find("check box", row)->is("checked"));
    }
    QVERIFY(reader->press(text("qtn_comm_command_done")));
    QTRY_VERIFY(!page.sceneManager());
}

void TestSpeech::settingsTellThatNfcStarts()
{
    SimpleSheet page;
    auto *button = new MButton;
    auto *row = new SimpleCheckBoxLabel(button, text("qtn_nfc_fullname"), MButton::switchType);
    page.setCentralWidget(row);
    page.appear(window.get());
    QVERIFY(!reader->tree().find("progress bar"));
    row->setShowProgressIndicator(true);
    const SpokenNode tree = reader->tree();
    QVERIFY(tree.find("progress bar"));
    QVERIFY(tree.find("progress bar")->is("busy"));
    QCOMPARE(tree.find("progress bar")->name, longest("qtn_nfc_fullname"));
}

void TestSpeech::arrivingFileIsFollowed()
{
    NfcFileReceiveSheet sheet;
    sheet.setRemoteDeviceName(QStringLiteral("Anna's phone"));
    sheet.setFileName(QStringLiteral("Holiday.jpeg"));
    sheet.setProgress(QString(), 2000000, 5000000);
    sheet.appear(window.get());
    const SpokenNode tree = reader->tree();
    QCOMPARE(tree.find("panel")->name, text("qtn_nfc_receive_tit"));
    const QStringList labels = tree.names("label");
    QVERIFY(labels.contains(text("qtn_nfc_receive_text").arg(QStringLiteral("Anna's phone"))));
    QVERIFY(labels.contains(QStringLiteral("Holiday.jpeg")));
    QVERIFY(labels.contains(QStringLiteral("2 of 5 MB")));
    QVERIFY(labels.filter(QStringLiteral(" remaining")).isEmpty());
    QCOMPARE(tree.find("progress bar")->name, text("qtn_nfc_receive_tit"));
    QCOMPARE(tree.find("progress bar")->value, QList<double>({0, 5, 2}));
    sheet.setProgress(QString(), 3000000, 5000000);
    QVERIFY(reader->hears(QStringLiteral("object:property-change:accessible-value"),
                          text("qtn_nfc_receive_tit")));
    // The time that is left is known once some has passed, and has no colon in it.
    const auto remaining = [this] {
        return reader->tree().names("label").filter(QStringLiteral(" remaining"));
    };
    quint64 received = 3000000;
    QTRY_VERIFY((sheet.setProgress(QString(), ++received, 5000000), remaining().size() == 1));
    static const QRegularExpression inWords(QStringLiteral("^\\d+ (hour|minute|second)[^:]* remaining$"));
    QVERIFY2(remaining().constFirst().contains(inWords), qUtf8Printable(remaining().constFirst()));

    QSignalSpy canceled(&sheet, &NfcFileReceiveSheet::transferCanceled);
    QVERIFY(reader->press(text("qtn_comm_cancel")));
    QTRY_COMPARE(canceled.count(), 1);
    QVERIFY(reader->press(text("qtn_comm_command_done")));
    QTRY_VERIFY(!sheet.sceneManager());
}

void TestSpeech::bannerIsAnnounced()
{
    NfcOverlay overlay;
    overlay.showIndication();
    QVERIFY(reader->hears(QStringLiteral("object:announcement"), text("qtn_nfc_touched")));
    // An announcement does not take the focus.
    QVERIFY(window->isActiveWindow());
}

QTEST_MAIN(TestSpeech)

#include "tst_speech.moc"
