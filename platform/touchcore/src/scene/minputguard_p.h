// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#ifndef MINPUTGUARD_P_H
#define MINPUTGUARD_P_H

#include <functional>
#include <optional>

#include <QList>
#include <QRectF>
#include <QString>
#include <QTimer>

class MButtonModel;
class MDialogPrivate;
class QEvent;

/**
 * Decides which input from the user a dialog takes: only such as comes after the buttons have been seen for
 * some time where they are, as they are, and active.
 */
class MInputGuard : public QObject
{
    Q_OBJECT
public:
    /** Returns the time in milliseconds, from any beginning. */
    using Clock = std::function<qint64()>;

    explicit MInputGuard(MDialogPrivate *dialog);

    /** Makes all of them use \a clock. */
    static void setClock(const Clock &clock);

    int delay() const { return wanted; }
    void setDelay(int milliseconds);

    /** Begins to wait: what the user saw of the buttons is no longer there, or no longer in front. */
    void restart();
    /** Begins to wait if the buttons are no longer as they were seen. */
    void follow();
    /** Learns that a frame with the dialog in front has been drawn. */
    void drawn();
    /** Lets the buttons be active when they have been seen for long enough. */
    void ripen();

    /** Returns whether the buttons have been drawn as they are now. */
    bool isSeen() const { return seenSince.has_value(); }
    /** Returns whether the buttons look inactive. */
    bool isWaiting() const { return wanted > 0 && !ripe; }
    /** Returns whether the buttons have been drawn as active ones. */
    bool isActive() const { return activeSince.has_value(); }
    /** Returns whether \a event, any of the scene's, counts. */
    bool takes(const QEvent *event) const;

    /** Notes how late \a event came, to know later when others came about. */
    static void note(const QEvent *event);

private:
    /** A button as the user sees it. */
    struct Seen
    {
        bool operator==(const Seen &other) const
        {
            return model == other.model && text == other.text && place == other.place;
        }

        const MButtonModel *model;
        QString text;
        QRectF place; ///< In the window
    };

    QList<Seen> buttons() const;
    void showWaiting();

    MDialogPrivate *const dialog;
    int wanted = 0; // ms; 0 takes everything
    QList<Seen> seen;
    std::optional<qint64> seenSince;
    std::optional<qint64> activeSince;
    bool ripe = false;
    QTimer timer;
};

#endif
