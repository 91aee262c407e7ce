// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "core/session.h"

#include <utility>

#include <QTimer>

#include <ApplicationTracker>
#include <ContactExporter>
#include <NfcAgent>

#include "core/agentrequests.h"
#include "core/clientlog.h"
#include "core/face.h"
#include "core/registration.h"
#include "core/transfers.h"

using ConnUi::ApplicationTracker;
using ConnUi::ContactExporter;
using ConnUi::NfcAdapter;
using ConnUi::NfcAgent;

Session::Session(Face *face, QObject *parent)
    : QObject(parent)
    , face(face)
    , queue(face)
    , adapter(NfcAdapter::defaultAdapterAsync())
{
    connect(&lock, &SessionLock::changed, &queue, &QuestionQueue::setPaused);
    connect(adapter.get(), &NfcAdapter::adapterValid, this, &Session::createAgent);
    connect(adapter.get(), &NfcAdapter::adapterInvalid, this, &Session::dropAgent);
}

Session::~Session()
{
    dropAgent();
}

bool Session::isRegistered() const
{
    return registration && registration->isComplete();
}

uint Session::hiddenTransfers() const
{
    return transfers ? transfers->hidden() : 0;
}

void Session::showTransfers()
{
    if (transfers)
        transfers->showHidden();
}

void Session::createAgent()
{
    dropAgent();
    agent = std::make_unique<NfcAgent>();
    // A second wall behind the bus's policy.
    agent->setDaemonOnly(true);
    requests = std::make_unique<AgentRequests>(adapter.get(), agent.get(), &queue, face);
    registration = std::make_unique<Registration>(agent->path());
    connect(registration.get(), &Registration::succeeded, this, &Session::welcome);
    // Queued: the daemon gets its answer before the agent that it called goes. In the agent's name: a word
    // that a daemon has left behind cannot take the next one's agent away.
    connect(
        agent.get(), &NfcAgent::release, agent.get(), [this] { dropAgent(); }, Qt::QueuedConnection);
}

void Session::welcome(const QString &adapterPath)
{
    qCInfo(clientLog, "the daemon is here; %s is its agent", qUtf8Printable(agent->path()));
    if (!std::exchange(isPrepared, true)) {
        ApplicationTracker::subscribeAsync(this);
        QTimer::singleShot(0, face, &Face::prepare);
        // A folder of temporary files may be a long one.
        QTimer::singleShot(0, this, &ContactExporter::removeLeftCopies);
    }
    transfers = std::make_unique<Transfers>(adapterPath, &queue);
    connect(transfers.get(), &Transfers::hiddenChanged, this, &Session::hiddenTransfersChanged);
    Q_EMIT registeredChanged(true);
}

void Session::dropAgent()
{
    if (!agent)
        return;
    const bool wasRegistered = isRegistered();
    registration.reset();
    transfers.reset();
    // Questions of a daemon that has left are not worth an answer. They go before the objects that they use.
    queue.clear();
    requests.reset();
    agent.reset();
    if (!wasRegistered)
        return;
    qCInfo(clientLog, "the daemon has released the agent");
    Q_EMIT registeredChanged(false);
    Q_EMIT hiddenTransfersChanged(0);
}
