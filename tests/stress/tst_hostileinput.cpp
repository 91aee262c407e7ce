// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

// The worst content of a tag, a peer or an installed file. The question must still be there to be
// answered, and show either what will be opened or by which application.
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

    // Whether a user can read the question from where it begins.
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

// The processor time of a mebibyte of plain words until it is on the screen.
std::clock_t plainTime()
{
    static const std::clock_t time = [] {
        const std::clock_t start = std::clock();
        const Shown shown(
            [] { return new NfcTagReadPermissionDialog(QStringLiteral("word ").repeated(0x100000 / 5)); });
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
        {"markup",
         QStringLiteral("<b>Bank</b><img src='file:///etc/passwd'><a href=\"http://evil\">here</a>&amp;")},
        {"controls", controls},
        {"no characters", noCharacters},
        {"placeholders", QStringLiteral("%1%2%n%L1%%s%s%n")},
        {"bidi overrides", QStringLiteral("photo\u202egpj.exe\u2066\u2067\u2068\u202a\u202b")},
        {"unbalanced bidi", QStringLiteral("\u202e\u202b\u2067").repeated(2000) + QStringLiteral("x")},
        {"zero width", QStringLiteral("b\u200ba\u200cn\u200dk\u2060").repeated(1000)},
        {"only zero width", QStringLiteral("\u200b").repeated(10000)},
        {"combining", QStringLiteral("a") + QStringLiteral("\u0301\u0489\u20dd").repeated(3000)},
        {"joined pictures", QStringLiteral("\U0001F468\u200d\U0001F469\u200d").repeated(1000)},
        {"tags", QStringLiteral("x\U000E0001\U000E0065\U000E006E\U000E007F").repeated(100)},
        {"lines", QStringLiteral("\r\n\u2028\u2029\v\f\u0085").repeated(1000)},
        {"one word", QString(0x10000, u'w')},
        {"variants", QStringLiteral("x\u009c").repeated(1000)},
        {"wide", QStringLiteral("\ufdfd\u12031\U0001242B").repeated(500)},
        {"blank", QStringLiteral(" \u00a0\u3000\u2800\u3164\u115f").repeated(100)},
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
         [](const QString &text) {
             return new NfcTagReadPermissionDialog(QStringLiteral("ruvostore:link"), text);
         }},
        {"device",
         [](const QString &text) {
             auto *dialog = new NfcPairingDialog(0x240404);
             dialog->setText(text);
             return dialog;
         }},
        {"file",
         [](const QString &text) {
             return new NfcSharingPermissionDialog({QStringLiteral("/nowhere/") + text});
         }},
    };
}

// Returns the text that a question about a link shows.
QString shownOf(const QString &scheme, const QString &rest)
{
    if (scheme.startsWith(QStringLiteral("http")))
        return scheme + u':' + rest;
    if (scheme == QStringLiteral("tel") || scheme == QStringLiteral("callto"))
        return rest;
    return scheme == QStringLiteral("sms") ? QStringLiteral("/a") : QStringLiteral("Open with Opener?");
}

} // namespace

class TestHostileInput : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();

    void linkIsShownOrItsApplicationNamed();
    void linkWithoutApplicationPromisesNothing();
    void questionCanBeAnswered_data();
    void questionCanBeAnswered();
    void listOfManyApplicationsCanBeAnswered();
    void uselessDesktopFileNamesNoApplication_data();
    void uselessDesktopFileNamesNoApplication();
    void symbolicLinkThatLeadsNowhereNamesNoApplication_data();
    void symbolicLinkThatLeadsNowhereNamesNoApplication();
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
    applications.install(QStringLiteral("opener"), QStringLiteral("Opener"),
                         QStringLiteral("icon-m-content-url-inverse"));
    QByteArray defaults = "[Default Applications]\n";
    const QStringList names = schemes();
    QVERIFY(names.size() > 350);
    for (const QString &scheme : names)
        defaults += "x-scheme-handler/" + scheme.toLatin1() + "=opener.desktop\n";
    writeFile(QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
                  QStringLiteral("/mimeapps.list"),
              defaults);
}

void TestHostileInput::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
}

void TestHostileInput::linkIsShownOrItsApplicationNamed()
{
    const QStringList names = schemes();
    for (const QString &scheme : names) {
        const QString rest = QStringLiteral("//user@example.org:1/a?b=c#d");
        const Shown shown(uriOf((scheme + u':' + rest).toUtf8()));
        const QString all = shown.texts().join(u'|');
        const QString expected = shownOf(scheme, rest);
        QVERIFY2(all.contains(expected), qPrintable(scheme + QStringLiteral(": ") + all));
    }
}

void TestHostileInput::linkWithoutApplicationPromisesNothing()
{
    for (const QByteArray &uri :
         {QByteArray("x-unknown:1"), QByteArray("HTTPX:1"), QByteArray("1x:1"), QByteArray(":"),
          QByteArray("::"), QByteArray("//:"), QByteArray("\xff\xfe:1"), QByteArray("%00:1")}) {
        expectMissing({});
        Shown shown(uriOf(uri));
        QCOMPARE(shown.texts(), QStringList(QStringLiteral("Tag content")));
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
    QTest::newRow("words of a mebibyte") << Make(
        [] { return new NfcTagReadPermissionDialog(QStringLiteral("word ").repeated(0x100000 / 5)); });
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
    QVERIFY2(taken < 3 * plain,
             qPrintable(QStringLiteral("%1 times as long as plain words").arg(double(taken) / plain)));
    QVERIFY(shown.beginsOnScreen());
    QVERIFY(shown.refuse());
}

void TestHostileInput::listOfManyApplicationsCanBeAnswered()
{
    QStringList ids;
    for (int i = 0; i < 2000; ++i) {
        ids.append(QStringLiteral("application%1").arg(i));
        applications.install(ids.constLast(), QStringLiteral("Application %1").arg(i),
                             QStringLiteral("icon-m-content-url-inverse"));
    }
    {
        Shown shown(choiceOf(ids));
        QVERIFY(shown.texts().contains(QStringLiteral("Open with Application 0?")));
    }
    auto *selection = new NfcApplicationSelectionDialog(ids, 1999);
    Shown shown([selection] { return selection; });
    selection->button(M::OkButton)->click();
    QCOMPARE(selection->selectedApplication(), QStringLiteral("application1999"));
}

void TestHostileInput::uselessDesktopFileNamesNoApplication_data()
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

void TestHostileInput::uselessDesktopFileNamesNoApplication()
{
    QFETCH(QByteArray, content);
    applications.write(QStringLiteral("useless"), content);
    Shown shown(choiceOf({QStringLiteral("useless")}));
    QCOMPARE(shown.texts(), QStringList(QStringLiteral("Tag content")));
    QVERIFY(shown.refuse());
}

void TestHostileInput::symbolicLinkThatLeadsNowhereNamesNoApplication_data()
{
    QTest::addColumn<QString>("goal");
    const QString applicationsFolder = QStringLiteral("/usr/share/applications/");
    QTest::newRow("itself") << applicationsFolder + QStringLiteral("link.desktop");
    QTest::newRow("circle") << applicationsFolder + QStringLiteral("circle.desktop");
    QTest::newRow("nothing") << QStringLiteral("/nowhere");
    QTest::newRow("folder") << QStringLiteral("/");
    QTest::newRow("endless") << QStringLiteral("/dev/zero");
    QTest::newRow("terminal") << QStringLiteral("/dev/tty");
}

void TestHostileInput::symbolicLinkThatLeadsNowhereNamesNoApplication()
{
    QFETCH(QString, goal);
    const QString link = QStringLiteral("/usr/share/applications/link.desktop");
    const QString circle = QStringLiteral("/usr/share/applications/circle.desktop");
    QVERIFY(QFile::link(goal, link) && QFile::link(link, circle));
    expectMissing("link");
    Shown shown(choiceOf({QStringLiteral("link")}));
    QCOMPARE(shown.texts(), QStringList(QStringLiteral("Tag content")));
    QVERIFY(shown.refuse());
    QVERIFY(QFile::remove(link) && QFile::remove(circle));
}

void TestHostileInput::uselessIconLeavesTheQuestion_data()
{
    QTest::addColumn<QByteArray>("content");
    const auto row = [](const char *name, const QByteArray &content) { QTest::newRow(name) << content; };
    const QByteArray svg =
        "<svg xmlns='http://www.w3.org/2000/svg' xmlns:xlink='http://www.w3.org/1999/xlink' ";
    row("nothing", QByteArray());
    row("no picture", QByteArray(1000000, 'x'));
    // 100000 pixels each way, in a file of a few bytes.
    row("huge PNG",
        QByteArray::fromHex("89504e470d0a1a0a0000000d49484452000186a0000186a00806000000a8520bc80000000c494441"
                            "54789c6360a03d00000064000186643c350000000049454e44ae426082"));
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
    row("SVG of others", svg + "width='64' height='64'><image width='9' height='9' "
                               "xlink:href='file:///dev/zero'/></svg>");
}

void TestHostileInput::uselessIconLeavesTheQuestion()
{
    QFETCH(QByteArray, content);
    const QString path = folder.filePath(QStringLiteral("icon"));
    writeFile(path, content);
    applications.install(QStringLiteral("painted"), QStringLiteral("Painted"), path);
    Shown shown(choiceOf({QStringLiteral("painted")}));
    QCOMPARE(shown.texts(),
             QStringList({QStringLiteral("Tag content"), QStringLiteral("Open with Painted?")}));
    QVERIFY(shown.refuse());
}

void TestHostileInput::iconThatIsNoFileIsNotOpened_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("endless") << QStringLiteral("/dev/zero");
    QTest::newRow("folder") << folder.path();
    const QString pipe = folder.filePath(QStringLiteral("pipe"));
    QCOMPARE(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    QTest::newRow("pipe") << pipe;
}

void TestHostileInput::iconThatIsNoFileIsNotOpened()
{
    QFETCH(QString, path);
    applications.install(QStringLiteral("painted"), QStringLiteral("Painted"), path);
    Shown shown(choiceOf({QStringLiteral("painted")}));
    QCOMPARE(shown.texts(),
             QStringList({QStringLiteral("Tag content"), QStringLiteral("Open with Painted?")}));
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
    row("parts", "BEGIN:VCARD\nN:" + QByteArray(1000000, ';') + "\nEND:VCARD\n",
        "too many parts for a contact card");
    row("parameters", "BEGIN:VCARD\nN;A=1" + QByteArray(",1").repeated(500000) + ":x\nEND:VCARD\n");
    row("soft breaks",
        "BEGIN:VCARD\nN;ENCODING=QUOTED-PRINTABLE:" + QByteArray("=\n").repeated(500000) + "\nEND:VCARD\n");
    row("folds", "BEGIN:VCARD\nN:a" + QByteArray("\n \xcc\x81").repeated(20000) + ";b\nEND:VCARD\n");
    row("attributes", "BEGIN:VCARD\n" + QByteArray("X:1\n").repeated(50000) + "END:VCARD\n");
    row("nested", QByteArray("BEGIN:VCARD\n").repeated(50000));
}

void TestHostileInput::uselessCardIsAskedAbout()
{
    QFETCH(QByteArray, content);
    QFETCH(qint64, size);
    QFETCH(QByteArray, problem);
    const QString path = folder.filePath(QStringLiteral("card.vcf"));
    writeFile(path, content);
    QVERIFY(QFile::resize(path, size));
    if (!problem.isEmpty())
        QTest::ignoreMessage(QtWarningMsg,
                             "ContactExporter: unable to read " + path.toUtf8() + ": " + problem);
    Shown shown(
        [&path] { return new NfcTagReadPermissionDialog(QStringLiteral("text/x-vcard"), QFileInfo(path)); });
    QCOMPARE(shown.texts().value(0), QStringLiteral("Contact on tag"));
    QVERIFY(shown.refuse());
}

QTEST_MAIN(TestHostileInput)

#include "tst_hostileinput.moc"
