// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_SIM_TAPCOMMAND_H
#define CONNUI_SIM_TAPCOMMAND_H

#include <optional>

#include <QList>
#include <QString>
#include <QStringList>
#include <QVariantList>

/** A call of the daemon, and its name for users. */
struct Tap
{
    /**
     * Held against it by "com.tavix.nfc.Simulator", or handed to it by "com.tavix.nfc.TagWriter"; a check
     * makes many calls of its own.
     */
    enum Kind { Touch, Writing, Check };

    Kind kind = Touch;
    QString method;
    QVariantList arguments;
    QString what;
};

/** A sub-command of nfctap. */
struct TapCommand
{
    const char *name;
    const char *synopsis;
    const char *help;
    int fewestArguments;
    int mostArguments;
    /** Makes the tap of the arguments, or says in \a fault what is wrong with them. */
    std::optional<Tap> (*make)(const QStringList &arguments, QString &fault);

    /** Whether there are neither too few nor too many of them. */
    bool accepts(const QStringList &arguments) const;

    /** All there are, in the order in which the help shows them. */
    static const QList<TapCommand> &all();

    /** The one named \a name, or null. */
    static const TapCommand *named(const QString &name);
};

#endif
