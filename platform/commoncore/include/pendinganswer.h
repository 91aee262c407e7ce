// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_PENDINGANSWER_H
#define CONNUI_PENDINGANSWER_H

#include <connui_common_core_export.h>

#include <QObject>
#include <QString>
#include <QVariant>

namespace ConnUi {

/**
 * An answer that is still to come: what the functions of the platform's libraries return whose name ends in
 * Async.
 *
 * Such a function does not wait. The answer arrives once, from the event loop, never before the function has
 * returned; then the object deletes itself. Deleting it, or its parent, earlier means that finished() never
 * comes.
 */
class CONNUI_COMMON_CORE_EXPORT PendingAnswer : public QObject
{
    Q_OBJECT

public:
    /** Makes an answer that belongs to \a parent, or to the application when that is null. */
    explicit PendingAnswer(QObject *parent);
    ~PendingAnswer() override;

    /** Returns whether the answer is known. */
    bool isFinished() const;

    /** Returns whether the call has failed; false while it is not finished. */
    bool isError() const;

    /** Returns the failure's D-Bus name; empty where there is none. */
    QString errorName() const;

    /** Returns the failure's text, for the log and not for the user; empty where there is none. */
    QString errorText() const;

    /** Returns what the function that was called says that it returns; after a failure what it would return
     * then. */
    QVariant value() const;

    /**
     * Brings the answer and announces it: for the library that has made this object, from the event loop,
     * once. A slot may delete whatever it likes.
     */
    void finish(const QVariant &value, const QString &errorName = {}, const QString &errorText = {});

Q_SIGNALS:
    /** The answer has come. */
    void finished(ConnUi::PendingAnswer *answer);

private:
    bool isKnown = false;
    QVariant result;
    QString failureName;
    QString failureText;
};

} // namespace ConnUi

#endif
