// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#ifndef MMESSAGEBOX_H
#define MMESSAGEBOX_H

#include <memory>

#include <MDialog>

class MMessageBoxPrivate;

/** A dialog that shows a text and, above it, an icon. */
class QUENZOTOUCHCORE_EXPORT MMessageBox : public MDialog
{
    Q_OBJECT
    Q_PROPERTY(QString text READ text WRITE setText)
    Q_PROPERTY(QString iconId READ iconId WRITE setIconId)
public:
    /** Makes a message box that shows \a text. */
    MMessageBox(const QString &title, const QString &text, M::StandardButtons buttons = M::OkButton);
    /** Makes a message box without a text. */
    explicit MMessageBox(const QString &title = QString(), M::StandardButtons buttons = M::OkButton);
    ~MMessageBox() override;

    /** Returns the text. */
    QString text() const;
    /** Shows \a text, as plain text. It shows nowhere once setCentralWidget() has given other contents. */
    void setText(const QString &text);

    /** Returns the theme id or the absolute path of the icon. */
    QString iconId() const;
    /** Shows the theme's icon \a id, or the file when it is an absolute path, above the title; none when
     * empty. */
    void setIconId(const QString &id);

private:
    const std::unique_ptr<MMessageBoxPrivate> d;
};

#endif
