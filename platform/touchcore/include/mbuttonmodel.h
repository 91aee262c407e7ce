// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#ifndef MBUTTONMODEL_H
#define MBUTTONMODEL_H

#include <memory>

#include <QObject>

#include <MTypes>

class MButtonModelPrivate;

/** A button of a dialog. The dialog makes, shows and owns it. */
class QUENZOTOUCHCORE_EXPORT MButtonModel : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString text READ text WRITE setText NOTIFY textChanged)
public:
    /** Makes a button that shows \a text; the rest cannot change later. */
    MButtonModel(const QString &text, M::ButtonRole role, M::StandardButton button,
                 QObject *parent = nullptr);
    ~MButtonModel() override;

    /** Returns the text on the button. */
    QString text() const;
    /** Shows \a text, as plain text. */
    void setText(const QString &text);

    /** Returns what the button is for, M::InvalidRole for a button added by its text alone. */
    M::ButtonRole role() const;
    /** Returns which standard button it is, M::NoStandardButton for an added one. */
    M::StandardButton standardButton() const;

public Q_SLOTS:
    /** Does what a press does: emits clicked(), which closes the dialog. */
    void click();

Q_SIGNALS:
    /** The button was pressed. The dialog already knows; a slot may delete it. */
    void clicked();
    /** The button shows \a text now. */
    void textChanged(const QString &text);

private:
    const std::unique_ptr<MButtonModelPrivate> d;
};

#endif
