// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include <optional>

#include <QApplication>
#include <QDBusConnection>
#include <QDBusError>
#include <QIcon>
#include <QPalette>

#include "panel/touchpanel.h"
#include "support/commandline.h"
#include "support/windowapplication.h"

namespace {

// The blue of the phone beside the panel, as bright as the desktop's colors need.
void setAccent()
{
    QPalette palette;
    const bool isDark = palette.color(QPalette::Base).lightness() < palette.color(QPalette::Text).lightness();
    palette.setColor(QPalette::Highlight, isDark ? QColor(0x8f, 0xa5, 0xff) : QColor(0x33, 0x55, 0xd4));
    palette.setColor(QPalette::HighlightedText, isDark ? Qt::black : Qt::white);
    QApplication::setPalette(palette);
}

} // namespace

int main(int argc, char *argv[])
{
    Support::CommandLine arguments(
        QStringLiteral(
            "Holds tags, devices and phones against the simulated NFC daemon.\n\n"
            "Exit codes: 0 closed, or the bus disconnected, 1 no system bus, 3 no display, 64 invalid "
            "arguments."),
        QString());
    arguments.answer(argc, argv);
    const Support::ApplicationPointer application = Support::newApplication(argc, argv);
    QApplication::setWindowIcon(QIcon::fromTheme(QStringLiteral("nfc-panel")));
    QGuiApplication::setDesktopFileName(QStringLiteral("nfc-panel"));
    if (const std::optional<QString> fault = arguments.read())
        return Support::fail(Support::BadArguments, *fault);
    if (!QDBusConnection::systemBus().isConnected())
        return Support::fail(Support::NoBus, QDBusConnection::systemBus().lastError().message());
    QDBusConnection::systemBus().connect(QString(), QStringLiteral("/org/freedesktop/DBus/Local"),
                                         QStringLiteral("org.freedesktop.DBus.Local"),
                                         QStringLiteral("Disconnected"), application.get(), SLOT(quit()));
    setAccent();
    TouchPanel panel;
    panel.show();
    return QApplication::exec();
}
