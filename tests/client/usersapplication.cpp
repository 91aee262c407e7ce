// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

// The application that the user has open when something touches the phone. It fills the screen, and prints
// the input that reaches it.

#include <cstdio>

#include <QApplication>
#include <QEvent>
#include <QWidget>

namespace {

const char *nameOf(QEvent::Type type)
{
    switch (type) {
    case QEvent::MouseButtonPress:
        return "press";
    case QEvent::MouseButtonRelease:
        return "release";
    case QEvent::KeyPress:
        return "key";
    default:
        return nullptr;
    }
}

class Window : public QWidget
{
public:
    Window() { setStyleSheet(QStringLiteral("background: #00FF00")); }

protected:
    bool event(QEvent *event) override
    {
        if (const char *name = nameOf(event->type())) {
            std::puts(name);
            std::fflush(stdout);
        }
        return QWidget::event(event);
    }
};

} // namespace

int main(int argc, char *argv[])
{
    const QApplication program(argc, argv);
    Window window;
    window.showFullScreen();
    return QApplication::exec();
}
