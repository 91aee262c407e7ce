// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

// The bare side of the measurements that scripts take, made with Qt alone as its documentation shows it. It
// prints its name on the bus and its agent's path, and then the time of each thing that is waited for:
//
//   peer_qt binding    the daemon is bound
//   peer_qt dialog     a message box with a text from a tag is on the screen
//   peer_qt window     a window is on the screen
//   peer_qt handler    the same, of an application that the session bus has started; it prints that alone,
//   and ends peer_qt agent      nothing; registers an agent with the daemon peer_qt nothing    nothing; ends
//   at once
#include <cstdio>
#include <cstring>
#include <memory>

#include <QApplication>
#include <QDBusConnection>
#include <QDBusInterface>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusReply>
#include <QDBusServiceWatcher>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QLabel>
#include <QMessageBox>

#include "firstframe.h"
#include "measurement.h"

namespace {

const QString service = QStringLiteral("com.tavix.nfc");

void introduce(const QString &path)
{
    std::printf("%s %s\n", qUtf8Printable(QDBusConnection::systemBus().baseService()), qUtf8Printable(path));
    std::fflush(stdout);
}

} // namespace

/** A client of the daemon. */
class Binding : public QObject
{
    Q_OBJECT

public:
    Binding() { connect(&watcher, &QDBusServiceWatcher::serviceRegistered, this, &Binding::bind); }

public Q_SLOTS:
    void propertyChanged(const QString &, const QDBusVariant &) {}
    void handoverStarted() {}
    void handoverCarrierSelected(const QString &) {}
    void handoverCompleted(const QString &, const QDBusVariant &) {}
    void handoverFailed(const QString &) {}

private:
    void bind()
    {
        const QDBusConnection bus = QDBusConnection::systemBus();
        QDBusInterface manager(service, QStringLiteral("/"), QStringLiteral("com.tavix.nfc.Manager"), bus);
        const QDBusReply<QDBusObjectPath> path = manager.call(QStringLiteral("DefaultAdapter"));
        adapter = std::make_unique<QDBusInterface>(service, path.value().path(),
                                                   QStringLiteral("com.tavix.nfc.Adapter"), bus);
        const auto relay = [this, bus](const char *signal, const char *slot) {
            QDBusConnection(bus).connect(service, adapter->path(), adapter->interface(),
                                         QString::fromLatin1(signal), this, slot);
        };
        relay("PropertyChanged", SLOT(propertyChanged(QString, QDBusVariant)));
        relay("HandoverStarted", SLOT(handoverStarted()));
        relay("HandoverCarrierSelected", SLOT(handoverCarrierSelected(QString)));
        relay("HandoverCompleted", SLOT(handoverCompleted(QString, QDBusVariant)));
        relay("HandoverFailed", SLOT(handoverFailed(QString)));
        std::printf("%.0f\n", Measurement::now());
        std::fflush(stdout);
    }

    QDBusServiceWatcher watcher{service, QDBusConnection::systemBus(),
                                QDBusServiceWatcher::WatchForOwnerChange};
    std::unique_ptr<QDBusInterface> adapter;
};

/** Takes whatever is called for a question with a text. */
class Agent : public QDBusVirtualObject
{
    Q_OBJECT

public:
    explicit Agent(FirstFrame *frame) : frame(frame) {}

    QString introspect(const QString &) const override { return {}; }

    bool handleMessage(const QDBusMessage &message, const QDBusConnection &) override
    {
        frame->begin();
        auto *box = new QMessageBox(QMessageBox::Question, QStringLiteral("Tag"),
                                    QString::fromUtf8(message.arguments().constLast().toByteArray()),
                                    QMessageBox::Yes | QMessageBox::No);
        box->setAttribute(Qt::WA_DeleteOnClose);
        box->open();
        frame->then([box, message] {
            box->reject();
            QDBusConnection::systemBus().send(
                message.createErrorReply(QStringLiteral("com.tavix.nfc.UIAgent.Rejected"), QString()));
        });
        return true;
    }

private:
    FirstFrame *frame;
};

/** Takes whatever is called for a tag, and shows its window when it is launched. */
class Handler : public QDBusVirtualObject
{
    Q_OBJECT

public:
    QString introspect(const QString &) const override { return {}; }

    bool handleMessage(const QDBusMessage &message, const QDBusConnection &bus) override
    {
        if (message.member() == QLatin1String("launch")) {
            frame.then(&QCoreApplication::quit);
            window.show();
        }
        if (message.isReplyRequired())
            bus.send(message.createReply());
        return true;
    }

private:
    FirstFrame frame;
    QLabel window{QStringLiteral("A window")};
};

namespace {

int bind(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    // Signals whose types nobody has used yet cannot be connected.
    qDBusRegisterMetaType<QDBusVariant>();
    const Binding binding;
    introduce(QStringLiteral("/"));
    return QCoreApplication::exec();
}

int ask(int argc, char **argv)
{
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    FirstFrame frame;
    Agent agent(&frame);
    QDBusConnection::systemBus().registerVirtualObject(QStringLiteral("/agent"), &agent);
    introduce(QStringLiteral("/agent"));
    return QApplication::exec();
}

int registerAgent(int argc, char **argv)
{
    QApplication application(argc, argv);
    const QDBusConnection bus = QDBusConnection::systemBus();
    FirstFrame frame;
    Agent agent(&frame);
    QDBusConnection(bus).registerVirtualObject(QStringLiteral("/agent"), &agent);
    QDBusInterface adapter(service, QStringLiteral("/com/tavix/nfc/adapter0"),
                           QStringLiteral("com.tavix.nfc.Adapter"), bus);
    adapter.call(QStringLiteral("RegisterUIAgent"),
                 QVariant::fromValue(QDBusObjectPath(QStringLiteral("/agent"))));
    return QApplication::exec();
}

int handleTags(int argc, char **argv)
{
    QApplication application(argc, argv);
    Handler handler;
    QDBusConnection bus = QDBusConnection::sessionBus();
    bus.registerVirtualObject(QStringLiteral("/"), &handler, QDBusConnection::SubPath);
    bus.registerService(QStringLiteral("org.connui.MeasuredHandler"));
    return QApplication::exec();
}

int showWindow(int argc, char **argv)
{
    QApplication application(argc, argv);
    introduce(QStringLiteral("/"));
    FirstFrame frame;
    frame.then([] {});
    QLabel window(QStringLiteral("A window"));
    window.show();
    return QApplication::exec();
}

} // namespace

int main(int argc, char **argv)
{
    const char *what = argc > 1 ? argv[1] : "";
    if (std::strcmp(what, "nothing") == 0)
        return 0;
    if (std::strcmp(what, "binding") == 0)
        return bind(argc, argv);
    if (std::strcmp(what, "agent") == 0)
        return registerAgent(argc, argv);
    if (std::strcmp(what, "handler") == 0)
        return handleTags(argc, argv);
    return std::strcmp(what, "window") == 0 ? showWindow(argc, argv) : ask(argc, argv);
}

#include "peer_qt.moc"
