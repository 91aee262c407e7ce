// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

// Random fates of a daemon, over a bus, with programs that make, use and delete adapters, also in slots: the
// binding and a model of it must come to the same. A sequence that fails is made as short as it can be.
#include <algorithm>
#include <chrono>
#include <iostream>
#include <memory>
#include <rapidcheck.h>
#include <rapidcheck/state.h>
#include <utility>
#include <vector>

#include <QTest>

#include <RadioState>

#include "adapter/nfcadapter_p.h"
#include "fakedaemon.h"
#include "nfcadapter.h"
#include "sequences.h"

using ConnUi::NfcAdapter;
using ConnUi::NfcAdapterPrivate;
using ConnUi::RadioState;

namespace {

constexpr size_t mostAdapters = 3;

enum Deed { makeAdapter, deleteAdapter, deleteAll, replaceAll, readPower, switchOn, switchOff, deeds };
constexpr const char *deedNames[] = {"make an adapter",      "delete adapter",    "delete all adapters",
                                     "replace all adapters", "read the power of", "switch on by",
                                     "switch off by"};

enum Fate {
    come,
    go,
    fail,
    mend,
    beOn,
    beOff,
    tellOn,
    tellOff,
    tellCapitals,
    tellOther,
    tellHandover,
    fates
};
constexpr const char *fateNames[] = {
    "the daemon comes", "the daemon goes",   "the daemon fails", "the daemon answers again",
    "the daemon is on", "the daemon is off", "State on",         "State off",
    "STATE off",        "Other on",          "HandoverStarted"};

QString text(const char *words)
{
    return QLatin1String(words);
}

/** The expected behavior of the binding. */
struct Model
{
    // The program's deeds

    void act(Deed deed, int which)
    {
        switch (deed) {
        case makeAdapter:
            make();
            return;
        case deleteAll:
        case replaceAll:
            adapters.clear();
            unused();
            if (deed == replaceAll)
                make();
            return;
        case deleteAdapter:
            if (!adapters.empty())
                adapters.erase(adapters.begin() + which % int(adapters.size()));
            unused();
            return;
        case readPower:
            isPowered();
            return;
        case switchOn:
        case switchOff:
            setPowered(deed == switchOn);
            return;
        case deeds:
            return;
        }
    }

    void make()
    {
        if (adapters.size() == mostAdapters)
            return;
        if (adapters.empty() && !broken) {
            if (isHere)
                bind();
            else if (radio)
                warnings.append(text("NfcAdapter: unable to start service com.tavix.nfc"));
        }
        adapters.push_back(made++);
    }

    void unused()
    {
        if (!adapters.empty())
            return;
        isBound = false;
        launch = -1;
        fetched = false;
        state.clear();
    }

    void isPowered()
    {
        if (adapters.empty())
            return;
        if (isBound && !fetched && asks("GetProperties")) {
            fetched = true;
            state = daemonState;
        }
        heard.append(isBound && state == text("on") ? text("powered") : text("not powered"));
    }

    void setPowered(bool on)
    {
        if (adapters.empty())
            return;
        if (on && !isHere) {
            warnings.append(
                broken ? text("NfcAdapterPrivate: nfcd starting requested, but adapter marked as broken")
                       : text("NfcAdapter: unable to start service com.tavix.nfc"));
            return;
        }
        radio = on;
        if (isBound && asks("SetProperty"))
            fetched = false;
    }

    bool asks(const char *method)
    {
        sent.append(text(method));
        if (fails)
            warnings.append(text(method) + text(" returned error 'com.example.Fails': no"));
        return !fails;
    }

    // The daemon's fate

    void suffer(Fate fate)
    {
        switch (fate) {
        case come:
            isHere = true;
            if (!adapters.empty())
                bind();
            return;
        case go:
            isHere = false;
            if (!adapters.empty())
                lose();
            return;
        case fail:
        case mend:
            fails = fate == fail;
            return;
        case beOn:
        case beOff:
            daemonState = text(fate == beOn ? "on" : "off");
            return;
        default:
            if (isBound)
                tell(fate);
        }
    }

    void bind()
    {
        isBound = false;
        launch = now;
        if (!asks("DefaultAdapter"))
            return;
        isBound = true;
        announce("valid");
        broken = false;
    }

    void lose()
    {
        if (launch >= 0 && radio && now - launch < 3000) {
            warnings.append(
                QStringLiteral("NfcAdapterPrivate: nfcd stopped %1 msec after launch when adapter is powered")
                    .arg(now - launch));
            warnings.append(text("NfcAdapterPrivate: marking adapter as broken"));
            radio = false;
            broken = true;
        }
        isBound = false;
        fetched = false;
        state.clear();
        announce("invalid");
    }

    void tell(Fate fate)
    {
        if (fate == tellOther)
            return;
        if (fate == tellOn || fate == tellOff)
            state = text(fate == tellOn ? "on" : "off");
        announce(fate == tellHandover ? "handover started" : "changed");
    }

    void announce(const char *signal)
    {
        const std::vector<int> listeners = adapters;
        for (int listener : listeners)
            if (std::find(adapters.begin(), adapters.end(), listener) != adapters.end()) {
                heard.append(QString::number(listener) + QLatin1Char(' ') + text(signal));
                act(std::exchange(inSlot, deeds), whom);
            }
    }

    std::vector<int> adapters;
    bool isBound = false;
    bool fetched = false;
    bool broken = false;
    bool radio = true;
    bool isHere = false;
    bool fails = false;
    int now = 0;
    int launch = -1;
    QString state;
    QString daemonState = text("on");
    // The deed of the first slot that is called
    Deed inSlot = deeds;
    int whom = 0;
    // All that was seen, in its order
    QStringList heard;
    QStringList warnings;
    QStringList sent;
    int made = 0;
};

std::chrono::milliseconds time{0};

NfcAdapterPrivate::Clock::time_point now()
{
    return NfcAdapterPrivate::Clock::time_point(time + std::chrono::hours(1));
}

/** A program with adapters, and a daemon that is not here at first. */
class Stage
{
public:
    explicit Stage(FakeDaemon *daemon) : daemon(daemon)
    {
        time = {};
        NfcAdapterPrivate::now = now;
        NfcAdapterPrivate::adapterBroken = false;
        radio.setEnabled(true);
        suffer(mend);
        suffer(beOn);
        daemon->clearCalls();
    }

    ~Stage()
    {
        adapters.clear();
        daemon->stop();
        QCoreApplication::processEvents();
    }

    Q_DISABLE_COPY_MOVE(Stage)

    void act(Deed deed, int which)
    {
        switch (deed) {
        case makeAdapter:
            make();
            return;
        case deleteAdapter:
            if (!adapters.empty())
                adapters.erase(adapters.begin() + which % int(adapters.size()));
            return;
        case deleteAll:
        case replaceAll:
            adapters.clear();
            if (deed == replaceAll)
                make();
            return;
        case deeds:
            return;
        default:
            if (!adapters.empty())
                use(*adapters[size_t(which) % adapters.size()], deed);
        }
    }

    void suffer(Fate fate)
    {
        switch (fate) {
        case come:
            daemon->start();
            break;
        case go:
            daemon->stop();
            break;
        case fail:
            for (const char *method : {"DefaultAdapter", "GetProperties", "SetProperty"})
                daemon->fail(text(method), text("com.example.Fails"), text("no"));
            break;
        case mend:
            daemon->reply(text("DefaultAdapter"),
                          {QVariant::fromValue(QDBusObjectPath(FakeDaemon::adapterPath()))});
            daemon->reply(text("SetProperty"));
            daemon->setState(state);
            break;
        case beOn:
        case beOff:
            state = text(fate == beOn ? "on" : "off");
            if (!fails)
                daemon->setState(state);
            break;
        case tellOn:
        case tellOff:
            daemon->emitPropertyChanged(text("State"), text(fate == tellOn ? "on" : "off"));
            break;
        case tellCapitals:
            daemon->emitPropertyChanged(text("STATE"), text("off"));
            break;
        case tellOther:
            daemon->emitPropertyChanged(text("Other"), text("on"));
            break;
        default:
            daemon->emitAdapterSignal(text("HandoverStarted"));
        }
        if (fate == fail || fate == mend)
            fails = fate == fail;
        QCoreApplication::processEvents();
    }

    void reactWith(Deed deed, int which)
    {
        inSlot = deed;
        whom = which;
    }

    void compareWith(const Model &model)
    {
        RC_ASSERT(heard == model.heard);
        RC_ASSERT(warnings == model.warnings);
        RC_ASSERT(daemon->members() == model.sent);
        RC_ASSERT(radio.enabled() == model.radio);
        for (const auto &adapter : adapters)
            RC_ASSERT(adapter->isValid() == model.isBound);
    }

private:
    void make()
    {
        if (adapters.size() == mostAdapters)
            return;
        auto adapter = std::unique_ptr<NfcAdapter>(NfcAdapter::defaultAdapter());
        const auto hear = [this, number = made++](const char *signal) {
            return [this, number, signal] {
                heard.append(QString::number(number) + QLatin1Char(' ') + text(signal));
                act(std::exchange(inSlot, deeds), whom);
            };
        };
        QObject::connect(adapter.get(), &NfcAdapter::adapterValid, &context, hear("valid"));
        QObject::connect(adapter.get(), &NfcAdapter::adapterInvalid, &context, hear("invalid"));
        QObject::connect(adapter.get(), &NfcAdapter::propertyChanged, &context, hear("changed"));
        QObject::connect(adapter.get(), &NfcAdapter::handoverStarted, &context, hear("handover started"));
        adapters.push_back(std::move(adapter));
    }

    void use(NfcAdapter &adapter, Deed deed)
    {
        if (deed == readPower)
            heard.append(adapter.isPowered() ? text("powered") : text("not powered"));
        else
            adapter.setPowered(deed == switchOn);
    }

    FakeDaemon *daemon;
    RadioState radio{RadioState::NFC};
    QObject context;
    std::vector<std::unique_ptr<NfcAdapter>> adapters;
    QString state;
    bool fails = false;
    Deed inSlot = deeds;
    int whom = 0;
    int made = 0;
    QStringList heard;
    QStringList warnings;
    const MessageLog log{&warnings};
};

using Step = rc::state::Command<Model, Stage>;

/** The program does something. */
struct Act : Step
{
    void apply(Model &model) const override { model.act(deed, which); }

    void run(const Model &before, Stage &stage) const override
    {
        stage.act(deed, which);
        stage.compareWith(nextState(before));
    }

    void show(std::ostream &out) const override { out << deedNames[deed] << ' ' << which; }

    // Programs make more adapters than they delete.
    const Deed deed = *rc::gen::weightedOneOf<Deed>(
        {{3, rc::gen::just(makeAdapter)},
         {4, rc::gen::map(rc::gen::inRange(0, int(deeds)), [](int each) { return Deed(each); })}});
    const int which = *rc::gen::inRange(0, int(mostAdapters));
};

/** Something happens to the daemon, or it says something, and the first slot that hears of it may do
 * something. */
struct Happen : Step
{
    void checkPreconditions(const Model &model) const override
    {
        RC_PRE(fate != come || !model.isHere);
        RC_PRE(fate != go || model.isHere);
    }

    void apply(Model &model) const override
    {
        model.inSlot = deed;
        model.whom = which;
        model.suffer(fate);
    }

    void run(const Model &before, Stage &stage) const override
    {
        stage.reactWith(deed, which);
        stage.suffer(fate);
        stage.compareWith(nextState(before));
    }

    void show(std::ostream &out) const override
    {
        out << fateNames[fate];
        if (deed != deeds)
            out << ", in a slot: " << deedNames[deed] << ' ' << which;
    }

    // It comes and goes more often than all else happens.
    const Fate fate = *rc::gen::weightedOneOf<Fate>(
        {{1, rc::gen::element(come, go)},
         {1, rc::gen::map(rc::gen::inRange(0, int(fates)), [](int each) { return Fate(each); })}});
    const Deed deed = *rc::gen::inRange(0, 2) ? deeds : Deed(*rc::gen::inRange(0, int(deeds)));
    const int which = *rc::gen::inRange(0, int(mostAdapters));
};

/** Time passes. */
struct Pass : Step
{
    void apply(Model &model) const override { model.now += milliseconds; }

    void run(const Model &, Stage &) const override { time += std::chrono::milliseconds(milliseconds); }

    void show(std::ostream &out) const override { out << milliseconds << " ms pass"; }

    const int milliseconds = *rc::gen::element(1, 1000, 2999, 3000);
};

} // namespace

class TestAdapterSequences : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void bindingIsAsItsModel();
};

void TestAdapterSequences::bindingIsAsItsModel()
{
    chooseSequences();
    FakeDaemon daemon;

    QVERIFY(rc::check("a binding is as its model", [&daemon] {
        Stage stage(&daemon);
        rc::state::check(Model(), stage, rc::state::gen::execOneOfWithArgs<Act, Happen, Pass>());
    }));
}

QTEST_GUILESS_MAIN(TestAdapterSequences)
#include "tst_adaptersequences.moc"
