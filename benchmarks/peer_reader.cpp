// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

// Holds virtual tags against nfcd-pcsc under with-reader, first with all that nfc-ui has on the other side,
// then as its agent as well, and prints the lines of what they take for that.
#include <algorithm>
#include <atomic>
#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTimer>
#include <QVariantMap>

#include "foreigncard.h"
#include "heldtag.h"
#include "measurement.h"
#include "otherprogram.h"
#include "pcscdprocess.h"
#include "readers.h"
#include "virtualtype2.h"

using namespace std::chrono_literals;
using std::chrono::milliseconds;

namespace {

const Measurement::Goal withinLimit{0, 1};
const Measurement::Goal none{0, 0};
const Measurement::Goal exactly{1, 1};
constexpr double millisecond = 1e6;
constexpr double twoFrames = 2e9 / 60;

/** Ten seconds, less in a quick run. */
milliseconds awhile()
{
    return 1s * Measurement::rounds(10);
}

/** Returns whether \a condition has come true in \a time; events are handled meanwhile. */
bool waitFor(const std::function<bool()> &condition, milliseconds time = 30s)
{
    QElapsedTimer timer;
    timer.start();
    QTimer tick;
    tick.start(5);
    while (!condition()) {
        if (timer.elapsed() > time.count())
            return false;
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    return true;
}

void pass(milliseconds time)
{
    waitFor([] { return false; }, time);
}

void need(bool condition, const char *what)
{
    if (!condition)
        qFatal("%s", what);
}

/** A tag that knows when it has answered last, and how long it took for all of its answers. */
class TimedTag : public VirtualTag
{
public:
    explicit TimedTag(VirtualTag &tag) : tag(tag) {}

    QByteArray atr() const override { return tag.atr(); }

    QByteArray answer(const QByteArray &command) override
    {
        const double begin = Measurement::now();
        QByteArray answer = tag.answer(command);
        answeredAt = Measurement::now();
        ownTime = ownTime + answeredAt - begin;
        return answer;
    }

    std::atomic<double> answeredAt = 0;
    std::atomic<double> ownTime = 0;

private:
    VirtualTag &tag;
};

/** Counts the questions, and grants them at once. */
class Agent : public QDBusVirtualObject
{
public:
    QString introspect(const QString &) const override { return {}; }

    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override
    {
        if (message.member() == QLatin1String("RequestNDEFDataDelivery")) {
            askedAt = Measurement::now();
            ++questions;
        }
        if (message.isReplyRequired())
            connection.send(message.createReply());
        return true;
    }

    int questions = 0;
    double askedAt = 0;
};

/** nfcd-pcsc, as seen from outside. */
class Daemon
{
public:
    Daemon()
    {
        process.setStandardErrorFile(QProcess::nullDevice());
        process.start(QCoreApplication::applicationDirPath() + QStringLiteral("/nfcd-pcsc"), QStringList());
        const auto isOnBus = [] {
            return QDBusConnection::systemBus()
                .interface()
                ->isServiceRegistered(QStringLiteral("com.tavix.nfc"))
                .value();
        };
        need(waitFor(isOnBus) && waitFor([this] { return readers() == 2; }), "the daemon does not come");
    }

    ~Daemon()
    {
        process.kill();
        process.waitForFinished();
    }

    void registerAgent(const QString &path)
    {
        const QDBusMessage reply =
            call(QStringLiteral("RegisterUIAgent"), {QVariant::fromValue(QDBusObjectPath(path))});
        need(reply.type() == QDBusMessage::ReplyMessage, "the agent cannot be registered");
    }

    void setPowered(bool on)
    {
        const QString state = on ? QStringLiteral("on") : QStringLiteral("off");
        call(QStringLiteral("SetProperty"),
             {QStringLiteral("State"), QVariant::fromValue(QDBusVariant(state))});
    }

    /** The time of its answer, in nanoseconds. */
    double answerTime()
    {
        return Measurement::wallTime([] { call(QStringLiteral("GetProperties")); });
    }

    qsizetype readers() const
    {
        const auto properties =
            qdbus_cast<QVariantMap>(call(QStringLiteral("GetProperties")).arguments().value(0));
        return properties.value(QStringLiteral("Readers")).toStringList().size();
    }

    /** How often its threads have been given a processor. */
    qint64 wakings() const
    {
        qint64 sum = 0;
        const QString tasks = folder() + QStringLiteral("/task");
        const QStringList threads = QDir(tasks).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
        for (const QString &thread : threads)
            sum += number(tasks + u'/' + thread, "voluntary_ctxt_switches") +
                   number(tasks + u'/' + thread, "nonvoluntary_ctxt_switches");
        return sum;
    }

    /** Its resident memory in bytes. */
    double memory() const { return 1024.0 * double(number(folder(), "VmRSS")); }

private:
    static QDBusMessage call(const QString &method, const QVariantList &arguments = {})
    {
        QDBusMessage call = QDBusMessage::createMethodCall(QStringLiteral("com.tavix.nfc"),
                                                           QStringLiteral("/com/tavix/nfc/adapter0"),
                                                           QStringLiteral("com.tavix.nfc.Adapter"), method);
        call.setArguments(arguments);
        // As an agent it is asked itself meanwhile.
        return QDBusConnection::systemBus().call(call, QDBus::BlockWithGui);
    }

    static qint64 number(const QString &folder, const QByteArray &name)
    {
        QFile file(folder + QStringLiteral("/status"));
        need(file.open(QFile::ReadOnly), "a thread cannot be looked at");
        const QList<QByteArray> lines = file.readAll().split('\n');
        for (const QByteArray &line : lines)
            if (line.startsWith(name + ':'))
                return line.mid(name.size() + 1).simplified().split(' ').constFirst().toLongLong();
        return 0;
    }

    QString folder() const { return QStringLiteral("/proc/%1").arg(process.processId()); }

    QProcess process;
};

// A tag that nobody has seen before.
VirtualType2 newTag()
{
    static int tags = 0;
    VirtualType2 tag = VirtualType2::sticker(QByteArray::fromHex("d1010455036f7267"));
    ++tags;
    tag.setUid(QByteArray::fromHex("0401020304") + char(tags >> 8) + char(tags));
    return tag;
}

// No hand is as quick as a program, nor does pcscd expect one to be.
void letGo()
{
    need(waitFor([] { return Readers::connectionsToPcscd() <= 1; }), "the daemon does not let go");
}

/** All that nfc-ui has, as seen from outside. It takes every question back as soon as that is on the screen.
 */
class Client
{
public:
    Client()
    {
        process.start(QCoreApplication::applicationDirPath() + QStringLiteral("/peer_nfc"),
                      {QStringLiteral("whole")});
        // It prints its name when it has prepared its first question.
        nextLine();
    }

    ~Client()
    {
        process.kill();
        process.waitForFinished();
    }

    /** The time of its next frame. */
    double nextFrame() { return nextLine().toDouble(); }

private:
    QByteArray nextLine()
    {
        need(waitFor([this] { return process.canReadLine(); }), "the client shows nothing");
        return process.readLine();
    }

    QProcess process;
};

// From the last exchange with a tag on a reader to the client's frame.
double timeToFrame(Client *client)
{
    VirtualType2 tag = newTag();
    TimedTag timed(tag);
    const HeldTag held(timed);
    const double time = client->nextFrame() - timed.answeredAt;
    letGo();
    return time;
}

void firstFrames()
{
    const Daemon daemon;
    std::vector<double> first;
    std::vector<double> further;
    for (int process = 0; process < Measurement::rounds(20); ++process) {
        Client client;
        first.push_back(timeToFrame(&client));
        for (int i = 0; i < 5; ++i)
            further.push_back(timeToFrame(&client));
    }
    for (const auto &[what, times] : {std::pair{"first", first}, std::pair{"further ones", further}})
        Measurement::print(std::string("Last exchange with a tag to first frame, ") + what, "ns",
                           "two frames at 60 Hz", twoFrames, "nfcd-pcsc and nfc-ui",
                           Measurement::quantile(times, 0.5), withinLimit);
}

/** All that needs no client. */
class Bench
{
public:
    Bench()
    {
        const QString path = QStringLiteral("/agent");
        QDBusConnection::systemBus().registerVirtualObject(path, &agent);
        daemon.registerAgent(path);
    }

    void run()
    {
        idle();
        touches();
        flapping();
        foreignCards();
        hangingCard();
        deadPcscd();
        otherProgram();
    }

private:
    void idle();
    void touches();
    void flapping();
    void foreignCards();
    void hangingCard();
    void deadPcscd();
    void otherProgram();

    bool isAsked(int question, milliseconds time = 30s)
    {
        return waitFor([&] { return agent.questions >= question; }, time);
    }

    Agent agent;
    Daemon daemon;
};

void Bench::idle()
{
    VirtualType2 tag = newTag();
    {
        const HeldTag held(tag);
        need(isAsked(1), "nothing is asked");
        letGo();
    }
    // The list of readers is made once more a second after the last event.
    pass(3s);
    const qint64 before = daemon.wakings();
    pass(awhile());
    Measurement::print("Wakings of nfcd-pcsc in 10 s of nothing", "", "limit", 1, "nfcd-pcsc",
                       double(daemon.wakings() - before), none);
}

void Bench::touches()
{
    const int rounds = Measurement::rounds(1000);
    const int before = agent.questions;
    std::vector<double> fromLastExchange;
    std::vector<double> fromTouch;
    for (int i = 0; i < rounds; ++i) {
        VirtualType2 tag = newTag();
        TimedTag timed(tag);
        const double touched = Measurement::now();
        const HeldTag held(timed);
        need(isAsked(before + i + 1), "a touch is lost");
        fromLastExchange.push_back(agent.askedAt - timed.answeredAt);
        fromTouch.push_back(agent.askedAt - touched - timed.ownTime);
        letGo();
    }
    using Measurement::quantile;
    Measurement::print("Last exchange with a tag to question", "ns", "limit", millisecond, "nfcd-pcsc",
                       quantile(fromLastExchange, 0.5), withinLimit);
    Measurement::print("Last exchange with a tag to question, worst of 1,000", "ns", "limit",
                       10 * millisecond, "nfcd-pcsc", quantile(fromLastExchange, 1), withinLimit);
    Measurement::print("Touch to question, without the tag's own time", "ns", "limit", 10 * millisecond,
                       "nfcd-pcsc", quantile(fromTouch, 0.5), withinLimit);
    pass(1s);
    Measurement::print("Questions for touches", "", "touches", rounds, "questions", agent.questions - before,
                       exactly);
    Measurement::print("Resident memory of nfcd-pcsc after those", "bytes", "limit", 16 * 1024 * 1024,
                       "nfcd-pcsc", daemon.memory(), withinLimit);
}

void Bench::flapping()
{
    const int before = agent.questions;
    VirtualType2 tag = newTag();
    for (int i = 0; i < Measurement::rounds(50); ++i) {
        {
            const HeldTag held(tag);
            pass(100ms);
        }
        pass(100ms);
    }
    letGo();
    Measurement::print("Questions for a tag that comes and goes 50 times, 5 times a second", "", "touches", 1,
                       "questions", agent.questions - before, exactly);
}

void Bench::foreignCards()
{
    int commands = 0;
    // A contact card, a security key, a bank card and a passport.
    for (const char *atr : {"3b6500002063cb6800", "3b8d800180730021c057597562694b657940",
                            "3b8e800180318066b08412016e01830090002e", "3b88800100000000338181003a"}) {
        ForeignCard card(QByteArray::fromHex(atr));
        HeldTag held(card, 0);
        Readers::waitForCard(0);
        VirtualType2 tag = newTag();
        const HeldTag later(tag, 1);
        need(isAsked(agent.questions + 1), "a touch is lost");
        letGo();
        commands += held.commands();
    }
    Measurement::print("Commands to four cards that are not tags", "", "limit", 1, "nfcd-pcsc", commands,
                       none);
}

void Bench::hangingCard()
{
    double longest = 0;
    VirtualType2 tag = newTag();
    {
        const HeldTag held(tag, {-1, 1, 1min});
        QElapsedTimer timer;
        timer.start();
        while (timer.elapsed() < awhile().count()) {
            longest = std::max(longest, daemon.answerTime());
            pass(20ms);
        }
    }
    letGo();
    Measurement::print("GetProperties while a card hangs for 10 s, the longest", "ns", "limit",
                       100 * millisecond, "nfcd-pcsc", longest, withinLimit);
}

void Bench::deadPcscd()
{
    double longest = 0;
    PcscdProcess::die();
    QElapsedTimer timer;
    timer.start();
    // So long that the daemon tries every five seconds by itself.
    while (timer.elapsed() < 6 * awhile().count()) {
        longest = std::max(longest, daemon.answerTime());
        pass(20ms);
    }
    const double begin = Measurement::now();
    PcscdProcess::come();
    need(waitFor([this] { return daemon.readers() == 2; }), "the readers do not come back");
    const double back = Measurement::now() - begin;
    Measurement::print("GetProperties while there is no pcscd for a minute, the longest", "ns", "limit",
                       100 * millisecond, "nfcd-pcsc", longest, withinLimit);
    Measurement::print("Readers are back after the start of pcscd then", "ns", "limit", 1500 * millisecond,
                       "nfcd-pcsc", back, withinLimit);
}

void Bench::otherProgram()
{
    const int before = agent.questions;
    VirtualType2 tag = newTag();
    daemon.setPowered(false);
    const HeldTag held(tag);
    Readers::waitForCard(0);
    auto other = std::make_unique<OtherProgram>(OtherProgram::InTransaction);
    daemon.setPowered(true);
    pass(awhile());
    const double begin = Measurement::now();
    other.reset();
    need(isAsked(before + 1), "a card that is let go is not read");
    Measurement::print("Question after another program's transaction of 10 s", "ns", "limit",
                       1500 * millisecond, "nfcd-pcsc", agent.askedAt - begin, withinLimit);
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    Measurement::begin(argc, argv);
    // Has QtDBus know its own types before a message carries them.
    qRegisterMetaType<QDBusObjectPath>();
    qRegisterMetaType<QDBusVariant>();
    firstFrames();
    Bench().run();
    return 0;
}
