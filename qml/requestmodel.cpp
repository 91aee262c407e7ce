// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "requestmodel.h"

#include <algorithm>

#include <QPointer>
#include <QQmlEngine>

RequestModel::RequestModel(QObject *parent) : QAbstractListModel(parent) {}

int RequestModel::count() const
{
    return shown;
}

NfcRequest *RequestModel::first() const
{
    return get(0);
}

NfcRequest *RequestModel::get(int row) const
{
    return row >= 0 && row < shown ? requests[row] : nullptr;
}

void RequestModel::add(std::unique_ptr<NfcRequest> request)
{
    NfcRequest *added = request.release();
    added->setParent(this);
    // A program may destroy it, but no collection does as long as it has a parent.
    QQmlEngine::setObjectOwnership(added, QQmlEngine::JavaScriptOwnership);
    // Queued: it can end in a delegate that this model is creating.
    connect(
        added, &NfcRequest::ended, this,
        [this, ended = QPointer<NfcRequest>(added)] {
            if (!ended)
                return;
            ended->deleteLater();
            remove(ended);
        },
        Qt::QueuedConnection);
    connect(added, &QObject::destroyed, this, &RequestModel::remove);
    connect(added, &NfcRequest::ready, this, &RequestModel::takeReady);
    requests.append(added);
    added->prepare();
}

void RequestModel::expireAll()
{
    const QList<QPointer<NfcRequest>> waiting(requests.cbegin(), requests.cend());
    for (const QPointer<NfcRequest> &request : waiting)
        if (request)
            request->expire();
}

int RequestModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : count();
}

QVariant RequestModel::data(const QModelIndex &index, int role) const
{
    return role == RequestRole ? QVariant::fromValue(get(index.row())) : QVariant();
}

QHash<int, QByteArray> RequestModel::roleNames() const
{
    return {{RequestRole, "request"}};
}

void RequestModel::takeReady()
{
    const QPointer<RequestModel> guard(this);
    while (guard && shown < requests.size() && requests[shown]->isReady()) {
        beginInsertRows({}, shown, shown);
        ++shown;
        endInsertRows();
        if (guard)
            tell(shown - 1);
    }
}

void RequestModel::remove(const QObject *request)
{
    const auto found = std::find(requests.cbegin(), requests.cend(), request);
    if (found == requests.cend())
        return;
    const int row = int(found - requests.cbegin());
    if (row >= shown) {
        requests.erase(found);
        takeReady();
        return;
    }
    const QPointer<RequestModel> guard(this);
    beginRemoveRows({}, row, row);
    requests.erase(found);
    --shown;
    endRemoveRows();
    if (guard)
        tell(row);
}

// Announces a row that came or went.
void RequestModel::tell(int row)
{
    const QPointer<RequestModel> guard(this);
    Q_EMIT countChanged();
    if (guard && row == 0)
        Q_EMIT firstChanged();
}
