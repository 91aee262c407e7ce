// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "contentaction.h"

#include <algorithm>
#include <memory>

#include <QFile>

#include "gio.h"

namespace ContentAction {
namespace {

struct Unref
{
    void operator()(gpointer object) const { Gio::load()->g_object_unref(object); }
};

using Application = std::unique_ptr<GAppInfo, Unref>;

// Null when the application is not installed.
Application applicationOf(const QString &id)
{
    const Gio *gio = Gio::load();
    const QByteArray desktopFile = id.toUtf8() + ".desktop";
    return Application(gio && !id.isEmpty() ? reinterpret_cast<GAppInfo *>(
                                                  gio->g_desktop_app_info_new(desktopFile.constData()))
                                            : nullptr);
}

// Takes over the reference. A hidden application counts as one that is not installed, though GIO offers it.
QString nameOf(GAppInfo *application)
{
    if (!application)
        return QString();
    const Application owner(application);
    if (Gio::load()->g_desktop_app_info_get_is_hidden(reinterpret_cast<GDesktopAppInfo *>(application)))
        return QString();
    QString id = QString::fromUtf8(Gio::load()->g_app_info_get_id(application));
    if (id.endsWith(QStringLiteral(".desktop")))
        id.chop(int(qstrlen(".desktop")));
    return id;
}

QString nameForScheme(const QString &uri)
{
    const QByteArray scheme = QUrl(uri, QUrl::TolerantMode).scheme().toUtf8();
    const Gio *gio = Gio::load();
    return !gio || scheme.isEmpty() ? QString()
                                    : nameOf(gio->g_app_info_get_default_for_uri_scheme(scheme.constData()));
}

// A text with blanks is prose, even "Tel: 030 123".
bool isUri(const QString &text)
{
    return std::none_of(
        text.cbegin(), text.cend(),
        [](QChar character) { return character.isSpace() || character.category() == QChar::Other_Control; });
}

QString nameForType(const QString &mimeType)
{
    const QByteArray type = mimeType.toLower().toUtf8();
    const Gio *gio = Gio::load();
    return !gio || type.isEmpty() ? QString()
                                  : nameOf(gio->g_app_info_get_default_for_type(type.constData(), false));
}

} // namespace

Action::Action(const QString &name) : id(name) {}

Action Action::defaultActionForScheme(const QString &uri)
{
    return Action(nameForScheme(uri));
}

Action Action::defaultActionForString(const QString &data)
{
    const QString application = isUri(data.trimmed()) ? nameForScheme(data.trimmed()) : QString();
    const Gio *gio = Gio::load();
    if (!gio || !application.isEmpty() || data.isEmpty())
        return Action(application);
    const QByteArray bytes = data.toUtf8();
    const std::unique_ptr<char, decltype(&g_free)> type(
        gio->g_content_type_guess(nullptr, reinterpret_cast<const guchar *>(bytes.constData()), bytes.size(),
                                  nullptr),
        g_free);
    return Action(nameForType(QString::fromUtf8(type.get())));
}

Action Action::defaultActionForFile(const QUrl &file, const QString &mimeType)
{
    Q_UNUSED(file)
    return Action(nameForType(mimeType));
}

Action Action::defaultActionForFile(const QUrl &file)
{
    const Gio *gio = Gio::load();
    if (!gio || !file.isLocalFile())
        return Action();
    const std::unique_ptr<GFile, Unref> local(
        gio->g_file_new_for_path(QFile::encodeName(file.toLocalFile()).constData()));
    return Action(nameOf(gio->g_file_query_default_handler(local.get(), nullptr, nullptr)));
}

bool Action::isValid() const
{
    return !id.isEmpty();
}

QString Action::name() const
{
    return id;
}

QString Action::desktopFile() const
{
    const Application application = applicationOf(id);
    return application ? QFile::decodeName(Gio::load()->g_desktop_app_info_get_filename(
                             reinterpret_cast<GDesktopAppInfo *>(application.get())))
                       : QString();
}

bool Action::open(const QString &uri) const
{
    const Application application = applicationOf(id);
    if (!application)
        return false;
    QByteArray argument = uri.toUtf8();
    GList uris{argument.data(), nullptr, nullptr};
    return Gio::load()->g_app_info_launch_uris(application.get(), &uris, nullptr, nullptr);
}

} // namespace ContentAction
