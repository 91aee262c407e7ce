// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#ifndef MLAYOUT_H
#define MLAYOUT_H

#include <memory>

#include <QGraphicsLinearLayout>
#include <quenzotouchcore_export.h>

class MLinearLayoutPolicy;

/** A layout that takes the geometry of its items from its policy. It has no margins of its own by default. */
class QUENZOTOUCHCORE_EXPORT MLayout : public QGraphicsLinearLayout
{
public:
    /** Makes a layout and sets it on \a parent, if there is one; a widget owns its layout. */
    explicit MLayout(QGraphicsLayoutItem *parent = nullptr);
    ~MLayout() override;

private:
    friend class MLinearLayoutPolicy;
    std::unique_ptr<MLinearLayoutPolicy> policy;
};

#endif
