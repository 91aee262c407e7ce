// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_SUPPORT_KEYFILE_H
#define CONNUI_SUPPORT_KEYFILE_H

#include <glib.h>
#include <memory>

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace Support {

/** A file of groups of keys and values, as desktop entries are, read by GLib. */
class KeyFile
{
public:
    /** Reads \a data. Returns what is wrong with it, and then holds nothing; an empty text when it is right.
     */
    QString read(const QByteArray &data)
    {
        GError *problem = nullptr;
        file.reset(g_key_file_new());
        // GLib takes a byte of zero for the end of a value.
        if (data.contains('\0'))
            return QStringLiteral("not a text");
        if (g_key_file_load_from_data(file.get(), data.constData(), gsize(data.size()),
                                      G_KEY_FILE_KEEP_TRANSLATIONS, &problem))
            return QString();
        file.reset(g_key_file_new());
        const QString reason = QString::fromUtf8(problem->message);
        g_error_free(problem);
        return reason;
    }

    bool hasGroup(const QString &group) const
    {
        return g_key_file_has_group(file.get(), group.toUtf8().constData());
    }

    QStringList groups() const { return list(g_key_file_get_groups(file.get(), nullptr)); }

    QStringList keys(const QString &group) const
    {
        return list(g_key_file_get_keys(file.get(), group.toUtf8().constData(), nullptr, nullptr));
    }

    /** Returns a value with its escapes resolved, empty when there is none. */
    QString value(const QString &group, const QString &key) const
    {
        return text(
            g_key_file_get_string(file.get(), group.toUtf8().constData(), key.toUtf8().constData(), nullptr));
    }

    /** Returns a value in the language of the process, as far as the file has it. */
    QString localizedValue(const QString &group, const QString &key) const
    {
        return text(g_key_file_get_locale_string(file.get(), group.toUtf8().constData(),
                                                 key.toUtf8().constData(), nullptr, nullptr));
    }

private:
    static QString text(gchar *value)
    {
        const QString copy = QString::fromUtf8(value);
        g_free(value);
        return copy;
    }

    static QStringList list(gchar **values)
    {
        QStringList copy;
        for (gchar **value = values; value && *value; ++value)
            copy.append(QString::fromUtf8(*value));
        g_strfreev(values);
        return copy;
    }

    std::unique_ptr<GKeyFile, decltype(&g_key_file_unref)> file{g_key_file_new(), &g_key_file_unref};
};

} // namespace Support

#endif
