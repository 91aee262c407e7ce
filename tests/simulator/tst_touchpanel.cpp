// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <algorithm>
#include <limits>
#include <memory>

#include <QDBusConnection>
#include <QLabel>
#include <QPushButton>
#include <QRegularExpression>
#include <QScrollBar>
#include <QTest>
#include <QTextBlock>
#include <QTextEdit>

#include "fakeservice.h"
#include "panel/touchpanel.h"

namespace {

constexpr QLatin1String adapter("com.tavix.nfc.Adapter");

} // namespace

class TestTouchPanel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void everyButtonMakesItsCall_data();
    void everyButtonMakesItsCall();
    void buttonsStandInTheirGroups();
    void resultOfATouchIsShown();
    void resultIsNeverFormatted();
    void touchStartsNoDaemon();
    void daemonIsStartedOnDemand();
    void transcriptAlignsCallsAndAnswers();
    void transcriptTellsTheDaemonByItsColor();
    void transcriptIsClearedOnDemand();
    void transcriptKeepsTheNewest();
    void transcriptFollowsTheEndUntilScrolledAway();
    void narrowPanelIsStacked();
    void labelsAreWhole();
    void panelSaysWhatItIsFor();

private:
    QPushButton *button(const QString &label) const;
    QLabel *result() const;
    QStringList lines() const;
    void announce(const QString &member, int times = 1);
    void listen();

    std::unique_ptr<FakeService> daemon;
    std::unique_ptr<TouchPanel> panel;
    QTextEdit *transcript = nullptr;
};

void TestTouchPanel::init()
{
    QTest::failOnWarning(QRegularExpression(QStringLiteral(".*")));
    daemon = std::make_unique<FakeService>(QDBusConnection::SystemBus, QStringLiteral("com.tavix.nfc"));
    panel = std::make_unique<TouchPanel>();
    panel->show();
    transcript = panel->findChild<QTextEdit *>();
}

void TestTouchPanel::cleanup()
{
    panel.reset();
    daemon.reset();
}

QPushButton *TestTouchPanel::button(const QString &label) const
{
    const QList<QPushButton *> all = panel->findChildren<QPushButton *>();
    const auto found = std::find_if(all.begin(), all.end(),
                                    [&label](const QPushButton *one) { return one->text() == label; });
    return found == all.end() ? nullptr : *found;
}

// The only label with words of the daemon's.
QLabel *TestTouchPanel::result() const
{
    const QList<QLabel *> all = panel->findChildren<QLabel *>();
    const auto found =
        std::find_if(all.begin(), all.end(), [](const QLabel *one) { return one->wordWrap(); });
    return found == all.end() ? nullptr : *found;
}

QStringList TestTouchPanel::lines() const
{
    return transcript->toPlainText().split(QLatin1Char('\n'));
}

void TestTouchPanel::announce(const QString &member, int times)
{
    daemon->emitSignal(QStringLiteral("/"), adapter, member, {}, times);
}

// Returns when the panel hears what is said from then on, and shows nothing yet.
void TestTouchPanel::listen()
{
    daemon->start();
    const auto isHeard = [this] {
        announce(QStringLiteral("Mark"));
        return QTest::qWaitFor([this] { return !transcript->document()->isEmpty(); }, 200);
    };
    QTRY_VERIFY_WITH_TIMEOUT(isHeard(), 30000);
    announce(QStringLiteral("LastMark"));
    QTRY_VERIFY(transcript->toPlainText().endsWith(QStringLiteral("LastMark")));
    transcript->clear();
}

void TestTouchPanel::everyButtonMakesItsCall_data()
{
    QTest::addColumn<QString>("member");
    QTest::addColumn<QVariantList>("arguments");
    const auto add = [](const char *label, const char *member, const QVariantList &arguments = {}) {
        QTest::newRow(label) << QString::fromLatin1(member) << arguments;
    };
    const auto bytes = [](const char *hex, const char *text = "") {
        return QVariantList{QByteArray::fromHex(hex) + text};
    };
    add("Web link", "TouchTag", bytes("d1011055 02", "example.org/nfc"));
    add("Phone number", "TouchTag", bytes("d1010a55 05", "+15550100"));
    add("Message", "TouchTag", bytes("d1011e55 00", "sms:+15550100?body=Hi%20there"));
    add("Text", "TouchTag", bytes("d1011854 02 656e", "Welcome to the museum"));
    add("Contact card", "TouchTag",
        bytes("d20c43",
              "text/x-vcardBEGIN:VCARD\r\nVERSION:3.0\r\nN:Byron;Ada;;;\r\nFN:Ada Byron\r\nEND:VCARD\r\n"));
    add("Notes", "TouchTag", bytes("d2130b", "application/x-notesmilk, bread"));
    add("Empty tag", "TouchTag", bytes("d00000"));
    const QVariantList headset = {QStringLiteral("00:16:41:7A:0F:11"), QStringLiteral("Headset"), 0x240404U};
    add("Pair", "TouchToPair", headset + QVariantList{QStringLiteral("1234")});
    add("Connect", "TouchToConnect", headset);
    add("Disconnect", "TouchToDisconnect", headset);
    add("Send a file", "TouchToShare", {QStringList{QStringLiteral("/beach.txt")}});
    add("Choose what to send", "TouchToSelect");
    add("Handover", "TouchForHandover", {QStringLiteral("bluetooth")});
    add("Receive 5 MB", "ReceiveFile",
        {QStringLiteral("beach.jpg"), 5000000ULL, 500000ULL, std::numeric_limits<qulonglong>::max(),
         QString()});
    add("Unsupported tag", "TouchFaultyTag", {QStringLiteral("unsupported-tag-type")});
    add("Malformed tag", "TouchFaultyTag", {QStringLiteral("malformed-content")});
    add("Release the agent", "Release");
    add("Hang for 3 s", "Hang", {3U});
    add("Crash", "Crash");
    add("Switch NFC off", "SetPowered", {false});
    add("Switch NFC on", "SetPowered", {true});
}

void TestTouchPanel::everyButtonMakesItsCall()
{
    QFETCH(QString, member);
    daemon->start();
    QPushButton *pressed = button(QString::fromLatin1(QTest::currentDataTag()));
    QVERIFY(pressed);
    pressed->click();
    QTRY_COMPARE(daemon->calls().size(), 1);
    const FakeCall call = daemon->calls().first();
    QCOMPARE(call.interface, QStringLiteral("com.tavix.nfc.Simulator"));
    QCOMPARE(call.path, QStringLiteral("/com/tavix/nfc/simulator"));
    QCOMPARE(call.member, member);
    QTEST(call.arguments, "arguments");
}

void TestTouchPanel::buttonsStandInTheirGroups()
{
    QStringList seen;
    const QWidget *list = button(QStringLiteral("Web link"))->parentWidget();
    const QList<QWidget *> all = list->findChildren<QWidget *>();
    for (const QWidget *widget : all)
        if (const auto *heading = qobject_cast<const QLabel *>(widget))
            seen.append(heading->text() + QLatin1Char(':'));
        else if (qobject_cast<const QPushButton *>(widget))
            seen.append(QStringLiteral("-"));
    QCOMPARE(seen.filter(QStringLiteral(":")),
             (QStringList{QStringLiteral("Tags:"), QStringLiteral("Devices:"), QStringLiteral("Phones:"),
                          QStringLiteral("Faults:"), QStringLiteral("Settings:")}));
    QCOMPARE(seen.count(QStringLiteral("-")), 23);
    // The buttons of a group are two in a row, between its heading and the next.
    const auto below = [this](const char *upper, const char *lower) {
        const auto *above = button(QString::fromLatin1(upper));
        const auto *under = button(QString::fromLatin1(lower));
        return above->geometry().bottom() < under->geometry().top();
    };
    QVERIFY(!below("Web link", "Phone number"));
    QVERIFY(below("Web link", "Message"));
    QVERIFY(below("Empty tag", "Pair"));
    QVERIFY(below("Disconnect", "Send a file"));
    QVERIFY(below("Receive 5 MB", "Malformed tag"));
    QVERIFY(below("Start the daemon", "Switch NFC off"));
    QVERIFY(below("Crash", "Open the settings"));
}

void TestTouchPanel::resultOfATouchIsShown()
{
    daemon->hold(QStringLiteral("TouchTag"));
    daemon->start();
    daemon->reply(QStringLiteral("TouchToSelect"), {QStringLiteral("rejected")});
    QCOMPARE(result()->text(), QString());
    button(QStringLiteral("Web link"))->click();
    QCOMPARE(result()->text(), QStringLiteral("Web link: ..."));
    button(QStringLiteral("Choose what to send"))->click();
    QTRY_COMPARE(result()->text(), QStringLiteral("Choose what to send: rejected"));
    QTRY_COMPARE(daemon->calls(QStringLiteral("TouchTag")).size(), 1);
    daemon->kill();
    QTRY_COMPARE(result()->text(), QStringLiteral("Web link: no daemon any more"));
}

void TestTouchPanel::resultIsNeverFormatted()
{
    daemon->reply(QStringLiteral("TouchTag"), {QStringLiteral("<b>granted</b>")});
    daemon->start();
    button(QStringLiteral("Web link"))->click();
    QTRY_COMPARE(result()->text(), QStringLiteral("Web link: <b>granted</b>"));
    QCOMPARE(result()->textFormat(), Qt::PlainText);
}

void TestTouchPanel::touchStartsNoDaemon()
{
    daemon->makeActivatable();
    button(QStringLiteral("Web link"))->click();
    QTRY_COMPARE(result()->text(), QStringLiteral("Web link: no daemon any more"));
    QVERIFY(!daemon->isOnBus());
}

void TestTouchPanel::daemonIsStartedOnDemand()
{
    daemon->makeActivatable();
    button(QStringLiteral("Start the daemon"))->click();
    QTRY_VERIFY(daemon->isOnBus());
}

void TestTouchPanel::transcriptAlignsCallsAndAnswers()
{
    listen();
    daemon->reply(QStringLiteral("TouchFaultyTag"), {QStringLiteral("granted\nby nobody")});
    button(QStringLiteral("Malformed tag"))->click();
    QTRY_VERIFY(transcript->toPlainText().contains(QStringLiteral("granted")));
    QStringList shown = lines();
    // Other tests' waiting has used some numbers.
    static const QRegularExpression number(QStringLiteral("^ *\\d+  "));
    QVERIFY(shown[0].contains(number));
    const int first = shown[0].left(3).toInt();
    QCOMPARE(shown,
             (QStringList{QStringLiteral("%1  world  → daemon  TouchFaultyTag").arg(first, 3),
                          QStringLiteral("\"malformed-content\""),
                          QStringLiteral("%1  world  ← daemon  TouchFaultyTag: done").arg(first + 1, 3),
                          QStringLiteral("\"granted\\u000aby nobody\"")}));
    // The value begins below the name of its message, however the line is broken.
    const QTextBlock call = transcript->document()->begin();
    const QTextBlockFormat names = call.blockFormat();
    const QTextBlockFormat values = call.next().blockFormat();
    QCOMPARE(names.leftMargin(), values.leftMargin());
    QCOMPARE(names.textIndent(), -names.leftMargin());
    QCOMPARE(values.textIndent(), 0.0);
    QVERIFY(names.topMargin() > values.topMargin());
    const qreal character = QFontMetricsF(transcript->font()).horizontalAdvance(QLatin1Char('0'));
    QCOMPARE(values.leftMargin(), character * shown[0].indexOf(QStringLiteral("TouchFaultyTag")));
    QVERIFY(QFontInfo(transcript->font()).fixedPitch());
}

void TestTouchPanel::transcriptTellsTheDaemonByItsColor()
{
    listen();
    button(QStringLiteral("Crash"))->click();
    QTRY_VERIFY(lines().first().contains(QStringLiteral("Crash")));
    QTextCursor cursor(transcript->document());
    const QColor accent = panel->palette().color(QPalette::Highlight);
    const auto colorAt = [&](const QString &word) {
        cursor.setPosition(int(lines().first().indexOf(word)) + 1);
        return cursor.charFormat().foreground().color();
    };
    QCOMPARE(colorAt(QStringLiteral("daemon")), accent);
    QVERIFY(colorAt(QStringLiteral("world")) != accent);
    QVERIFY(colorAt(QStringLiteral("Crash")) != accent);
    QCOMPARE(cursor.charFormat().fontWeight(), int(QFont::Bold));
}

void TestTouchPanel::transcriptIsClearedOnDemand()
{
    listen();
    announce(QStringLiteral("Changed"));
    QTRY_VERIFY(!transcript->document()->isEmpty());
    button(QStringLiteral("Clear"))->click();
    QVERIFY(transcript->document()->isEmpty());
    QVERIFY(transcript->isReadOnly());
}

void TestTouchPanel::transcriptKeepsTheNewest()
{
    QCOMPARE(transcript->document()->maximumBlockCount(), 5000);
}

void TestTouchPanel::transcriptFollowsTheEndUntilScrolledAway()
{
    listen();
    QScrollBar *bar = transcript->verticalScrollBar();
    announce(QStringLiteral("Changed"), 200);
    QTRY_COMPARE(lines().size(), 200);
    QTRY_VERIFY(bar->maximum() > 0 && bar->value() == bar->maximum());
    panel->resize(panel->width(), panel->height() / 2);
    QTRY_COMPARE(bar->value(), bar->maximum());

    bar->setValue(10);
    announce(QStringLiteral("Changed"), 10);
    QTRY_COMPARE(lines().size(), 210);
    QCOMPARE(bar->value(), 10);
}

void TestTouchPanel::narrowPanelIsStacked()
{
    const auto place = [this](const QWidget *widget) {
        return QRect(widget->mapTo(panel.get(), QPoint()), widget->size());
    };
    const QPushButton *first = button(QStringLiteral("Phone number"));
    panel->resize(700, 600);
    QTRY_VERIFY(place(transcript).left() > place(first).right());
    QVERIFY(place(transcript).top() < place(first).bottom());
    panel->resize(360, 600);
    QTRY_VERIFY(place(transcript).left() < place(first).left());
    QVERIFY(place(transcript).top() > place(first).bottom());
    QVERIFY(place(transcript).right() < panel->width());
    QVERIFY(place(button(QStringLiteral("Clear"))).bottom() < panel->height());
}

void TestTouchPanel::labelsAreWhole()
{
    panel->resize(340, 400);
    const QList<QPushButton *> all = panel->findChildren<QPushButton *>();
    const int width = button(QStringLiteral("Web link"))->width();
    for (const QPushButton *one : all) {
        QVERIFY2(one->width() >= one->sizeHint().width(), qPrintable(one->text()));
        if (one->text() != QLatin1String("Clear"))
            QVERIFY2(std::abs(one->width() - width) <= 1, qPrintable(one->text()));
    }
}

void TestTouchPanel::panelSaysWhatItIsFor()
{
    QCOMPARE(panel->windowTitle(), QStringLiteral("Hold something against the phone"));
}

QTEST_MAIN(TestTouchPanel)
#include "tst_touchpanel.moc"
