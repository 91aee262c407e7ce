// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#ifndef MSYSTEMLOOK_P_H
#define MSYSTEMLOOK_P_H

#include <QObject>
#include <QVariantMap>

class QDBusPendingCallWatcher;
class QDBusVariant;

/** How the user's settings want every program to look. */
struct MLook
{
    bool dark = false;
    bool highContrast = false;
    qreal textScale = 1;
    bool reducedMotion = false;

    bool operator==(const MLook &other) const = default;
};

/**
 * Follows the settings of the desktop through its portal, org.freedesktop.portal.Settings on the session bus.
 * Without a portal everything keeps its default.
 */
class MSystemLook : public QObject
{
    Q_OBJECT
public:
    /** Asks the portal and returns at once. */
    explicit MSystemLook(QObject *parent = nullptr);

    MLook look() const;

    /** Returns \a scale within what is legible and fits. */
    static qreal legible(qreal scale);

Q_SIGNALS:
    /** look() is a different one. */
    void changed();

private Q_SLOTS:
    void settingChanged(const QString &group, const QString &key, const QDBusVariant &value);

private:
    void readAll(QDBusPendingCallWatcher *call);
    void take(const QVariantMap &news);
    QVariant first(std::initializer_list<const char *> names, const QVariant &otherwise = {}) const;

    QVariantMap settings; ///< By group, a blank and key
};

#endif
