// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <algorithm>
#include <memory>

#include <QImage>
#include <QNdefMessage>
#include <QTest>
#include <QTextLayout>

#include <MButton>
#include <MButtonModel>
#include <MDialog>
#include <MLabel>
#include <MSceneWindow>
#include <MWindow>
#include <NfcDeliveryDecision>
#include <NfcReplyOrder>

#include "catalogue.h"
#include "core/bluetoothrequest.h"
#include "core/tagquestion.h"
#include "hostileuris.h"
#include "publishedmessages.h"
#include "screen/dialogs.h"
#include "shownwidgets.h"

using ConnUi::NfcDeliveryDecision;
using ConnUi::NfcLink;
using ConnUi::NfcTagContent;
using ConnUi::NfcTagRecord;

namespace {

constexpr QSize phone(480, 854);

QNdefRecord record(QNdefRecord::TypeNameFormat format, const QByteArray &type, const QByteArray &payload)
{
    QNdefRecord record;
    record.setTypeNameFormat(format);
    record.setType(type);
    record.setPayload(payload);
    return record;
}

Question questionAbout(const QNdefRecord &record)
{
    const NfcTagContent content(QNdefMessage(record).toByteArray());
    const bool isLink = content.records().constFirst().kind() == NfcTagRecord::Uri;
    NfcDeliveryDecision decision(content);
    decision.setHandlers({QStringLiteral("viewer")});
    decision.setDefaultApplication(isLink ? QStringLiteral("dialer") : QString());
    return tagQuestion(decision);
}

Question questionAboutUri(const QString &uri)
{
    return questionAbout(record(QNdefRecord::NfcRtd, "U", QByteArray(1, 0) + uri.toUtf8()));
}

Question questionAboutPairing(const QString &name)
{
    const auto order = std::make_shared<ConnUi::NfcReplyOrder>();
    BluetoothRequest request(Request::Pairing, QStringLiteral("/a"),
                             {QStringLiteral("00:16:41:7A:0F:11"), name, 0x240404, {}},
                             {order, QStringLiteral("/a"), [] {}, [] {}});
    Question asked;
    QObject::connect(&request, &Request::asks, [&asked](const Question &question) { asked = question; });
    request.begin();
    return asked;
}

/** A question on the screen of a phone. */
class OnScreen
{
public:
    explicit OnScreen(const Question &question) : dialog(newDialog(question))
    {
        window.resize(phone);
        dialog->appear(&window, MSceneWindow::KeepWhenDone);
        window.show();
        if (!QTest::qWaitForWindowExposed(&window))
            qFatal("No window");
    }

    QList<MLabel *> labels() const { return shownWidgets<MLabel>(dialog.get()); }

    // The texts of ours and of others that stand whole on the screen, above the buttons.
    QStringList readable() const
    {
        QStringList texts;
        const QRect screen(QPoint(), phone);
        const int buttons = place(shownWidgets<MButton>(dialog.get()).constFirst()).top();
        for (const MLabel *label : labels())
            if (screen.contains(place(label)) && place(label).bottom() < buttons)
                texts.append(label->drawnText().split(QLatin1Char('\n')));
        return texts;
    }

    QStringList buttons() const
    {
        QStringList texts;
        const QList<MButtonModel *> models = dialog->buttons();
        for (const MButtonModel *button : models)
            texts.append(button->text());
        return texts;
    }

    QRect place(const MWidget *widget) const
    {
        return window.mapFromScene(widget->mapRectToScene(widget->rect())).boundingRect();
    }

    QImage look(const MWidget *widget) { return window.grab(place(widget)).toImage(); }

    MDialog *operator->() const { return dialog.get(); }

private:
    MWindow window;
    std::unique_ptr<MDialog> dialog;
};

} // namespace

class TestDialogs : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(QStringLiteral(".*"))); }

    void linkSaysWhereItLeads_data();
    void linkSaysWhereItLeads();
    void longLinkKeepsItsHostOnTheScreen();
    void serviceCodeCannotBeCalled_data();
    void serviceCodeCannotBeCalled();
    void messageSaysWhatIsNotSeen_data();
    void messageSaysWhatIsNotSeen();
    void nameLeavesOurSentencesAlone_data();
    void nameLeavesOurSentencesAlone();
    void textOfATagIsForeign();
    void publishedMessageIsSetApartFromOurWords_data();
    void publishedMessageIsSetApartFromOurWords();
    void questionHasTheWordsOfItsDialog_data();
    void questionHasTheWordsOfItsDialog();
    void otherContentIsOpened();

private:
    const Catalogue catalogue;
};

void TestDialogs::linkSaysWhereItLeads_data()
{
    QTest::addColumn<QString>("uri");
    QTest::addColumn<QString>("host");
    QTest::addColumn<int>("suspicion");
    for (const LinkRow &row : links)
        QTest::newRow(row.uri) << QString::fromUtf8(row.uri) << QString::fromUtf8(row.host)
                               << int(row.suspicion);
}

void TestDialogs::linkSaysWhereItLeads()
{
    QFETCH(QString, uri);
    QFETCH(QString, host);
    QFETCH(int, suspicion);
    const OnScreen question(questionAboutUri(uri));
    const QStringList readable = question.readable();
    QCOMPARE(readable.constFirst(), QStringLiteral("Web link on tag"));
    const QStringList leads = readable.filter(QStringLiteral("Leads to "));
    QCOMPARE(leads.size(), host.isEmpty() ? 0 : 1);
    const QString domain = NfcLink(uri).domain();
    if (!leads.isEmpty())
        QVERIFY2(leads.constFirst().endsWith(domain) || leads.constFirst().endsWith(domain + QChar(0x2069)) ||
                     leads.constFirst().endsWith(QLatin1Char('.')),
                 qPrintable(leads.constFirst()));
    QCOMPARE(!readable.filter(QStringLiteral("This link is suspicious")).isEmpty(),
             suspicion != NfcLink::NotSuspicious);
    QCOMPARE(question.buttons(), (QStringList{QStringLiteral("View"), QStringLiteral("Discard")}));
}

void TestDialogs::longLinkKeepsItsHostOnTheScreen()
{
    const QString front = QStringLiteral("bank.example.").repeated(15);
    const OnScreen question(questionAboutUri(QStringLiteral("http://") + front + QStringLiteral("evil.org/") +
                                             QString(4000, QLatin1Char('a'))));
    const QStringList readable = question.readable();
    QVERIFY2(readable.contains(QStringLiteral("Leads to …mple.bank.example.bank.example.evil.org")),
             qPrintable(readable.join(QLatin1Char('|'))));
    QVERIFY(readable.contains(QStringLiteral("Not encrypted")));
}

void TestDialogs::serviceCodeCannotBeCalled_data()
{
    QTest::addColumn<QString>("uri");
    QTest::addColumn<bool>("isPlain");
    QTest::addColumn<bool>("isCode");
    for (const NumberRow &row : numbers)
        QTest::newRow(row.uri) << QString::fromUtf8(row.uri) << row.isPlain << row.isCode;
}

void TestDialogs::serviceCodeCannotBeCalled()
{
    QFETCH(QString, uri);
    QFETCH(bool, isPlain);
    QFETCH(bool, isCode);
    if (!isPlain)
        QTest::ignoreMessage(QtWarningMsg,
                             "NfcTagReadPermissionDialog: No desktop file provided for application viewer");
    const OnScreen question(questionAboutUri(uri));
    QCOMPARE(!question.readable().filter(QStringLiteral("This is a service code")).isEmpty(), isCode);
    QCOMPARE(question.buttons().contains(QStringLiteral("Call")), isPlain);
}

void TestDialogs::messageSaysWhatIsNotSeen_data()
{
    QTest::addColumn<QString>("uri");
    QTest::addColumn<int>("receivers");
    QTest::addColumn<bool>("isWhole");
    for (const MessageRow &row : messages)
        QTest::newRow(row.uri) << QString::fromUtf8(row.uri) << int(row.receivers) << row.isWhole;
}

void TestDialogs::messageSaysWhatIsNotSeen()
{
    QFETCH(QString, uri);
    QFETCH(int, receivers);
    QFETCH(bool, isWhole);
    const OnScreen question(questionAboutUri(uri));
    const QStringList readable = question.readable();
    QCOMPARE(readable.contains(QStringLiteral("This message goes to %1 receivers.").arg(receivers)),
             receivers > 1);
    QCOMPARE(readable.contains(QStringLiteral("Not all of this message is shown.")), !isWhole);
    QCOMPARE(question.buttons(),
             (QStringList{QStringLiteral("Send"), QStringLiteral("Discard"), QStringLiteral("View")}));
}

void TestDialogs::nameLeavesOurSentencesAlone_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("lines") << QStringLiteral("Headset\n\n\nTrusted by your bank\n");
    QTest::newRow("length variants") << QStringLiteral("Headset\u009cx");
    QTest::newRow("override") << QStringLiteral("\u202etesdaeH");
    QTest::newRow("embeddings") << QStringLiteral("\u202b\u202a\u202b");
    QTest::newRow("isolates") << QStringLiteral("\u2067\u2067");
    QTest::newRow("end of an isolate") << QStringLiteral("\u2069\u2069 x");
    QTest::newRow("right to left") << QStringLiteral("\u05e9\u05dc\u05d5\u05dd");
    QTest::newRow("markup") << QStringLiteral("<h1>Headset</h1>");
    QTest::newRow("placeholder") << QStringLiteral("%1");
    QTest::newRow("long") << QString(1000, QLatin1Char('x'));
    QTest::newRow("marks") << QStringLiteral("x") + QString(1000, QChar(0x0301));
    QTest::newRow("blanks") << QString(1000, QChar(0x2003));
}

// Returns where each character of a line begins, from its left.
QList<qreal> placesIn(const QString &text)
{
    QTextLayout layout(text);
    QTextOption fromTheLeft(Qt::AlignLeft);
    fromTheLeft.setTextDirection(Qt::LeftToRight);
    layout.setTextOption(fromTheLeft);
    layout.beginLayout();
    const QTextLine line = layout.createLine();
    layout.endLayout();
    QList<qreal> places;
    for (int i = 0; i < text.size(); ++i)
        places.append(line.cursorToX(i));
    return places;
}

// The sentences of ours are drawn, to the pixel, as they are beside a plain name.
void TestDialogs::nameLeavesOurSentencesAlone()
{
    QFETCH(QString, name);
    OnScreen plain(questionAboutPairing(QStringLiteral("Headset")));
    OnScreen hostile(questionAboutPairing(name));
    const auto ours = [](OnScreen &question) {
        QList<QImage> looks;
        for (const MLabel *label : question.labels())
            if (label->text().startsWith(QStringLiteral("After that")))
                looks.append(question.look(label));
        for (const MButton *button : shownWidgets<MButton>(question.operator->()))
            looks.append(question.look(button));
        return looks;
    };
    QCOMPARE(ours(plain).size(), 3);
    QVERIFY(ours(plain) == ours(hostile));
    const QString title = hostile->title();
    QVERIFY2(title.startsWith(QStringLiteral("Pair with ")) && title.endsWith(QLatin1Char('?')) &&
                 !title.contains(QLatin1Char('\n')),
             qPrintable(title));
    // The name stays between our words: they begin the line, and the question mark ends it.
    const QList<qreal> places = placesIn(title);
    const qsizetype before = QStringLiteral("Pair with ").size();
    QCOMPARE(places.first(before), placesIn(plain->title()).first(before));
    QCOMPARE(*std::max_element(places.cbegin(), places.cend()), places.constLast());
}

void TestDialogs::textOfATagIsForeign()
{
    const OnScreen text(questionAbout(record(QNdefRecord::NfcRtd, "T",
                                             "\x02"
                                             "enone\u202etwo\u009cthree")));
    QVERIFY(text.readable().contains(QStringLiteral("one\ufffdtwo\ufffdthree")));
}

void TestDialogs::publishedMessageIsSetApartFromOurWords_data()
{
    QTest::addColumn<QByteArray>("hex");
    QTest::addColumn<QString>("ours");
    QTest::addColumn<QString>("theirs");
    for (const PublishedMessage &message : publishedMessages)
        if (QByteArrayView(message.outcome).startsWith("asked"))
            QTest::newRow(message.name) << QByteArray(message.hex) << QString::fromUtf8(message.ours)
                                        << QString::fromUtf8(message.theirs);
}

void TestDialogs::publishedMessageIsSetApartFromOurWords()
{
    QFETCH(QByteArray, hex);
    QFETCH(QString, ours);
    QFETCH(QString, theirs);
    NfcDeliveryDecision decision{NfcTagContent(QByteArray::fromHex(hex))};
    decision.setHandlers({QStringLiteral("a")});
    decision.setDefaultApplication(QStringLiteral("d"));
    if (decision.question() == NfcDeliveryDecision::OtherContent)
        QTest::ignoreMessage(QtWarningMsg,
                             "NfcTagReadPermissionDialog: No desktop file provided for application a");
    const OnScreen question(tagQuestion(decision));
    QStringList ourWords;
    QStringList theirWords;
    for (const MLabel *label : question.labels())
        (label->isForeignText() ? theirWords : ourWords).append(label->drawnText().split(QLatin1Char('\n')));
    ourWords.append(question.buttons());
    QCOMPARE(ourWords.join(QLatin1Char('|')), ours);
    QCOMPARE(theirWords.join(QLatin1Char('|')), theirs);
}

void TestDialogs::questionHasTheWordsOfItsDialog_data()
{
    QTest::addColumn<Question>("question");
    QTest::newRow("link") << questionAboutUri(QStringLiteral("https://example.org/"));
    QTest::newRow("number") << questionAboutUri(QStringLiteral("tel:+491711234567"));
    QTest::newRow("message") << questionAboutUri(QStringLiteral("sms:+491711234567?body=hello"));
    QTest::newRow("text") << questionAbout(record(QNdefRecord::NfcRtd, "T", "\2entext"));
    QTest::newRow("card") << questionAbout(
        record(QNdefRecord::Mime, "text/vcard", "BEGIN:VCARD\r\nVERSION:3.0\r\nFN:A\r\nEND:VCARD\r\n"));
}

// A terminal shows them as text.
void TestDialogs::questionHasTheWordsOfItsDialog()
{
    QFETCH(Question, question);
    const OnScreen shown(question);
    QVERIFY(shown.readable().contains(question.title));
    QCOMPARE(question.applications, QStringList());
    QStringList named{question.yes, question.direct, question.no};
    named.removeAll(QString());
    QStringList buttons = shown.buttons();
    named.sort();
    buttons.sort();
    QCOMPARE(named, buttons);
}

// Where the application is known, the dialog says so as well.
void TestDialogs::otherContentIsOpened()
{
    const Question question = questionAbout(record(QNdefRecord::Mime, "image/png", "image"));
    QCOMPARE(question.title, QStringLiteral("Tag content"));
    QCOMPARE(question.applications, QStringList(QStringLiteral("viewer")));
    QCOMPARE(question.yes, QStringLiteral("Open"));
    QCOMPARE(question.direct, QString());
    QCOMPARE(question.no, QStringLiteral("Discard"));
}

QTEST_MAIN(TestDialogs)
#include "tst_dialogs.moc"
