// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <QDir>
#include <QNdefMessage>
#include <QNdefNfcTextRecord>
#include <QTemporaryDir>
#include <QTest>

#include <MButton>
#include <MLabel>
#include <MWindow>

#include "catalogue.h"
#include "shownwidgets.h"
#include "tagpage.h"

class TestTagPage : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();

    void textIsShown();
    void whatOthersWroteIsDrawnAsForeignText();
    void dataIsShownByItsBytes();
    void contactCardIsSavedOnce();
    void cardThatCannotBeSavedMayBeTriedAgain();
    void emptyPageSaysSo();
    void newMessageReplacesTheOldOne();
    void longMessageIsCut();
    void pageOffersNothingButToCloseIt();

private:
    QStringList texts() const { return shownTexts<MLabel>(page.get()); }
    MButton *button(const QString &text) const;

    std::unique_ptr<Catalogue> catalogue;
    std::unique_ptr<QTemporaryDir> home;
    std::unique_ptr<MWindow> window;
    std::unique_ptr<TagPage> page;
};

namespace {

QNdefRecord mime(const QByteArray &type, const QByteArray &payload)
{
    QNdefRecord record;
    record.setTypeNameFormat(QNdefRecord::Mime);
    record.setType(type);
    record.setPayload(payload);
    return record;
}

QNdefRecord text(const QString &text)
{
    QNdefNfcTextRecord record;
    record.setText(text);
    return record;
}

QByteArray message(const QList<QNdefRecord> &records)
{
    return QNdefMessage(records).toByteArray();
}

const QByteArray card =
    "BEGIN:VCARD\r\nVERSION:3.0\r\nN:Byron;Ada;;;\r\nFN:Ada Byron\r\nTEL:+1 555\r\nEND:VCARD\r\n";

} // namespace

void TestTagPage::initTestCase()
{
    catalogue = std::make_unique<Catalogue>();
}

void TestTagPage::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
    home = std::make_unique<QTemporaryDir>();
    qputenv("XDG_DATA_HOME", QFile::encodeName(home->path()));
    window = std::make_unique<MWindow>();
    page = std::make_unique<TagPage>();
    page->appear(window.get());
    window->show();
}

void TestTagPage::cleanup()
{
    page.reset();
    window.reset();
}

MButton *TestTagPage::button(const QString &text) const
{
    for (MButton *button : shownWidgets<MButton>(page.get()))
        if (button->text() == text)
            return button;
    return nullptr;
}

void TestTagPage::textIsShown()
{
    page->setMessage(message({text(QStringLiteral("Welcome"))}));
    QTRY_COMPARE(texts(), (QStringList{QStringLiteral("On the tag"), QStringLiteral("Text"),
                                       QStringLiteral("Welcome")}));
}

void TestTagPage::whatOthersWroteIsDrawnAsForeignText()
{
    const QString hostile = QStringLiteral("evil\u009Cshort\u202E\n\n\n\nend");
    QNdefRecord link;
    link.setTypeNameFormat(QNdefRecord::Uri);
    link.setType("tel:" + hostile.toUtf8());
    page->setMessage(message({text(hostile), link, mime("a/" + hostile.toUtf8(), "1"),
                              mime("text/vcard", "BEGIN:VCARD\r\nFN:" + hostile.toUtf8() +
                                                     "\r\nTEL:" + hostile.toUtf8() + "\r\nEND:VCARD\r\n")}));
    int foreign = 0;
    for (const MLabel *label : shownWidgets<MLabel>(page.get())) {
        const bool isHostile = label->text().contains(QStringLiteral("evil"));
        QVERIFY2(label->isForeignText() || !isHostile, qUtf8Printable(label->text()));
        foreign += isHostile;
    }
    QCOMPARE(foreign, 5);
}

void TestTagPage::dataIsShownByItsBytes()
{
    page->setMessage(message({mime("application/x-notes", QByteArray::fromHex("00ff41"))}));
    QTRY_COMPARE(texts(), (QStringList{QStringLiteral("On the tag"), QStringLiteral("Data"),
                                       QStringLiteral("Type"), QStringLiteral("application/x-notes"),
                                       QStringLiteral("First bytes"), QStringLiteral("00 ff 41")}));
}

void TestTagPage::contactCardIsSavedOnce()
{
    page->setMessage(message({mime("text/vcard", card)}));
    QTRY_COMPARE(texts(), (QStringList{QStringLiteral("On the tag"), QStringLiteral("Contact"),
                                       QStringLiteral("Ada Byron"), QStringLiteral("Phone"),
                                       QStringLiteral("+1 555")}));
    MButton *save = button(QStringLiteral("Save contact"));
    QVERIFY(save);
    save->click();
    QCOMPARE(save->text(), QStringLiteral("Saved"));
    QVERIFY(!save->isEnabled());
    save->click();
    const QDir contacts(home->filePath(QStringLiteral("contacts")));
    QCOMPARE(contacts.entryList(QDir::Files), QStringList{QStringLiteral("Ada-Byron.vcf")});
}

void TestTagPage::cardThatCannotBeSavedMayBeTriedAgain()
{
    QFile inTheWay(home->filePath(QStringLiteral("contacts")));
    QVERIFY(inTheWay.open(QFile::WriteOnly));
    page->setMessage(message({mime("text/vcard", card)}));
    MButton *save = button(QStringLiteral("Save contact"));
    QVERIFY(save);
    QTest::ignoreMessage(QtWarningMsg,
                         QRegularExpression(QStringLiteral("nfc-viewer: cannot write .*Ada-Byron.vcf: .*")));
    save->click();
    QCOMPARE(save->text(), QStringLiteral("Could not be saved"));
    QVERIFY(inTheWay.remove());
    save->click();
    QCOMPARE(save->text(), QStringLiteral("Saved"));
}

void TestTagPage::emptyPageSaysSo()
{
    const QStringList nothing = {QStringLiteral("On the tag"), QStringLiteral("There is nothing to show.")};
    QTRY_COMPARE(texts(), nothing);
    QTest::ignoreMessage(QtWarningMsg, "Unexpected end of message");
    page->setMessage(QByteArray::fromHex("d101"));
    QTRY_COMPARE(texts(), nothing);
}

void TestTagPage::newMessageReplacesTheOldOne()
{
    page->setMessage(message({text(QStringLiteral("old"))}));
    page->setMessage(message({text(QStringLiteral("new"))}));
    QTRY_COMPARE(texts(),
                 (QStringList{QStringLiteral("On the tag"), QStringLiteral("Text"), QStringLiteral("new")}));
}

void TestTagPage::longMessageIsCut()
{
    QList<QNdefRecord> records = {text(QString(30000, QLatin1Char('a'))),
                                  mime("application/x-notes", QByteArray(300, 'x'))};
    records.resize(60, text(QStringLiteral("b")));
    page->setMessage(message(records));
    const QStringList shown = texts();
    QVERIFY(shown.contains(QString(20000, QLatin1Char('a')) + QStringLiteral("…")));
    QVERIFY(shown.contains(QStringLiteral("78 ").repeated(256) + QStringLiteral("…")));
    QCOMPARE(shown.count(QStringLiteral("b")), 48);
    QCOMPARE(shown.constLast(), QStringLiteral("Not shown here: 10 more"));
}

// It dials nothing, sends nothing and opens nothing.
void TestTagPage::pageOffersNothingButToCloseIt()
{
    QNdefRecord number;
    number.setTypeNameFormat(QNdefRecord::Uri);
    number.setType("tel:+1");
    page->setMessage(message({number, text(QStringLiteral("https://a.org"))}));
    QTRY_COMPARE(shownTexts<MButton>(page.get()), QStringList{QStringLiteral("Close")});
}

QTEST_MAIN(TestTagPage)
#include "tst_tagpage.moc"
