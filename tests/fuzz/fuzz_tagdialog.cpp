// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

// Shows the dialog for what the input says is on a tag, answers it, and stops where it does not end in one
// result.
//
// The first byte of an input picks the constructor, the rest is what it gets: a text (t), a URI and a line of
// description (u), a description alone (n), a type and its data (d), a MIME type and the file's content (f),
// or the default application and a line for each application (l).
#include <glib.h>
#include <memory>

#include <QApplication>
#include <QGraphicsScene>
#include <QTranslator>

#include <MButtonModel>
#include <MDialog>
#include <MWindow>
#include <NfcApplicationSelectionDialog>
#include <NfcTagReadPermissionDialog>
#include <URINDEFRecord>

#include "support.h"

using namespace ConnUi;

namespace {

NfcTagReadPermissionDialog *newFileDialog(const QString &mimeType, const QByteArray &content)
{
    static const QString path = filePath(QStringLiteral("content"));
    writeFile(path, content);
    return new NfcTagReadPermissionDialog(mimeType, QFileInfo(path));
}

NfcTagReadPermissionDialog *newDialog(char kind, const QByteArray &input)
{
    const qsizetype end = input.indexOf('\n');
    const QByteArray line = input.left(end);
    const QByteArray rest = end < 0 ? QByteArray() : input.mid(end + 1);
    switch (kind) {
    case 'u': {
        const URINDEFRecord record('\0' + line);
        return new NfcTagReadPermissionDialog(&record, QString::fromUtf8(rest));
    }
    case 'n':
        return new NfcTagReadPermissionDialog(static_cast<const URINDEFRecord *>(nullptr),
                                              QString::fromUtf8(input));
    case 'd':
        return new NfcTagReadPermissionDialog(QString::fromUtf8(line), QString::fromUtf8(rest));
    case 'f':
        return newFileDialog(QString::fromUtf8(line), rest);
    case 'l':
        return new NfcTagReadPermissionDialog(QString::fromUtf8(rest).split(QLatin1Char('\n')),
                                              QString::fromUtf8(line));
    default:
        return new NfcTagReadPermissionDialog(QString::fromUtf8(input));
    }
}

NfcApplicationSelectionDialog *selectionIn(const MWindow &window)
{
    const QList<QGraphicsItem *> items = window.scene()->items();
    for (QGraphicsItem *item : items)
        if (auto *selection = dynamic_cast<NfcApplicationSelectionDialog *>(item))
            return selection;
    return nullptr;
}

} // namespace

// The font library never frees what it has read about the fonts, and the vCard library loses the beginning of
// a broken line; only its allocator is left on the stack.
extern "C" const char *__lsan_default_suppressions()
{
    return "leak:libfontconfig\nleak:g_realloc\n";
}

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    // Missing desktop files and broken cards are warned about, thousands of them a second.
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
    g_log_set_writer_func(
        [](GLogLevelFlags, const GLogField *, gsize, gpointer) { return G_LOG_WRITER_HANDLED; }, nullptr,
        nullptr);
    new QApplication(*argc, *argv);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    // Stays until the end, when there is no application any more. A small one is painted faster.
    static MWindow &window = *new MWindow;
    if (!window.isVisible()) {
        window.resize(240, 320);
        window.show();
    }
    if (size == 0)
        return 0;

    const QByteArray input(reinterpret_cast<const char *>(data), qsizetype(size));
    const std::unique_ptr<NfcTagReadPermissionDialog> dialog(newDialog(input.front(), input.mid(1)));
    int results = 0;
    QObject::connect(dialog.get(), &MDialog::finished, dialog.get(), [&results] { ++results; });
    dialog->appear(&window);
    QCoreApplication::processEvents();
    window.grab();

    MButtonModel *last = dialog->buttons().constLast();
    last->click();
    if (last->role() == M::InvalidRole) {
        NfcApplicationSelectionDialog *selection = selectionIn(window);
        require(selection && results == 0);
        QCoreApplication::processEvents();
        window.grab();
        selection->button(M::OkButton)->click();
    }
    require(results == 1);
    dialog->reject();
    require(results == 1);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    require(!selectionIn(window));
    return 0;
}
