// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

// What a tag, a peer or an installed file may say at its worst. The question must still be there to be
// answered, and tell either what will be opened or by which application.
#include <ctime>
#include <functional>
#include <memory>
#include <sys/stat.h>

#include <QSignalSpy>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

#include <MButton>
#include <MButtonModel>
#include <MLabel>
#include <MWindow>
#include <NfcApplicationSelectionDialog>
#include <NfcPairingDialog>
#include <NfcSharingPermissionDialog>
#include <NfcTagReadPermissionDialog>
#include <URINDEFRecord>

#include "applicationsfolder.h"
#include "catalogue.h"
#include "shownwidgets.h"

using namespace ConnUi;
using namespace Qt::StringLiterals;

using Make = std::function<MDialog *()>;
Q_DECLARE_METATYPE(Make)

namespace {

Make uriOf(const QByteArray &uri, const QString &description = {})
{
    return [=] {
        const URINDEFRecord record('\0' + uri);
        return new NfcTagReadPermissionDialog(&record, description);
    };
}

Make choiceOf(const QStringList &applications)
{
    return [=] { return new NfcTagReadPermissionDialog(applications, applications.constFirst()); };
}

void writeFile(const QString &path, const QByteArray &content)
{
    QFile file(path);
    if (!file.open(QFile::WriteOnly) || file.write(content) != content.size())
        qFatal("unable to write %s", qPrintable(path));
}

void expectMissing(const QByteArray &application)
{
    QTest::ignoreMessage(
        QtWarningMsg, "NfcTagReadPermissionDialog: No desktop file provided for application " + application);
}

// The dialog on the screen of a phone.
class Shown
{
public:
    explicit Shown(const Make &make) : dialog(make())
    {
        window.resize(480, 854);
        window.show();
        dialog->appear(&window);
        QCoreApplication::processEvents();
        window.grab();
    }

    QStringList texts() const { return shownTexts<MLabel>(dialog.get()); }

    // Whether a person can read the question from where it begins.
    bool beginsOnScreen() const
    {
        const QList<MLabel *> labels = shownWidgets<MLabel>(dialog.get());
        if (labels.isEmpty() || labels.constFirst()->text().isEmpty())
            return false;
        const QPointF corner = labels.constFirst()->mapToScene(QPointF());
        return window.viewport()->rect().contains(window.mapFromScene(corner));
    }

    // Answers by touching the last button, where a finger finds it; returns whether that ended the question.
    bool refuse()
    {
        QSignalSpy finished(dialog.get(), &MDialog::finished);
        const QList<MButton *> buttons = shownWidgets<MButton>(dialog.get());
        for (const MButton *button : buttons) {
            const QPoint place = window.mapFromScene(button->mapToScene(button->rect().center()));
            if (!window.viewport()->rect().contains(place))
                return false;
            if (button == buttons.constLast())
                QTest::mouseClick(window.viewport(), Qt::LeftButton, {}, place);
        }
        return finished.count() == 1;
    }

    MWindow window;
    std::unique_ptr<MDialog> dialog;
};

// What a mebibyte of plain words takes until it is on the screen, in processor time.
std::clock_t plainTime()
{
    static const std::clock_t time = [] {
        const std::clock_t start = std::clock();
        const Shown shown([] { return new NfcTagReadPermissionDialog(u"word "_s.repeated(0x100000 / 5)); });
        return std::clock() - start;
    }();
    return time;
}

QStringList schemes()
{
    QFile file(QFINDTESTDATA("uri-schemes"));
    if (!file.open(QFile::ReadOnly))
        qFatal("no list of schemes");
    QStringList names = QString::fromLatin1(file.readAll()).split(u'\n', Qt::SkipEmptyParts);
    names.removeIf([](const QString &line) { return line.startsWith(u'#'); });
    return names;
}

// Texts made to mislead, to break a line of the log or to keep the machine busy.
QList<QPair<const char *, QString>> hostileTexts()
{
    QString controls;
    for (char16_t c = 1; c < 0xa0; c = c == 0x1f ? 0x7f : c + 1)
        controls += u'x' + QChar(c);
    QString noCharacters;
    for (char16_t c : {0xd800, 0xdfff, 0xfffe, 0xffff, 0xfdd0, 0xe000, 0xfeff, 0xfff9, 0xfffa, 0xfffb})
        noCharacters += u'x' + QChar(c);
    return {
        {"markup", u"<b>Bank</b><img src='file:///etc/passwd'><a href=\"http://evil\">here</a>&amp;"_s},
        {"controls", controls},
        {"no characters", noCharacters},
        {"placeholders", u"%1%2%n%L1%%s%s%n"_s},
        {"bidi overrides", u"photo\u202egpj.exe\u2066\u2067\u2068\u202a\u202b"_s},
        {"unbalanced bidi", u"\u202e\u202b\u2067"_s.repeated(2000) + u"x"_s},
        {"zero width", u"b\u200ba\u200cn\u200dk\u2060"_s.repeated(1000)},
        {"only zero width", u"\u200b"_s.repeated(10000)},
        {"combining", u"a"_s + u"\u0301\u0489\u20dd"_s.repeated(3000)},
        {"joined pictures", u"\U0001F468\u200d\U0001F469\u200d"_s.repeated(1000)},
        {"tags", u"x\U000E0001\U000E0065\U000E006E\U000E007F"_s.repeated(100)},
        {"lines", u"\r\n\u2028\u2029\v\f\u0085"_s.repeated(1000)},
        {"one word", QString(0x10000, u'w')},
        {"variants", u"x\u009c"_s.repeated(1000)},
        {"wide", u"\ufdfd\u12031\U0001242B"_s.repeated(500)},
        {"blank", u" \u00a0\u3000\u2800\u3164\u115f"_s.repeated(100)},
    };
}

QList<QPair<const char *, std::function<MDialog *(const QString &)>>> places()
{
    return {
        {"text", [](const QString &text) { return new NfcTagReadPermissionDialog(text); }},
        {"link", [](const QString &text) { return uriOf("http://example.org/" + text.toUtf8())(); }},
        {"description", [](const QString &text) { return uriOf("http://example.org", text)(); }},
        {"number", [](const QString &text) { return uriOf("tel:" + text.toUtf8())(); }},
        {"message", [](const QString &text) { return uriOf("sms:1?body=" + text.toUtf8())(); }},
        {"store",
         [](const QString &text) { return new NfcTagReadPermissionDialog(u"ruvostore:link"_s, text); }},
        {"device",
         [](const QString &text) {
             auto *dialog = new NfcPairingDialog(0x240404);
             dialog->setText(text);
             return dialog;
         }},
        {"file", [](const QString &text) { return new NfcSharingPermissionDialog({u"/nowhere/"_s + text}); }},
    };
}

} // namespace

class TestHostileInput : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();

    void linkIsShownOrItsApplicationNamed();
    void linkOfNobodyPromisesNothing();
    void questionCanBeAnswered_data();
    void questionCanBeAnswered();
    void listOfManyApplicationsCanBeAnswered();
    void uselessDesktopFileNamesNobody_data();
    void uselessDesktopFileNamesNobody();
    void linkThatLeadsNowhereNamesNobody_data();
    void linkThatLeadsNowhereNamesNobody();
    void uselessIconLeavesTheQuestion_data();
    void uselessIconLeavesTheQuestion();
    void iconThatIsNoFileIsNotOpened_data();
    void iconThatIsNoFileIsNotOpened();
    void uselessCardIsAskedAbout_data();
    void uselessCardIsAskedAbout();

private:
    const Catalogue english;
    ApplicationsFolder applications;
    QTemporaryDir folder;
};

void TestHostileInput::initTestCase()
{
    applications.install(u"opener"_s, u"Opener"_s, u"icon-m-content-url-inverse"_s);
    QByteArray defaults = "[Default Applications]\n";
    const QStringList names = schemes();
    QVERIFY(names.size() > 350);
    for (const QString &scheme : names)
        defaults += "x-scheme-handler/" + scheme.toLatin1() + "=opener.desktop\n";
    writeFile(QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + u"/mimeapps.list"_s,
              defaults);
}

void TestHostileInput::init()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
}

void TestHostileInput::linkIsShownOrItsApplicationNamed()
{
    const QStringList names = schemes();
    for (const QString &scheme : names) {
        const QString rest = u"//user@example.org:1/a?b=c#d"_s;
        const Shown shown(uriOf((scheme + u':' + rest).toUtf8()));
        const QString all = shown.texts().join(u'|');
        const bool isNumber = scheme == u"tel"_s || scheme == u"callto"_s;
        const QString expected = scheme.startsWith(u"http"_s) ? scheme + u':' + rest
                                 : isNumber                   ? rest
                                 : scheme == u"sms"_s         ? u"/a"_s
                                                              : u"Open with Opener?"_s;
        QVERIFY2(all.contains(expected), qPrintable(scheme + u": "_s + all));
    }
}

void TestHostileInput::linkOfNobodyPromisesNothing()
{
    for (const QByteArray &uri : {"x-unknown:1"_ba, "HTTPX:1"_ba, "1x:1"_ba, ":"_ba, "::"_ba, "//:"_ba,
                                  "\xff\xfe:1"_ba, "%00:1"_ba}) {
        expectMissing({});
        Shown shown(uriOf(uri));
        QCOMPARE(shown.texts(), QStringList(u"Tag content"_s));
        QVERIFY(shown.refuse());
    }
}

void TestHostileInput::questionCanBeAnswered_data()
{
    QTest::addColumn<Make>("make");
    const auto texts = hostileTexts();
    for (const auto &[place, makeOf] : places()) {
        for (const auto &[name, text] : texts)
            QTest::addRow("%s as %s", name, place)
                << Make([makeOf = makeOf, text = text] { return makeOf(text); });
    }
    QTest::newRow("words of a mebibyte")
        << Make([] { return new NfcTagReadPermissionDialog(u"word "_s.repeated(0x100000 / 5)); });
    QTest::newRow("a word of a mebibyte")
        << Make([] { return new NfcTagReadPermissionDialog(QString(0x100000, u'w')); });
    QTest::newRow("accents of a mebibyte")
        << Make([] { return new NfcTagReadPermissionDialog(u'a' + QString(0x80000, u'\u0301')); });
}

void TestHostileInput::questionCanBeAnswered()
{
    QFETCH(Make, make);
    const std::clock_t plain = plainTime();
    const std::clock_t start = std::clock();
    Shown shown(make);
    const std::clock_t taken = std::clock() - start;
    // Most take a hundredth of it.
    QVERIFY2(taken < 3 * plain, qPrintable(u"%1 times as long as plain words"_s.arg(double(taken) / plain)));
    QVERIFY(shown.beginsOnScreen());
    QVERIFY(shown.refuse());
}

void TestHostileInput::listOfManyApplicationsCanBeAnswered()
{
    QStringList ids;
    for (int i = 0; i < 2000; ++i) {
        ids.append(u"application%1"_s.arg(i));
        applications.install(ids.constLast(), u"Application %1"_s.arg(i), u"icon-m-content-url-inverse"_s);
    }
    {
        Shown shown(choiceOf(ids));
        QVERIFY(shown.texts().contains(u"Open with Application 0?"_s));
    }
    auto *selection = new NfcApplicationSelectionDialog(ids, 1999);
    Shown shown([selection] { return selection; });
    selection->button(M::OkButton)->click();
    QCOMPARE(selection->selectedApplication(), u"application1999"_s);
}

void TestHostileInput::uselessDesktopFileNamesNobody_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("nothing") << QByteArray();
    QTest::newRow("zeros") << QByteArray(4096, '\0');
    QTest::newRow("no group") << QByteArray("Name=A\nIcon=a\n");
    QTest::newRow("not UTF-8") << QByteArray("[Desktop Entry]\nName=\xff\xfe\nIcon=a\n");
    QTest::newRow("huge") << "[Desktop Entry]\nIcon=a\nName=" + QByteArray(2 << 20, 'A') + '\n';
    QTest::newRow("many groups") << QByteArray("[a]\n").repeated(100000);
    QTest::newRow("many languages") << "[Desktop Entry]\n" + QByteArray("Name[x]=A\n").repeated(50000);
}

void TestHostileInput::uselessDesktopFileNamesNobody()
{
    QFETCH(QByteArray, content);
    applications.write(u"useless"_s, content);
    Shown shown(choiceOf({u"useless"_s}));
    QCOMPARE(shown.texts(), QStringList(u"Tag content"_s));
    QVERIFY(shown.refuse());
}

void TestHostileInput::linkThatLeadsNowhereNamesNobody_data()
{
    QTest::addColumn<QString>("goal");
    const QString applicationsFolder = u"/usr/share/applications/"_s;
    QTest::newRow("itself") << applicationsFolder + u"link.desktop"_s;
    QTest::newRow("circle") << applicationsFolder + u"circle.desktop"_s;
    QTest::newRow("nothing") << u"/nowhere"_s;
    QTest::newRow("folder") << u"/"_s;
    QTest::newRow("endless") << u"/dev/zero"_s;
    QTest::newRow("terminal") << u"/dev/tty"_s;
}

void TestHostileInput::linkThatLeadsNowhereNamesNobody()
{
    QFETCH(QString, goal);
    const QString link = u"/usr/share/applications/link.desktop"_s;
    const QString circle = u"/usr/share/applications/circle.desktop"_s;
    QVERIFY(QFile::link(goal, link) && QFile::link(link, circle));
    expectMissing("link");
    Shown shown(choiceOf({u"link"_s}));
    QCOMPARE(shown.texts(), QStringList(u"Tag content"_s));
    QVERIFY(shown.refuse());
    QVERIFY(QFile::remove(link) && QFile::remove(circle));
}

void TestHostileInput::uselessIconLeavesTheQuestion_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QByteArray>("warning");
    const auto row = [](const char *name, const QByteArray &content, const QByteArray &warning = {}) {
        QTest::newRow(name) << content << warning;
    };
    const QByteArray svg =
        "<svg xmlns='http://www.w3.org/2000/svg' xmlns:xlink='http://www.w3.org/1999/xlink' ";
    row("nothing", QByteArray());
    row("no picture", QByteArray(1000000, 'x'));
    // 100000 pixels each way, in a file of a few bytes.
    row("huge PNG",
        QByteArray::fromHex("89504e470d0a1a0a0000000d49484452000186a0000186a00806000000a8520bc80000000c494441"
                            "54789c6360a03d00000064000186643c350000000049454e44ae426082"),
        "QImageIOHandler: Rejecting image as it exceeds the current allocation limit of 128 megabytes");
    row("huge SVG", svg + "width='1000000' height='1000000'><rect width='9' height='9'/></svg>");
    row("deep SVG", svg + "width='64' height='64'>" + QByteArray("<g>").repeated(100000));

    QByteArray entities = "<!DOCTYPE svg [<!ENTITY e0 'aaaaaaaaaa'>";
    QByteArray uses = "<g id='a0'><rect width='9' height='9'/></g>";
    for (int i = 1; i < 10; ++i) {
        const QByteArray number = QByteArray::number(i);
        const QByteArray before = QByteArray::number(i - 1);
        entities += "<!ENTITY e" + number + " '" + ("&e" + before + ';').repeated(10) + "'>";
        uses += "<g id='a" + number + "'>" + ("<use xlink:href='#a" + before + "'/>").repeated(10) + "</g>";
    }
    row("SVG that grows",
        "<?xml version='1.0'?>" + entities + "]>" + svg + "width='64' height='64'><text>&e9;</text></svg>");
    row("SVG that repeats", svg + "width='64' height='64'>" + uses + "</svg>");
    row("SVG of itself", svg + "width='64' height='64'><g id='a'><use xlink:href='#b'/></g>"
                               "<g id='b'><use xlink:href='#a'/></g></svg>");
    row("SVG of others",
        svg + "width='64' height='64'><image width='9' height='9' "
              "xlink:href='file:///dev/zero'/></svg>",
        "Could not create image from \"file:///dev/zero\"");
}

void TestHostileInput::uselessIconLeavesTheQuestion()
{
    QFETCH(QByteArray, content);
    QFETCH(QByteArray, warning);
    if (!warning.isEmpty())
        QTest::ignoreMessage(QtWarningMsg, warning.constData());
    const QString path = folder.filePath(u"icon"_s);
    writeFile(path, content);
    applications.install(u"painted"_s, u"Painted"_s, path);
    Shown shown(choiceOf({u"painted"_s}));
    QCOMPARE(shown.texts(), QStringList({u"Tag content"_s, u"Open with Painted?"_s}));
    QVERIFY(shown.refuse());
}

void TestHostileInput::iconThatIsNoFileIsNotOpened_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("endless") << u"/dev/zero"_s;
    QTest::newRow("folder") << folder.path();
    const QString pipe = folder.filePath(u"pipe"_s);
    QCOMPARE(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    QTest::newRow("pipe") << pipe;
}

void TestHostileInput::iconThatIsNoFileIsNotOpened()
{
    QFETCH(QString, path);
    applications.install(u"painted"_s, u"Painted"_s, path);
    Shown shown(choiceOf({u"painted"_s}));
    QCOMPARE(shown.texts(), QStringList({u"Tag content"_s, u"Open with Painted?"_s}));
    QVERIFY(shown.refuse());
}

void TestHostileInput::uselessCardIsAskedAbout_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<qint64>("size");
    QTest::addColumn<QByteArray>("problem");
    const auto row = [](const char *name, const QByteArray &content, const QByteArray &problem = {}) {
        QTest::newRow(name) << content << qint64(content.size()) << problem;
    };
    // Mostly holes, which the file system keeps for itself.
    QTest::newRow("100 MB") << QByteArray("BEGIN:VCARD\n") << qint64(100000000)
                            << QByteArray("too large for a contact card");
    row("no card", "END:VCARD", "not a contact card");
    row("zeros", "BEGIN:VCARD\nN:" + QByteArray(100000, '\0') + ";a\nEND:VCARD\n");
    const QByteArray tooMany = "too many parts for a contact card";
    row("parts", "BEGIN:VCARD\nN:" + QByteArray(1000000, ';') + "\nEND:VCARD\n", tooMany);
    row("parameters", "BEGIN:VCARD\nN;A=1" + QByteArray(",1").repeated(500000) + ":x\nEND:VCARD\n", tooMany);
    row("soft breaks",
        "BEGIN:VCARD\nN;ENCODING=QUOTED-PRINTABLE:" + QByteArray("=\n").repeated(500000) + "\nEND:VCARD\n",
        tooMany);
    row("folds", "BEGIN:VCARD\nN:a" + QByteArray("\n \xcc\x81").repeated(20000) + ";b\nEND:VCARD\n");
    row("attributes", "BEGIN:VCARD\n" + QByteArray("X:1\n").repeated(50000) + "END:VCARD\n");
    row("nested", QByteArray("BEGIN:VCARD\n").repeated(50000));
}

void TestHostileInput::uselessCardIsAskedAbout()
{
    QFETCH(QByteArray, content);
    QFETCH(qint64, size);
    QFETCH(QByteArray, problem);
    const QString path = folder.filePath(u"card.vcf"_s);
    writeFile(path, content);
    QVERIFY(QFile::resize(path, size));
    if (!problem.isEmpty())
        QTest::ignoreMessage(QtWarningMsg,
                             "ContactExporter: unable to read " + path.toUtf8() + ": " + problem);
    Shown shown([&path] { return new NfcTagReadPermissionDialog(u"text/x-vcard"_s, QFileInfo(path)); });
    QCOMPARE(shown.texts().value(0), u"Contact on tag"_s);
    QVERIFY(shown.refuse());
}

QTEST_MAIN(TestHostileInput)

#include "tst_hostileinput.moc"
