// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

// A client in QML, which prints a line when the daemon knows it, and then the time of each first frame of its
// sheet, which it answers:
//
//   peer_quick bare    with an agent of a few lines, made with Qt alone
//   peer_quick module  with the module org.connui.nfc
#include <cstdio>
#include <cstring>
#include <memory>
#include <optional>

#include <QDBusConnection>
#include <QDBusInterface>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVirtualObject>
#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QQuickWindow>
#include <QTimer>

#include "measurement.h"

/** Takes whatever is called for a tag with a text, whose bytes are behind the language. */
class BareAgent : public QDBusVirtualObject
{
    Q_OBJECT
    Q_PROPERTY(QString content READ content NOTIFY contentChanged)

public:
    // With the first turn of the event loop, when everything is loaded.
    BareAgent() { QTimer::singleShot(0, this, &BareAgent::enroll); }

    QString introspect(const QString &) const override { return {}; }

    bool handleMessage(const QDBusMessage &message, const QDBusConnection &) override
    {
        constexpr int headerAndLanguage = 7;
        request = message;
        message.setDelayedReply(true);
        text = QString::fromUtf8(message.arguments().constLast().toByteArray().mid(headerAndLanguage));
        Q_EMIT contentChanged();
        return true;
    }

    QString content() const { return text; }

    Q_INVOKABLE void reject()
    {
        text.clear();
        Q_EMIT contentChanged();
        QDBusConnection::systemBus().send(
            request.createErrorReply(QStringLiteral("com.tavix.nfc.UIAgent.Rejected"), QString()));
    }

Q_SIGNALS:
    void contentChanged();

private:
    void enroll()
    {
        QDBusConnection bus = QDBusConnection::systemBus();
        bus.registerVirtualObject(QStringLiteral("/agent"), this);
        QDBusInterface adapter(QStringLiteral("com.tavix.nfc"), QStringLiteral("/com/tavix/nfc/adapter0"),
                               QStringLiteral("com.tavix.nfc.Adapter"), bus);
        adapter.call(QStringLiteral("RegisterUIAgent"),
                     QVariant::fromValue(QDBusObjectPath(QStringLiteral("/agent"))));
    }

    QDBusMessage request;
    QString text;
};

namespace {

// Answers the sheet after its first frame, and prints the time of that one when the sheet has gone: the next
// question is to find none.
void watch(QQuickWindow *sheet)
{
    const auto frame = std::make_shared<std::optional<double>>();
    QObject::connect(sheet, &QQuickWindow::frameSwapped, sheet, [sheet, frame] {
        if (*frame || !sheet->isVisible())
            return;
        *frame = Measurement::now();
        QTimer::singleShot(0, sheet, [sheet] { QMetaObject::invokeMethod(sheet, "answered"); });
    });
    QObject::connect(sheet, &QWindow::visibleChanged, sheet, [frame](bool visible) {
        if (visible || !*frame)
            return;
        std::printf("%.0f\n", **frame);
        std::fflush(stdout);
        frame->reset();
    });
}

} // namespace

int main(int argc, char **argv)
{
    QGuiApplication application(argc, argv);
    QGuiApplication::setQuitOnLastWindowClosed(false);
    qmlRegisterType<BareAgent>("org.connui.nfc.bare", 1, 0, "BareAgent");
    QQmlApplicationEngine engine;
    engine.addImportPath(QStringLiteral(CONNUI_QML_DIR));
    const bool isBare = argc > 1 && std::strcmp(argv[1], "bare") == 0;
    engine.load(QStringLiteral(SHEETS) +
                (isBare ? QStringLiteral("/Bare.qml") : QStringLiteral("/Module.qml")));
    if (engine.rootObjects().isEmpty())
        return 1;
    watch(qobject_cast<QQuickWindow *>(engine.rootObjects().constFirst()));
    return QGuiApplication::exec();
}

#include "peer_quick.moc"
