// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_CLIENT_DEFAULTAPPLICATIONS_H
#define CONNUI_CLIENT_DEFAULTAPPLICATIONS_H

#include <gio/gio.h>

#include <QFutureWatcher>
#include <QList>
#include <QObject>
#include <QString>

/** The application that opens one kind of content. */
struct DefaultApplication
{
    const char *kind = nullptr; ///< The id of the kind's name
    QString name;               ///< Fit to be shown
    QString icon;               ///< A theme id or an absolute path, or empty

    bool operator==(const DefaultApplication &other) const = default;
};

/**
 * Follows which applications open the content of tags.
 *
 * Another thread reads their files, which can be large or lie on a slow disk.
 */
class DefaultApplications : public QObject
{
    Q_OBJECT

public:
    explicit DefaultApplications(QObject *parent = nullptr);
    ~DefaultApplications() override;

Q_SIGNALS:
    /** The applications are \a now these, one for each kind that has one. */
    void changed(const QList<DefaultApplication> &now);

private:
    void look();
    void take();

    QFutureWatcher<QList<DefaultApplication>> watcher;
    GAppInfoMonitor *const monitor;
    bool isOutdated = false; ///< by what came during the look that is under way
    QList<DefaultApplication> known;
};

#endif
