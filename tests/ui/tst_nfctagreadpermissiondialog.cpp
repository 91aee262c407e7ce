// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <algorithm>
#include <ctime>
#include <functional>

#include <QItemSelectionModel>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QtTest>

#include <MButton>
#include <MButtonModel>
#include <MImageWidget>
#include <MLabel>
#include <MList>
#include <MListItem>
#include <MSceneManager>
#include <MWindow>
#include <NfcApplicationSelectionDialog>
#include <NfcTagReadPermissionDialog>
#include <URINDEFRecord>

#include "applicationsfolder.h"
#include "catalogue.h"
#include "shownwidgets.h"
#include "ui/nfctagreadpermissiondialog_p.h"

using namespace ConnUi;
using namespace Qt::StringLiterals;

namespace {

using Make = std::function<NfcTagReadPermissionDialog *()>;

struct Line
{
    QString text;
    QString style;

    bool operator==(const Line &) const = default;
};

struct Button
{
    QString text;
    int role;
    int code;

    bool operator==(const Button &) const = default;
};

char *toString(const Line &line)
{
    return QTest::toString(line.style + u": "_s + line.text);
}

char *toString(const Button &button)
{
    return QTest::toString(u"%1, role %2, code %3"_s.arg(button.text).arg(button.role).arg(button.code));
}

// What a person sees of a dialog.
struct Content
{
    QList<Line> lines;
    QString icon;
    QList<Button> buttons;
    bool directAction = false;
    QString application = {};
};

constexpr char16_t embedding = 0x202a;
constexpr char16_t pop = 0x202c;

const QString title = u"CommonQueryTitle"_s;
const QString query = u"CommonQueryText"_s;
const QString subTitle = u"CommonSubTitleInverted"_s;

const Button view{u"View"_s, M::YesRole, M::YesButton};
const Button open{u"Open"_s, M::YesRole, M::YesButton};
const Button discard{u"Discard"_s, M::NoRole, M::NoButton};
const Button viewBeside{u"View"_s, M::ApplyRole, M::NoStandardButton};
const Button call{u"Call"_s, M::YesRole, M::YesButton};
const Button sendIt{u"Send"_s, M::YesRole, M::YesButton};
const Button change{u"Choose another application\u009cOther application"_s, M::InvalidRole,
                    M::NoStandardButton};

// The payload of a URI record that abbreviates nothing.
URINDEFRecord record(const QByteArray &uri)
{
    return URINDEFRecord('\0' + uri);
}

Make textOf(const QString &content)
{
    return [=] { return new NfcTagReadPermissionDialog(content); };
}

Make uriOf(const QByteArray &uri, const QString &description = QString())
{
    return [=] {
        const URINDEFRecord read = record(uri);
        return new NfcTagReadPermissionDialog(&read, description);
    };
}

Make dataOf(const QString &type, const QString &data)
{
    return [=] { return new NfcTagReadPermissionDialog(type, data); };
}

Make fileOf(const QString &mimeType, const QString &file)
{
    return [=] { return new NfcTagReadPermissionDialog(mimeType, QFileInfo(file)); };
}

Make choiceOf(const QStringList &applications, const QString &byDefault = QString())
{
    return [=] { return new NfcTagReadPermissionDialog(applications, byDefault); };
}

QString leftToRight(const QString &text)
{
    return QChar(embedding) + text + QChar(pop);
}

QList<Line> contact(const QString &number)
{
    return {{u"Contact on tag"_s, title}, {leftToRight(number), query}};
}

QList<Line> message(const QString &detail)
{
    return {{u"Text message on tag"_s, title}, {detail, query}};
}

Content webLink(const QString &uri)
{
    return {{{u"Web link on tag"_s, title}, {uri, query}}, u"icon-m-content-url-inverse"_s, {view, discard}};
}

Content offer(const QString &application, const QString &name)
{
    return {{{u"Tag content"_s, title}, {u"Open with "_s + name + u'?', query}},
            u"icon-m-content-url-inverse"_s,
            {open, discard},
            false,
            application};
}

Content nobodysOffer(const QString &application = QString())
{
    return {
        {{u"Tag content"_s, title}}, u"icon-m-content-nfc-inverse"_s, {view, discard}, false, application};
}

void expectMissing(const QString &application)
{
    const QByteArray warning =
        "NfcTagReadPermissionDialog: No desktop file provided for application " + application.toUtf8();
    QTest::ignoreMessage(QtWarningMsg, warning.constData());
}

void writeFile(const QString &path, const QByteArray &content)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(content), content.size());
}

// The dialog on the screen of a phone.
class Shown
{
public:
    explicit Shown(const Make &make) : dialog(make()), finished(dialog.data(), &MDialog::finished)
    {
        window.show();
        dialog->appear(&window);
        ready = QTest::qWaitForWindowExposed(&window);
    }

    ~Shown() { delete dialog; }

    QList<MLabel *> labels() const { return shownWidgets<MLabel>(dialog->centralWidget()); }

    QList<Line> lines() const
    {
        QList<Line> shown;
        for (const MLabel *label : labels())
            shown.append({label->text(), label->styleName()});
        return shown;
    }

    MImageWidget *icon() const { return shownWidgets<MImageWidget>(dialog->centralWidget()).value(0); }

    QList<Button> buttons() const
    {
        QList<Button> all;
        for (const MButtonModel *model : dialog->buttons())
            all.append({model->text(), int(model->role()), int(model->standardButton())});
        return all;
    }

    NfcApplicationSelectionDialog *selection() const
    {
        for (QGraphicsItem *item : window.scene()->items()) {
            auto *found = dynamic_cast<NfcApplicationSelectionDialog *>(item);
            if (found && found->isVisible())
                return found;
        }
        return nullptr;
    }

    void press(const QGraphicsWidget *in, const QString &text) const
    {
        for (MButton *button : shownWidgets<MButton>(in)) {
            if (button->text() == text) {
                button->click();
                QCoreApplication::processEvents();
                return;
            }
        }
        QFAIL(qPrintable(u"There is no button "_s + text));
    }

    void press(const QString &text) const { press(dialog, text); }

    // A finger's or a key's way; what follows a step is what a user finds who waits for it.
    void step(const QString &what)
    {
        if (what == "escape"_L1)
            key(Qt::Key_Escape);
        else if (what == "close"_L1)
            window.close();
        else if (what == "change"_L1)
            press(change.text);
        else if (what == "ok"_L1)
            press(selection(), u"OK"_s);
        else if (what.startsWith("pick "_L1))
            pick(what.mid(5));
        else if (what == "dismiss"_L1)
            dialog->reject();
        else
            press(what);
        QCoreApplication::processEvents();
    }

    void pick(const QString &name)
    {
        for (const MListItem *row : shownWidgets<MListItem>(selection())) {
            if (shownTexts<MLabel>(row).contains(name)) {
                QTest::mouseClick(window.viewport(), Qt::LeftButton, {},
                                  window.mapFromScene(row->mapToScene(row->rect().center())));
            }
        }
    }

    void key(Qt::Key key) { QTest::keyClick(window.viewport(), key); }

    MWindow window;
    const QPointer<NfcTagReadPermissionDialog> dialog;
    QSignalSpy finished;
    bool ready;
};

QList<QVariantList> once(int result)
{
    return {{result}};
}

} // namespace

Q_DECLARE_METATYPE(Make)
Q_DECLARE_METATYPE(std::function<Make(int)>)
Q_DECLARE_METATYPE(Content)

class TestNfcTagReadPermissionDialog : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();

    void contentIsShown_data();
    void contentIsShown();
    void labelsWrapAndAreCentred();
    void titleStaysEmpty();
    void blankDescriptionIsLeftOut();
    void descriptionIsShownUntrimmed();
    void controlCharactersAreLeftOut();
    void uriIsClassified_data();
    void uriIsClassified();
    void nullRecordIsNobodys();
    void numberIsShownWithoutItsScheme_data();
    void numberIsShownWithoutItsScheme();
    void messageIsTakenApart_data();
    void messageIsTakenApart();
    void storeLinkIsRecognised_data();
    void storeLinkIsRecognised();
    void storeLinkHasRoomBelow();
    void dataIsOfferedToItsApplication_data();
    void dataIsOfferedToItsApplication();
    void cardShowsItsName_data();
    void cardShowsItsName();
    void fileIsOfferedToItsApplication_data();
    void fileIsOfferedToItsApplication();
    void applicationIsChosenFromTheList_data();
    void applicationIsChosenFromTheList();
    void applicationWithoutDesktopFileIsNotNamed_data();
    void applicationWithoutDesktopFileIsNotNamed();
    void applicationWithoutNameOrIconIsNotNamed();
    void applicationIsNamedByTheLongVariant();
    void applicationIconIsDrawnFromItsFile();
    void invalidUtf8IsReplaced();
    void tagCannotHideTextBehindAVariant_data();
    void tagCannotHideTextBehindAVariant();
    void markupIsShownAsItIs();
    void directionalControlsStayInTheirLabel_data();
    void directionalControlsStayInTheirLabel();
    void longUriCanBeScrolledToItsEnd_data();
    void longUriCanBeScrolledToItsEnd();
    void longContentTakesTimeInProportion_data();
    void longContentTakesTimeInProportion();

    void pressIsTheResult_data();
    void pressIsTheResult();
    void everyWayEndsInOneResult_data();
    void everyWayEndsInOneResult();
    void selectionStartsAtTheCurrentApplication();
    void selectionOfNothingKeepsTheApplication();
    void answeredQuestionTakesItsSelectionAway();
    void deletedQuestionTakesItsSelectionAway();
    void questionMayBeDeletedWhenItFinishes_data();
    void questionMayBeDeletedWhenItFinishes();
    void strangerIsNoSelection();
    void choosingClosesTheQuestion();
    void buildersHandOverToTheChoice();
    void changeButtonIsAddedOnce();
    void changeButtonShowsOneVariant();

private:
    const Catalogue english;
    ApplicationsFolder applications;
    QTemporaryDir folder;
};

void TestNfcTagReadPermissionDialog::initTestCase()
{
    const QString icon = u"icon-m-content-url-inverse"_s;
    applications.install(u"a"_s, u"A"_s, icon);
    applications.install(u"b"_s, u"B"_s, icon);
    applications.install(u"c"_s, u"C"_s, icon);
    applications.install(u"mailer"_s, u"Mailer"_s, icon);
    applications.install(u"org.example.Viewer"_s, u"Viewer"_s, icon);
    applications.install(u"editor"_s, u"Editor"_s, icon);
    writeFile(QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + u"/mimeapps.list"_s,
              "[Default Applications]\n"
              "x-scheme-handler/mailto=mailer.desktop\n"
              "x-scheme-handler/geo=b.desktop\n"
              "x-scheme-handler/http=c.desktop\n"
              "x-scheme-handler/tel=c.desktop\n"
              "image/jpeg=org.example.Viewer.desktop\n"
              "text/plain=editor.desktop\n");
}

void TestNfcTagReadPermissionDialog::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
}

void TestNfcTagReadPermissionDialog::contentIsShown_data()
{
    QTest::addColumn<Make>("make");
    QTest::addColumn<Content>("content");
    const QString described = u"On the tag"_s;

    QTest::newRow("text") << textOf(u"Hello\nyou"_s)
                          << Content{{{u"Text on tag"_s, title}, {u"Hello\nyou"_s, query}},
                                     u"icon-m-content-note-inverse"_s,
                                     {view, discard}};
    QTest::newRow("empty text") << textOf(QString())
                                << Content{{{u"Text on tag"_s, title}},
                                           u"icon-m-content-note-inverse"_s,
                                           {view, discard}};
    QTest::newRow("one application") << choiceOf({u"a"_s}) << offer(u"a"_s, u"A"_s);
    Content several = offer(u"a"_s, u"A"_s);
    several.buttons.append(change);
    QTest::newRow("several applications") << choiceOf({u"a"_s, u"b"_s}) << several;
    QTest::newRow("web link") << uriOf("http://example.com/a?b#c") << webLink(u"http://example.com/a?b#c"_s);
    QTest::newRow("web link, described")
        << uriOf("https://example.com", described)
        << Content{{{u"Web link on tag"_s, title}, {described, query}, {u"https://example.com"_s, subTitle}},
                   u"icon-m-content-url-inverse"_s,
                   {view, discard}};
    QTest::newRow("phone number") << uriOf("tel:+358501234567")
                                  << Content{contact(u"+358501234567"_s),
                                             u"icon-m-content-avatar-placeholder-inverse"_s,
                                             {call, discard, viewBeside},
                                             true};
    QTest::newRow("phone number, described")
        << uriOf("callto:112", described)
        << Content{{{u"Contact on tag"_s, title}, {described, query}, {leftToRight(u"112"_s), subTitle}},
                   u"icon-m-content-avatar-placeholder-inverse"_s,
                   {call, discard, viewBeside},
                   true};
    QTest::newRow("message") << uriOf("sms:+123?body=Hi%20there")
                             << Content{message(u"To: "_s + leftToRight(u"+123"_s) + u"\nHi there"_s),
                                        u"icon-m-content-sms-inverse"_s,
                                        {sendIt, discard, viewBeside},
                                        true};
    QTest::newRow("message, described") << uriOf("sms:+123", described)
                                        << Content{{{u"Text message on tag"_s, title},
                                                    {described, query},
                                                    {u"To: "_s + leftToRight(u"+123"_s), subTitle}},
                                                   u"icon-m-content-sms-inverse"_s,
                                                   {sendIt, discard, viewBeside},
                                                   true};
    QTest::newRow("other scheme") << uriOf("mailto:me@example.com", described)
                                  << offer(u"mailer"_s, u"Mailer"_s);
    QTest::newRow("store link") << dataOf(u"ruvostore:link"_s, u"http://example.com"_s)
                                << Content{{{u"Store link on tag"_s, title}},
                                           u"icon-m-content-ruvo-store-inverse"_s,
                                           {view, discard}};
    QTest::newRow("other data") << dataOf(u"example.com:thing"_s, u"geo:60.2,24.9"_s)
                                << offer(u"b"_s, u"B"_s);
    const QString card = folder.filePath(u"card.vcf"_s);
    writeFile(card, "BEGIN:VCARD\r\nVERSION:3.0\r\nN:Doe;Jane;;;\r\nFN:Jane Doe\r\nEND:VCARD\r\n");
    QTest::newRow("contact card") << fileOf(u"text/x-vcard"_s, card)
                                  << Content{{{u"Contact on tag"_s, title}, {u"Jane Doe"_s, query}},
                                             u"icon-m-content-avatar-placeholder-inverse"_s,
                                             {view, discard}};
    QTest::newRow("other file") << fileOf(u"image/jpeg"_s, u"/nowhere/picture"_s)
                                << offer(u"org.example.Viewer"_s, u"Viewer"_s);
}

void TestNfcTagReadPermissionDialog::contentIsShown()
{
    QFETCH(Make, make);
    QFETCH(Content, content);
    const Shown shown(make);
    QVERIFY(shown.ready);
    QCOMPARE(shown.lines(), content.lines);
    QCOMPARE(shownWidgets<MLabel>(shown.dialog.data()).size(), content.lines.size());

    QVERIFY(shown.icon());
    QCOMPARE(shown.icon()->imageId(), content.icon);
    QCOMPARE(shown.icon()->styleName(), u"CommonQueryIcon"_s);
    QVERIFY(shown.icon()->geometry().bottom() <= shown.labels().first()->geometry().top());

    QCOMPARE(shown.buttons(), content.buttons);
    QStringList texts;
    for (const Button &button : std::as_const(content.buttons))
        texts.append(button.text);
    QStringList onScreen = shownTexts<MButton>(shown.dialog.data());
    QCOMPARE(QSet<QString>(onScreen.begin(), onScreen.end()), QSet<QString>(texts.begin(), texts.end()));
    QCOMPARE(onScreen.size(), texts.size());

    QCOMPARE(shown.dialog->isDirectActionSelected(), content.directAction);
    QCOMPARE(shown.dialog->property("directActionSelected").toBool(), content.directAction);
    QCOMPARE(shown.dialog->selectedApplication(), content.application);
    QCOMPARE(shown.dialog->property("selectedApplication").toString(), content.application);
}

void TestNfcTagReadPermissionDialog::labelsWrapAndAreCentred()
{
    const Shown shown(uriOf("http://example.com", u"On the tag"_s));
    QVERIFY(shown.ready);
    const qreal middle = shown.dialog->centralWidget()->size().width() / 2;
    QCOMPARE(shown.labels().size(), 3);
    for (const MLabel *label : shown.labels()) {
        QCOMPARE(label->alignment(), Qt::AlignCenter);
        QVERIFY(qAbs(label->geometry().center().x() - middle) < 1);
    }
    for (const MLabel *label : shown.labels().mid(1)) {
        QVERIFY(label->wordWrap());
        QCOMPARE(label->wrapMode(), QTextOption::WrapAtWordBoundaryOrAnywhere);
    }
    QVERIFY(qAbs(shown.icon()->geometry().center().x() - middle) < 1);
}

void TestNfcTagReadPermissionDialog::titleStaysEmpty()
{
    const Shown shown(textOf(u"Hello"_s));
    QCOMPARE(shown.dialog->title(), QString());
    QCOMPARE(shown.dialog->text(), QString());
    QCOMPARE(shown.dialog->iconId(), QString());
}

void TestNfcTagReadPermissionDialog::blankDescriptionIsLeftOut()
{
    const Shown shown(uriOf("http://example.com", u" \n\t "_s));
    QCOMPARE(shown.lines(), webLink(u"http://example.com"_s).lines);
}

void TestNfcTagReadPermissionDialog::descriptionIsShownUntrimmed()
{
    const Shown shown(uriOf("http://example.com", u" On the tag "_s));
    QCOMPARE(shown.lines().value(1), (Line{u" On the tag "_s, query}));
}

void TestNfcTagReadPermissionDialog::controlCharactersAreLeftOut()
{
    QString text = u"<"_s;
    QString kept = u"<"_s;
    for (char16_t c = 0; c <= 0x7f; ++c) {
        text += QChar(c);
        if (c == '\n' || c == '\r' || c > 31)
            kept += QChar(c);
    }
    const Shown shown(textOf(text));
    QCOMPARE(shown.lines().value(1), (Line{kept, query}));
    const Shown nothingLeft(textOf(u"\t\a"_s));
    QCOMPARE(nothingLeft.lines().size(), 1);
}

void TestNfcTagReadPermissionDialog::uriIsClassified_data()
{
    QTest::addColumn<QByteArray>("uri");
    QTest::addColumn<QList<Line>>("lines");
    const auto web = [](const QString &uri) { return webLink(uri).lines; };
    QTest::newRow("host and path") << QByteArray("example.com/a") << web(u"http://example.com/a"_s);
    QTest::newRow("empty") << QByteArray() << web(u"http://"_s);
    QTest::newRow("host that begins like it") << QByteArray("http") << web(u"http://http"_s);
    QTest::newRow("longer scheme") << QByteArray("httpx:a") << web(u"httpx:a"_s);
    QTest::newRow("host and port") << QByteArray("geo:60.2,24.9") << offer({}, u"B"_s).lines;
    QTest::newRow("capitals") << QByteArray("HTTP://EXAMPLE.COM") << offer({}, u"C"_s).lines;
    QTest::newRow("number in capitals") << QByteArray("TEL:112") << offer({}, u"C"_s).lines;
    QTest::newRow("number further on") << QByteArray("mailto:tel:112") << offer({}, u"Mailer"_s).lines;
    QTest::newRow("not encoded") << QByteArray("http://example.com/ä b%20c")
                                 << web(u"http://example.com/ä b%20c"_s);
}

void TestNfcTagReadPermissionDialog::uriIsClassified()
{
    QFETCH(QByteArray, uri);
    QFETCH(QList<Line>, lines);
    const Shown shown(uriOf(uri));
    QCOMPARE(shown.lines(), lines);
}

void TestNfcTagReadPermissionDialog::nullRecordIsNobodys()
{
    expectMissing(QString());
    const Shown shown(
        [] { return new NfcTagReadPermissionDialog(static_cast<const URINDEFRecord *>(nullptr), u"x"_s); });
    const Content expected = nobodysOffer();
    QCOMPARE(shown.lines(), expected.lines);
    QCOMPARE(shown.icon()->imageId(), expected.icon);
    QCOMPARE(shown.buttons(), expected.buttons);

    // A scheme without an application ends there too.
    expectMissing(QString());
    const Shown unknown(uriOf("nobody:1"));
    QCOMPARE(unknown.lines(), expected.lines);
    QCOMPARE(unknown.dialog->selectedApplication(), QString());
}

void TestNfcTagReadPermissionDialog::numberIsShownWithoutItsScheme_data()
{
    QTest::addColumn<QByteArray>("uri");
    QTest::addColumn<QString>("number");
    QTest::newRow("plain") << QByteArray("tel:+123") << u"+123"_s;
    QTest::newRow("every occurrence") << QByteArray("tel:+123tel:4") << u"+1234"_s;
    QTest::newRow("other scheme") << QByteArray("callto:john") << u"john"_s;
    QTest::newRow("every occurrence of the other") << QByteArray("callto:1callto:2") << u"12"_s;
    QTest::newRow("the other scheme inside") << QByteArray("callto:tel:1") << u"tel:1"_s;
    QTest::newRow("the other one inside") << QByteArray("tel:callto:1") << u"callto:1"_s;
    QTest::newRow("removed once") << QByteArray("tel:tetel:l:1") << u"tel:1"_s;
    QTest::newRow("none") << QByteArray("tel:") << QString();
    QTest::newRow("not decoded") << QByteArray("tel:%2B1;ext=2") << u"%2B1;ext=2"_s;
}

void TestNfcTagReadPermissionDialog::numberIsShownWithoutItsScheme()
{
    QFETCH(QByteArray, uri);
    QFETCH(QString, number);
    const Shown shown(uriOf(uri));
    QCOMPARE(shown.lines(), contact(number));
}

void TestNfcTagReadPermissionDialog::messageIsTakenApart_data()
{
    QTest::addColumn<QByteArray>("uri");
    QTest::addColumn<QString>("receiver");
    QTest::addColumn<QString>("body");
    const auto row = [](const char *name, const QByteArray &uri, const QString &receiver,
                        const QString &body) { QTest::newRow(name) << uri << receiver << body; };
    row("no body", "sms:+123", u"+123"_s, {});
    row("empty body", "sms:+123?body=", u"+123"_s, {});
    row("body", "sms:+123?body=Hi%20there", u"+123"_s, u"Hi there"_s);
    row("body not encoded", "sms:+123?body=Hi there, \xc3\xa4", u"+123"_s, u"Hi there, ä"_s);
    row("UTF-8", "sms:+123?body=%C3%A4%F0%9F%98%80", u"+123"_s, u"ä😀"_s);
    row("not UTF-8", "sms:+123?body=%E4", u"+123"_s, u"\ufffd"_s);
    row("plus signs stay", "sms:+1+2?body=a+b", u"+1+2"_s, u"a+b"_s);
    row("several lines", "sms:+123?body=a%0Ab%0D%0Ac", u"+123"_s, u"a\nb\r\nc"_s);
    row("several receivers", "sms:+123,+456?body=a", u"+123,+456"_s, u"a"_s);
    row("question in the body", "sms:+123?body=Well?", u"+123"_s, u"Well?"_s);
    row("encoded question mark", "sms:+123%3Fbody=Hi", u"+123"_s, u"Hi"_s);

    row("encoded ampersand ends the body", "sms:+123?body=a%26b", u"+123"_s, u"a"_s);
    row("encoded equals sign ends the body", "sms:+123?body=a%3Db", u"+123"_s, u"a"_s);
    row("ampersand ends the body", "sms:+123?body=a&b", u"+123"_s, u"a"_s);
    row("equals sign ends the body", "sms:+123?body=a=b", u"+123"_s, u"a"_s);
    row("number sign ends the body", "sms:+123?body=a#b", u"+123"_s, u"a"_s);
    row("encoded number sign ends the body", "sms:+123?body=a%23b", u"+123"_s, u"a"_s);
    row("number sign ends the receiver", "sms:+123#1?body=a", u"+123"_s, {});
    row("body of another item", "sms:+123?subject=a&body=b&c=d", u"+123"_s, u"b"_s);
    row("first of two bodies", "sms:+123?body=a&body=b", u"+123"_s, u"a"_s);
    row("another item alone", "sms:+123?subject=a", u"+123"_s, {});
    row("capitals are another item", "sms:+123?Body=a", u"+123"_s, {});

    row("encoded percent sign", "sms:+123?body=100%25", u"+123"_s, u"100%"_s);
    row("encoded percent sign before digits", "sms:+123?body=%2541", u"+123"_s, u"%41"_s);
    row("encoded percent sign in the receiver", "sms:%2541", u"%41"_s, {});
    row("percent sign alone", "sms:+123?body=50% off, 100%", u"+123"_s, u"50% off, 100%"_s);
    row("percent sign and one digit", "sms:+123?body=5%4", u"+123"_s, u"5%4"_s);
    row("percent sign and other letters", "sms:+123?body=%zz%4g", u"+123"_s, u"%zz%4g"_s);
    row("control characters", "sms:+123?body=a%00%1Bb", u"+123"_s, u"a\0\x1b"_s + u'b');
    row("blanks at the ends", "sms:+123?body=%20a%20", u"+123"_s, u" a "_s);
    row("encoded twice", "sms:+123?body=a%2526b", u"+123"_s, u"a%26b"_s);

    row("no receiver", "sms:?body=a", {}, u"a"_s);
    row("nothing", "sms:", {}, {});
    row("empty authority", "sms:///+123?body=a", u"/+123"_s, u"a"_s);
    row("authority", "sms://example.com/+123?body=a", u"/+123"_s, u"a"_s);
    row("receiver as the authority", "sms://123?body=a", {}, u"a"_s);
    row("blanks in the receiver", "sms:+1 (23) 4", u"+1 (23) 4"_s, {});
}

void TestNfcTagReadPermissionDialog::messageIsTakenApart()
{
    QFETCH(QByteArray, uri);
    QFETCH(QString, receiver);
    QFETCH(QString, body);
    const Shown shown(uriOf(uri));
    const QString detail = u"To: "_s + leftToRight(receiver) + (body.isEmpty() ? QString() : u'\n' + body);
    QCOMPARE(shown.lines(), message(detail));
}

void TestNfcTagReadPermissionDialog::storeLinkIsRecognised_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<bool>("recognised");
    QTest::newRow("short form") << u"ruvostore:link"_s << true;
    QTest::newRow("long form") << u"tavix.com:ruvostore:link"_s << true;
    QTest::newRow("capitals") << u"RuvoStore:Link"_s << true;
    QTest::newRow("long form in capitals") << u"Tavix.com:RuvoStore:Link"_s << true;
    QTest::newRow("continued") << u"ruvostore:link;v=2"_s << true;
    QTest::newRow("cut off") << u"ruvostore:lin"_s << false;
    QTest::newRow("another vendor's") << u"example.com:ruvostore:link"_s << false;
    QTest::newRow("empty") << QString() << false;
}

void TestNfcTagReadPermissionDialog::storeLinkIsRecognised()
{
    QFETCH(QString, type);
    QFETCH(bool, recognised);
    const Shown shown(dataOf(type, u"geo:1,2"_s));
    QCOMPARE(shown.lines().first().text, recognised ? u"Store link on tag"_s : u"Tag content"_s);
    QCOMPARE(shown.lines().size(), recognised ? 1 : 2);
}

void TestNfcTagReadPermissionDialog::storeLinkHasRoomBelow()
{
    const Shown shown(dataOf(u"ruvostore:link"_s, QString()));
    const QList<MWidgetController *> parts = shownWidgets<MWidgetController>(shown.dialog->centralWidget());
    QCOMPARE(parts.size(), 3);
    QCOMPARE(parts.last()->styleName(), u"CommonXLargeSpacer"_s);
    QVERIFY(parts.last()->geometry().top() >= shown.labels().first()->geometry().bottom());
}

void TestNfcTagReadPermissionDialog::dataIsOfferedToItsApplication_data()
{
    QTest::addColumn<QString>("data");
    QTest::addColumn<QString>("application");
    QTest::addColumn<QString>("name");
    QTest::newRow("URI") << u"mailto:me@example.com"_s << u"mailer"_s << u"Mailer"_s;
    QTest::newRow("text") << u"Hello"_s << u"editor"_s << u"Editor"_s;
    QTest::newRow("nobody's") << u"%PDF-1.5"_s << QString() << QString();
    QTest::newRow("empty") << QString() << QString() << QString();
}

void TestNfcTagReadPermissionDialog::dataIsOfferedToItsApplication()
{
    QFETCH(QString, data);
    QFETCH(QString, application);
    QFETCH(QString, name);
    if (application.isEmpty())
        expectMissing(application);
    const Shown shown(dataOf(u"example.com:thing"_s, data));
    const Content expected = application.isEmpty() ? nobodysOffer() : offer(application, name);
    QCOMPARE(shown.lines(), expected.lines);
    QCOMPARE(shown.icon()->imageId(), expected.icon);
    QCOMPARE(shown.buttons(), expected.buttons);
    QCOMPARE(shown.dialog->selectedApplication(), application);
}

void TestNfcTagReadPermissionDialog::cardShowsItsName_data()
{
    QTest::addColumn<QString>("mimeType");
    QTest::addColumn<QByteArray>("fields");
    QTest::addColumn<QString>("name");
    QTest::newRow("both parts") << u"text/x-vcard"_s << QByteArray("N:Doe;Jane;;;\r\n") << u"Jane Doe"_s;
    QTest::newRow("given name alone") << u"text/x-vcard"_s << QByteArray("N:;Jane;;;\r\n") << u"Jane"_s;
    QTest::newRow("family name alone") << u"text/x-vcard"_s << QByteArray("N:Doe;;;;\r\n") << u"Doe"_s;
    QTest::newRow("no name") << u"text/x-vcard"_s << QByteArray("TEL:112\r\n") << QString();
    QTest::newRow("placeholders") << u"text/x-vcard"_s << QByteArray("N:%1;%2;;;\r\n") << u"%2 %1"_s;
    QTest::newRow("other type") << u"text/directory"_s << QByteArray("N:Doe;Jane;;;\r\n") << u"Jane Doe"_s;
    QTest::newRow("capitals") << u"Text/X-vCard"_s << QByteArray("N:Doe;Jane;;;\r\n") << u"Jane Doe"_s;
    QTest::newRow("parameters") << u"text/x-vCard; charset=utf-8"_s << QByteArray("N:Doe;Jane;;;\r\n")
                                << u"Jane Doe"_s;
    QTest::newRow("Arabic") << u"text/x-vcard"_s << QByteArray("N:علي;محمد;;;\r\n") << u"محمد علي"_s;
    QTest::newRow("markup") << u"text/x-vcard"_s << QByteArray("N:<b>Doe</b>;<i>;;;\r\n")
                            << u"<i> <b>Doe</b>"_s;
    QTest::newRow("length variants") << u"text/x-vcard"_s << QByteArray("N:Doe;Jane\xc2\x9cJanet;;;\r\n")
                                     << u"Jane\ufffdJanet Doe"_s;
}

void TestNfcTagReadPermissionDialog::cardShowsItsName()
{
    QFETCH(QString, mimeType);
    QFETCH(QByteArray, fields);
    QFETCH(QString, name);
    const QString card = folder.filePath(u"name.vcf"_s);
    writeFile(card, "BEGIN:VCARD\r\nVERSION:3.0\r\n" + fields + "END:VCARD\r\n");
    const Shown shown(fileOf(mimeType, card));
    QList<Line> expected{{u"Contact on tag"_s, title}};
    if (!name.isEmpty())
        expected.append({name, query});
    QCOMPARE(shown.lines(), expected);
    QCOMPARE(shown.icon()->imageId(), u"icon-m-content-avatar-placeholder-inverse"_s);
    QVERIFY(!shown.dialog->isDirectActionSelected());
}

void TestNfcTagReadPermissionDialog::fileIsOfferedToItsApplication_data()
{
    QTest::addColumn<QString>("mimeType");
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("application");
    QTest::addColumn<QString>("name");
    QTest::newRow("by its type") << u"image/jpeg"_s << u"notes.txt"_s << u"org.example.Viewer"_s
                                 << u"Viewer"_s;
    QTest::newRow("by itself") << u"application/x-nobodys"_s << u"notes.txt"_s << u"editor"_s << u"Editor"_s;
    QTest::newRow("by itself, no type") << QString() << u"notes.txt"_s << u"editor"_s << u"Editor"_s;
    QTest::newRow("nobody's") << u"application/x-nobodys"_s << u"paper.pdf"_s << QString() << QString();
    QTest::newRow("missing") << u"application/x-nobodys"_s << u"missing"_s << QString() << QString();
    QTest::newRow("another kind of card") << u"text/vcard"_s << u"paper.pdf"_s << u"editor"_s << u"Editor"_s;
}

void TestNfcTagReadPermissionDialog::fileIsOfferedToItsApplication()
{
    QFETCH(QString, mimeType);
    QFETCH(QString, file);
    QFETCH(QString, application);
    QFETCH(QString, name);
    writeFile(folder.filePath(u"notes.txt"_s), "Notes");
    writeFile(folder.filePath(u"paper.pdf"_s), "%PDF-1.5\n");
    if (application.isEmpty())
        expectMissing(application);
    const Shown shown(fileOf(mimeType, folder.filePath(file)));
    const Content expected = application.isEmpty() ? nobodysOffer() : offer(application, name);
    QCOMPARE(shown.lines(), expected.lines);
    QCOMPARE(shown.buttons(), expected.buttons);
    QCOMPARE(shown.dialog->selectedApplication(), application);
}

void TestNfcTagReadPermissionDialog::applicationIsChosenFromTheList_data()
{
    QTest::addColumn<QStringList>("list");
    QTest::addColumn<QString>("byDefault");
    QTest::addColumn<QString>("chosen");
    QTest::addColumn<bool>("changeable");
    const QStringList all{u"a"_s, u"b"_s, u"c"_s};
    QTest::newRow("none by default") << all << QString() << u"a"_s << true;
    QTest::newRow("first by default") << all << u"a"_s << u"a"_s << true;
    QTest::newRow("last by default") << all << u"c"_s << u"c"_s << true;
    QTest::newRow("not in the list") << all << u"editor"_s << u"a"_s << true;
    QTest::newRow("in capitals") << all << u"C"_s << u"a"_s << true;
    QTest::newRow("one") << QStringList{u"b"_s} << u"b"_s << u"b"_s << false;
    QTest::newRow("one, not the default") << QStringList{u"b"_s} << u"a"_s << u"b"_s << false;
    QTest::newRow("the same twice") << QStringList{u"b"_s, u"b"_s} << u"b"_s << u"b"_s << true;
    QStringList many;
    for (int i = 0; i < 499; ++i)
        many.append(u"app"_s + QString::number(i));
    many.append(u"c"_s);
    QTest::newRow("500") << many << u"c"_s << u"c"_s << true;
}

void TestNfcTagReadPermissionDialog::applicationIsChosenFromTheList()
{
    QFETCH(QStringList, list);
    QFETCH(QString, byDefault);
    QFETCH(QString, chosen);
    QFETCH(bool, changeable);
    const Shown shown(choiceOf(list, byDefault));
    QCOMPARE(shown.dialog->selectedApplication(), chosen);
    const Content expected = offer(chosen, chosen.toUpper());
    QCOMPARE(shown.lines(), expected.lines);
    QCOMPARE(shown.icon()->imageId(), expected.icon);
    QCOMPARE(shown.buttons(), changeable ? expected.buttons + QList<Button>{change} : expected.buttons);
}

void TestNfcTagReadPermissionDialog::applicationWithoutDesktopFileIsNotNamed_data()
{
    QTest::addColumn<QString>("id");
    for (const char *id : {"missing", "", "..", "../hostile", "sub/viewer", "/etc/passwd", "%1", "ä"})
        QTest::newRow(id) << QString::fromUtf8(id);
}

void TestNfcTagReadPermissionDialog::applicationWithoutDesktopFileIsNotNamed()
{
    QFETCH(QString, id);
    expectMissing(id);
    const Shown shown(choiceOf({id, u"a"_s}));
    const Content expected = nobodysOffer();
    QCOMPARE(shown.dialog->selectedApplication(), id);
    QCOMPARE(shown.lines(), expected.lines);
    QCOMPARE(shown.icon()->imageId(), expected.icon);
    QCOMPARE(shown.buttons(), expected.buttons + QList<Button>{change});
}

void TestNfcTagReadPermissionDialog::applicationWithoutNameOrIconIsNotNamed()
{
    applications.install(u"nameless"_s, QString(), u"icon-m-service-nfc"_s);
    applications.install(u"iconless"_s, u"Iconless"_s, QString());
    for (const QString &id : {u"nameless"_s, u"iconless"_s}) {
        const Shown shown(choiceOf({id}));
        QCOMPARE(shown.dialog->selectedApplication(), id);
        QCOMPARE(shown.lines(), nobodysOffer().lines);
        QCOMPARE(shown.icon()->imageId(), nobodysOffer().icon);
        QCOMPARE(shown.buttons(), nobodysOffer().buttons);
    }
}

void TestNfcTagReadPermissionDialog::applicationIsNamedByTheLongVariant()
{
    applications.install(u"variants"_s, u"The long name\u009cShort"_s, u"icon-m-content-url-inverse"_s);
    const Shown shown(choiceOf({u"variants"_s}));
    QCOMPARE(shown.lines(), offer({}, u"The long name"_s).lines);
}

void TestNfcTagReadPermissionDialog::applicationIconIsDrawnFromItsFile()
{
    const QString file = folder.filePath(u"icon.png"_s);
    QImage picture(64, 64, QImage::Format_RGB32);
    picture.fill(Qt::magenta);
    QVERIFY(picture.save(file));
    applications.install(u"painted"_s, u"Painted"_s, file);
    Shown shown(choiceOf({u"painted"_s}));
    QVERIFY(shown.ready);
    QCOMPARE(shown.icon()->imageId(), QString());
    QCOMPARE(shown.icon()->styleName(), u"CommonQueryIcon"_s);
    const QPoint middle = shown.icon()->mapToScene(shown.icon()->rect().center()).toPoint();
    QCOMPARE(shown.window.grab().toImage().pixelColor(middle), QColor(Qt::magenta));
}

void TestNfcTagReadPermissionDialog::invalidUtf8IsReplaced()
{
    const Shown shown(uriOf("http://a\xff/\xc3("));
    QCOMPARE(shown.lines(), webLink(u"http://a\ufffd/\ufffd("_s).lines);
    const Shown number(uriOf("tel:\xfe"));
    QCOMPARE(number.lines(), contact(u"\ufffd"_s));
}

void TestNfcTagReadPermissionDialog::tagCannotHideTextBehindAVariant_data()
{
    QTest::addColumn<Make>("make");
    QTest::addColumn<QString>("shown");
    QTest::newRow("text") << textOf(u"bad\u009ca longer one"_s) << u"bad\ufffda longer one"_s;
    QTest::newRow("web link") << uriOf("http://bad/\xc2\x9chttp://a.longer.one/")
                              << u"http://bad/\ufffdhttp://a.longer.one/"_s;
    QTest::newRow("number") << uriOf("tel:1\xc2\x9c+23456") << leftToRight(u"1\ufffd+23456"_s);
    QTest::newRow("receiver") << uriOf("sms:1%C2%9C+23456") << u"To: "_s + leftToRight(u"1\ufffd+23456"_s);
    QTest::newRow("body") << uriOf("sms:1?body=a%C2%9Cbcd")
                          << u"To: "_s + leftToRight(u"1"_s) + u"\na\ufffdbcd"_s;
}

void TestNfcTagReadPermissionDialog::tagCannotHideTextBehindAVariant()
{
    QFETCH(Make, make);
    const Shown dialog(make);
    QFETCH(QString, shown);
    QCOMPARE(dialog.lines().value(1), (Line{shown, query}));
}

void TestNfcTagReadPermissionDialog::markupIsShownAsItIs()
{
    const QString markup = u"<h1><img src='file:///etc/passwd'/>&amp;"_s;
    Shown shown(textOf(markup));
    QVERIFY(shown.ready);
    QCOMPARE(shown.lines().value(1), (Line{markup, query}));
    const MLabel *label = shown.labels().at(1);
    MLabel plain(markup);
    plain.setStyleName(query);
    QVERIFY(label->size().height() >= plain.effectiveSizeHint(Qt::PreferredSize).height());
    QVERIFY(label->size().height() <= 2 * plain.effectiveSizeHint(Qt::PreferredSize).height());
}

void TestNfcTagReadPermissionDialog::directionalControlsStayInTheirLabel_data()
{
    QTest::addColumn<QString>("controls");
    QTest::newRow("override") << u"\u202e"_s;
    QTest::newRow("embeddings") << u"\u202b\u202b"_s;
    QTest::newRow("isolate") << u"\u2067"_s;
    QTest::newRow("pops") << u"\u202c\u2069\u202c"_s;
    QTest::newRow("marks") << u"\u200f\u200e\u061c"_s;
}

void TestNfcTagReadPermissionDialog::directionalControlsStayInTheirLabel()
{
    QFETCH(QString, controls);
    const QByteArray uri = "http://e/" + controls.toUtf8() + "abc";
    Shown honest(uriOf("http://e/abc", u"On the tag (1)"_s));
    Shown disguised(uriOf(uri, u"On the tag (1)"_s));
    QVERIFY(honest.ready && disguised.ready);
    QCOMPARE(disguised.lines().at(2).text, QString::fromUtf8(uri));
    // All but the address itself looks as without them.
    const auto picture = [](Shown &shown) {
        QImage image = shown.window.grab().toImage();
        QPainter painter(&image);
        const MLabel *address = shown.labels().at(2);
        painter.fillRect(address->mapRectToScene(address->rect()), Qt::black);
        return image;
    };
    const MLabel *one = honest.labels().at(2);
    const MLabel *other = disguised.labels().at(2);
    QCOMPARE(one->mapRectToScene(one->rect()).top(), other->mapRectToScene(other->rect()).top());
    const QRect above(0, 0, 480, int(one->mapRectToScene(one->rect()).top()));
    QCOMPARE(picture(honest).copy(above), picture(disguised).copy(above));
    const QRect below(0, int(one->mapRectToScene(one->rect()).bottom()) + 1, 480, 854);
    QCOMPARE(picture(honest).copy(below), picture(disguised).copy(below));
}

void TestNfcTagReadPermissionDialog::longUriCanBeScrolledToItsEnd_data()
{
    QTest::addColumn<int>("angle");
    QTest::newRow("portrait") << int(M::Angle0);
    QTest::newRow("landscape") << int(M::Angle90);
}

void TestNfcTagReadPermissionDialog::longUriCanBeScrolledToItsEnd()
{
    QFETCH(int, angle);
    const QByteArray uri = "http://example.com/" + QByteArray(65536, 'a') + "/end";
    Shown shown(uriOf(uri, u"On the tag"_s));
    QVERIFY(shown.ready);
    shown.window.sceneManager()->setOrientationAngle(M::OrientationAngle(angle));
    QCoreApplication::processEvents();
    const MLabel *address = shown.labels().at(2);
    QCOMPARE(address->text(), QString::fromUtf8(uri));

    // What a label inside of the part that scrolls has of its rectangle on screen.
    const auto seen = [&](const QGraphicsWidget *widget) {
        QRectF part = widget->mapRectToItem(shown.dialog, widget->rect());
        for (const QGraphicsItem *item = widget; item && item != shown.dialog; item = item->parentItem())
            if (item->flags() & QGraphicsItem::ItemClipsChildrenToShape)
                part &= item->mapRectToItem(shown.dialog, item->boundingRect());
        return part & shown.dialog->rect();
    };
    const auto bottom = [&](const QGraphicsWidget *widget) {
        return widget->mapRectToItem(shown.dialog, widget->rect()).bottom();
    };
    QVERIFY(!seen(shown.labels().first()).isEmpty());
    QVERIFY(bottom(address) > 10 * shown.dialog->size().height());

    qreal before = 0;
    do {
        before = bottom(address);
        shown.key(Qt::Key_PageDown);
    } while (bottom(address) < before);
    QCOMPARE(seen(address).bottom(), bottom(address));
    QVERIFY(seen(address).height() > 50);
    for (const MButton *button : shownWidgets<MButton>(shown.dialog))
        QCOMPARE(seen(button).size(), button->size());
}

void TestNfcTagReadPermissionDialog::longContentTakesTimeInProportion_data()
{
    QTest::addColumn<std::function<Make(int)>>("makeOf");
    const auto row = [](const char *name, const std::function<Make(int)> &makeOf) {
        QTest::newRow(name) << makeOf;
    };
    row(
        "web link",
        [](int length) { return uriOf("http://example.com/" + QByteArray(length, 'a'), u"x"_s); });
    row(
        "number", [](int length) { return uriOf("tel:" + QByteArray("tel:1").repeated(length / 5)); });
    row(
        "message", [](int length) { return uriOf("sms:1?body=" + QByteArray("%25 ").repeated(length / 4)); });
    row(
        "lines", [](int length) { return textOf(QString(length, u'\n')); });
    row(
        "words", [](int length) { return textOf(u"a "_s.repeated(length / 2)); });
    row("directions", [](int length) { return textOf(u"a\u202bא"_s.repeated(length / 3)); });
}

void TestNfcTagReadPermissionDialog::longContentTakesTimeInProportion()
{
    using MakeOf = std::function<Make(int)>;
    QFETCH(MakeOf, makeOf);
    // In processor time of the fastest of a few runs, so that other programs do not count.
    const auto time = [&](int length) {
        std::clock_t fastest = std::numeric_limits<std::clock_t>::max();
        for (int run = 0; run < 3; ++run) {
            const std::clock_t start = std::clock();
            Shown shown(makeOf(length));
            shown.window.grab();
            fastest = qMin(fastest, std::clock() - start);
        }
        return fastest;
    };
    const std::clock_t quarter = time(16384);
    const std::clock_t whole = time(65536);
    // Four times as long takes four times as much; sixteen times would be a stall in the making.
    QVERIFY2(whole < 8 * quarter,
             qPrintable(QString::number(quarter) + u" became "_s + QString::number(whole)));
}

void TestNfcTagReadPermissionDialog::pressIsTheResult_data()
{
    QTest::addColumn<Make>("make");
    QTest::addColumn<QString>("button");
    QTest::addColumn<int>("result");
    QTest::addColumn<bool>("directAction");
    QTest::newRow("view") << textOf(u"a"_s) << u"View"_s << int(M::YesButton) << false;
    QTest::newRow("discard") << textOf(u"a"_s) << u"Discard"_s << int(M::NoButton) << false;
    QTest::newRow("open") << choiceOf({u"a"_s}) << u"Open"_s << int(M::YesButton) << false;
    QTest::newRow("call") << uriOf("tel:1") << u"Call"_s << int(M::YesButton) << true;
    QTest::newRow("view instead of calling") << uriOf("tel:1") << u"View"_s << 0 << false;
    QTest::newRow("discard a number") << uriOf("tel:1") << u"Discard"_s << int(M::NoButton) << true;
    QTest::newRow("send") << uriOf("sms:1") << u"Send"_s << int(M::YesButton) << true;
    QTest::newRow("view instead of sending") << uriOf("sms:1") << u"View"_s << 0 << false;
    QTest::newRow("discard a message") << uriOf("sms:1") << u"Discard"_s << int(M::NoButton) << true;
}

void TestNfcTagReadPermissionDialog::pressIsTheResult()
{
    QFETCH(Make, make);
    QFETCH(QString, button);
    QFETCH(int, result);
    QFETCH(bool, directAction);
    const Shown shown(make);
    QVERIFY(shown.ready);
    bool directWhenFinished = !directAction;
    connect(shown.dialog, &MDialog::finished, this,
            [&] { directWhenFinished = shown.dialog->isDirectActionSelected(); });
    shown.press(button);
    QCOMPARE(shown.finished, once(result));
    QCOMPARE(directWhenFinished, directAction);
    QVERIFY(!shown.dialog->isVisible());
}

void TestNfcTagReadPermissionDialog::everyWayEndsInOneResult_data()
{
    QTest::addColumn<QStringList>("steps");
    QTest::addColumn<int>("result");
    QTest::addColumn<QString>("application");
    const auto row = [](const QString &steps, int result, const QString &application) {
        QTest::newRow(qPrintable(steps)) << steps.split(u", "_s) << result << application;
    };
    row(u"Open"_s, M::YesButton, u"a"_s);
    row(u"Discard"_s, M::NoButton, u"a"_s);
    row(u"escape"_s, M::CancelButton, u"a"_s);
    row(u"close"_s, M::CancelButton, u"a"_s);
    row(u"change, ok"_s, M::OkButton, u"a"_s);
    row(u"change, pick B, ok"_s, M::OkButton, u"b"_s);
    row(u"change, pick B, pick C, ok"_s, M::OkButton, u"c"_s);
    row(u"change, escape, Open"_s, M::YesButton, u"a"_s);
    row(u"change, escape, Discard"_s, M::NoButton, u"a"_s);
    row(u"change, escape, escape"_s, M::CancelButton, u"a"_s);
    row(u"change, escape, close"_s, M::CancelButton, u"a"_s);
    row(u"change, pick B, escape, Open"_s, M::YesButton, u"a"_s);
    row(u"change, close"_s, M::CancelButton, u"a"_s);
    row(u"change, pick B, close"_s, M::CancelButton, u"a"_s);
    row(u"change, dismiss"_s, M::CancelButton, u"a"_s);
    row(u"change, pick B, dismiss"_s, M::CancelButton, u"a"_s);
    row(u"change, escape, change, ok"_s, M::OkButton, u"a"_s);
    row(u"change, pick B, escape, change, ok"_s, M::OkButton, u"a"_s);
    row(u"change, escape, change, pick C, ok"_s, M::OkButton, u"c"_s);
    row(u"change, escape, change, escape, escape"_s, M::CancelButton, u"a"_s);
    row(u"change, escape, change, pick C, escape, escape"_s, M::CancelButton, u"a"_s);
    row(u"change, escape, change, close"_s, M::CancelButton, u"a"_s);
    row(u"change, escape, change, escape, Discard"_s, M::NoButton, u"a"_s);
    row(u"change, escape, change, escape, change, pick B, ok"_s, M::OkButton, u"b"_s);
}

void TestNfcTagReadPermissionDialog::everyWayEndsInOneResult()
{
    QFETCH(QStringList, steps);
    QFETCH(int, result);
    QFETCH(QString, application);
    Shown shown(choiceOf({u"a"_s, u"b"_s, u"c"_s}));
    QVERIFY(shown.ready);
    QString applicationWhenFinished;
    connect(shown.dialog, &MDialog::finished, this,
            [&] { applicationWhenFinished = shown.dialog->selectedApplication(); });
    const QString last = steps.takeLast();
    for (const QString &step : std::as_const(steps)) {
        shown.step(step);
        QVERIFY2(!QTest::currentTestFailed(), qPrintable(step));
        QCOMPARE(shown.finished.size(), 0);
        QVERIFY(shown.dialog->isVisible());
        QCOMPARE(shown.selection() != nullptr, step == "change"_L1 || step.startsWith("pick "_L1));
    }
    shown.step(last);
    QCOMPARE(shown.finished, once(result));
    QCOMPARE(applicationWhenFinished, application);
    QCOMPARE(shown.dialog->selectedApplication(), application);
    QCOMPARE(shown.dialog->result(), result);
    QVERIFY(!shown.dialog->isVisible());
    QVERIFY(!shown.selection());
}

void TestNfcTagReadPermissionDialog::selectionStartsAtTheCurrentApplication()
{
    const Shown shown(choiceOf({u"a"_s, u"b"_s, u"c"_s}, u"c"_s));
    shown.press(change.text);
    QVERIFY(shown.selection());
    const auto rows = shownWidgets<MList>(shown.selection()).first()->selectionModel()->selectedRows();
    QCOMPARE(rows.size(), 1);
    QCOMPARE(rows.first().row(), 2);
}

void TestNfcTagReadPermissionDialog::selectionOfNothingKeepsTheApplication()
{
    expectMissing(u"missing"_s);
    const Shown shown(choiceOf({u"missing"_s, u"gone"_s}));
    for (const char *id : {"missing", "gone"}) {
        const QByteArray warning =
            "NfcApplicationSelectionDialog: No desktop file provided for '" + QByteArray(id) + "'";
        QTest::ignoreMessage(QtWarningMsg, warning.constData());
    }
    shown.press(change.text);
    shown.press(shown.selection(), u"OK"_s);
    QCOMPARE(shown.finished, once(M::OkButton));
    QCOMPARE(shown.dialog->selectedApplication(), u"missing"_s);
}

void TestNfcTagReadPermissionDialog::answeredQuestionTakesItsSelectionAway()
{
    const Shown shown(choiceOf({u"a"_s, u"b"_s}));
    shown.press(change.text);
    const QPointer<NfcApplicationSelectionDialog> selection = shown.selection();
    QVERIFY(selection);
    QSignalSpy selected(selection, &MDialog::finished);
    shown.dialog->reject();
    QCOMPARE(shown.finished, once(M::CancelButton));
    QCOMPARE(selected, once(M::CancelButton));
    QVERIFY(!shown.selection());
    QTRY_VERIFY(!selection);
    QCOMPARE(shown.finished.size(), 1);
}

void TestNfcTagReadPermissionDialog::deletedQuestionTakesItsSelectionAway()
{
    const Shown shown(choiceOf({u"a"_s, u"b"_s}));
    shown.press(change.text);
    const QPointer<NfcApplicationSelectionDialog> selection = shown.selection();
    QVERIFY(selection);
    delete shown.dialog;
    QVERIFY(!shown.selection());
    QCOMPARE(shown.finished.size(), 0);
    QTRY_VERIFY(!selection);
}

void TestNfcTagReadPermissionDialog::questionMayBeDeletedWhenItFinishes_data()
{
    QTest::addColumn<QStringList>("steps");
    for (const char *steps : {"Open", "escape", "close", "change, ok", "change, pick B, ok", "change, close"})
        QTest::newRow(steps) << QString::fromLatin1(steps).split(u", "_s);
}

void TestNfcTagReadPermissionDialog::questionMayBeDeletedWhenItFinishes()
{
    QFETCH(QStringList, steps);
    Shown shown(choiceOf({u"a"_s, u"b"_s}));
    connect(shown.dialog, &MDialog::finished, this, [&] { delete shown.dialog; });
    for (const QString &step : std::as_const(steps))
        shown.step(step);
    QVERIFY(!shown.dialog);
    QCOMPARE(shown.finished.size(), 1);
    QTRY_VERIFY(!shown.selection());
}

void TestNfcTagReadPermissionDialog::strangerIsNoSelection()
{
    const Shown shown(choiceOf({u"a"_s, u"b"_s}));
    MDialog stranger(M::OkButton);
    auto *companion = shown.dialog->findChild<NfcTagReadPermissionDialogPrivate *>();
    NfcTagReadPermissionDialogPrivate own(shown.dialog);
    QVERIFY(!companion);
    connect(&stranger, &MDialog::finished, &own,
            &NfcTagReadPermissionDialogPrivate::applicationSelectionFinished);
    QTest::ignoreMessage(QtWarningMsg,
                         "NfcTagReadPermissionDialog: Unable cast to NfcApplicationSelectionDialog");
    stranger.done(M::OkButton);
    QCOMPARE(shown.finished.size(), 0);
    QCOMPARE(shown.dialog->selectedApplication(), u"a"_s);
}

void TestNfcTagReadPermissionDialog::choosingClosesTheQuestion()
{
    const Shown shown(choiceOf({u"a"_s, u"b"_s}, u"b"_s));
    shown.dialog->applicationSelected();
    QCOMPARE(shown.finished, once(M::OkButton));
    QCOMPARE(shown.dialog->selectedApplication(), u"b"_s);
    QVERIFY(!shown.dialog->isVisible());
    shown.dialog->applicationSelected();
    QCOMPARE(shown.finished.size(), 1);
}

// A client's own dialog, which sees the lists that the other builders come to.
class Listening : public NfcTagReadPermissionDialog
{
public:
    Listening() : NfcTagReadPermissionDialog(u"text"_s) {}
    using NfcTagReadPermissionDialog::createContent;

    QList<QStringList> lists;

protected:
    void createContent(const QStringList &applications) override { lists.append(applications); }
};

void TestNfcTagReadPermissionDialog::buildersHandOverToTheChoice()
{
    Listening dialog;
    const URINDEFRecord mail = record("mailto:me@example.com");
    const URINDEFRecord nobodys = record("nobody:1");
    dialog.createContent(&mail, u"On the tag"_s);
    dialog.createContent(&nobodys, u"On the tag"_s);
    dialog.createContent(u"example.com:thing"_s, u"Hello"_s);
    dialog.createContent(u"example.com:thing"_s, u"%PDF-1.5"_s);
    dialog.createContent(u"image/jpeg"_s, QFileInfo(u"/nowhere/picture"_s));
    dialog.createContent(u"application/x-nobodys"_s, QFileInfo(u"/nowhere/picture"_s));
    QCOMPARE(dialog.lists, QList<QStringList>({{u"mailer"_s},
                                               {QString()},
                                               {u"editor"_s},
                                               {QString()},
                                               {u"org.example.Viewer"_s},
                                               {QString()}}));
}

// A client's own dialog that fills itself again.
class Refilled : public NfcTagReadPermissionDialog
{
public:
    Refilled() : NfcTagReadPermissionDialog({u"a"_s, u"b"_s}, u"b"_s)
    {
        createContent(QStringList{u"c"_s, u"b"_s});
        createContent(QStringList{u"c"_s, u"a"_s});
    }
};

void TestNfcTagReadPermissionDialog::changeButtonIsAddedOnce()
{
    const Shown shown([] { return new Refilled; });
    QCOMPARE(shown.dialog->selectedApplication(), u"c"_s);
    Content expected = offer(u"c"_s, u"C"_s);
    QCOMPARE(shown.lines(), expected.lines);
    QCOMPARE(shown.buttons(), expected.buttons + QList<Button>{change});
}

void TestNfcTagReadPermissionDialog::changeButtonShowsOneVariant()
{
    Shown shown(choiceOf({u"a"_s, u"b"_s}));
    QVERIFY(shown.ready);
    const auto picture = [&shown] { return shown.window.grab().toImage(); };
    const QImage whole = picture();
    MButtonModel *button = shown.dialog->buttons().last();
    button->setText(button->text().section(M::lengthVariantSeparator, 0, 0));
    QCoreApplication::processEvents();
    QCOMPARE(picture(), whole);
}

QTEST_MAIN(TestNfcTagReadPermissionDialog)
#include "tst_nfctagreadpermissiondialog.moc"
