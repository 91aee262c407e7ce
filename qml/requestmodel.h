// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_QML_REQUESTMODEL_H
#define CONNUI_QML_REQUESTMODEL_H

#include <memory>

#include <QAbstractListModel>
#include <QList>
#include <QtQml/qqmlregistration.h>

#include "nfcrequest.h"

/**
 * The requests that wait for an answer, the oldest first: the QML type NfcRequestModel.
 *
 * Its rows have one role, "request". A request leaves the model, and is deleted, when the event loop returns
 * after its end.
 */
class RequestModel : public QAbstractListModel
{
    Q_OBJECT
    QML_NAMED_ELEMENT(NfcRequestModel)
    QML_UNCREATABLE("NfcAgent has one")
    /** The number of requests. */
    Q_PROPERTY(int count READ count NOTIFY countChanged FINAL)
    /** The oldest request; null for none. */
    Q_PROPERTY(NfcRequest *first READ first NOTIFY firstChanged FINAL)

public:
    explicit RequestModel(QObject *parent = nullptr);

    int count() const;
    NfcRequest *first() const;

    /** Returns the request in row \a row, null where there is none. */
    Q_INVOKABLE NfcRequest *get(int row) const;

    /** Adds a request, which the model owns, when it and all earlier ones are ready. */
    void add(std::unique_ptr<NfcRequest> request);
    /** Ends all requests without answers. */
    void expireAll();

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void countChanged();
    void firstChanged();

private:
    enum Role { RequestRole = Qt::UserRole };

    void takeReady();
    void remove(const QObject *request);
    void tell(int row);

    QList<NfcRequest *> requests; // in the order in which they came
    int shown = 0;                // of them, from the front
};

#endif
