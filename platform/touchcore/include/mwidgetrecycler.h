// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#ifndef MWIDGETRECYCLER_H
#define MWIDGETRECYCLER_H

#include <memory>
#include <typeinfo>

#include <MWidget>
#include <typeindex>

class MWidgetRecyclerPrivate;

/** Keeps widgets that have gone out of sight until a widget of the same class is wanted. */
class QUENZOTOUCHCORE_EXPORT MWidgetRecycler
{
public:
    /** Makes a recycler that keeps nothing yet. */
    MWidgetRecycler();
    /** Deletes what is kept. */
    ~MWidgetRecycler();

    /** Takes over \a widget, which is emptied: its layout and the items in it are deleted. */
    void recycle(MWidget *widget);

    /** Hands out an empty widget of class \a T that was recycled, or null. The caller owns it. */
    template <class T>
    T *take()
    {
        return static_cast<T *>(take(typeid(T)));
    }

private:
    MWidget *take(std::type_index type);
    const std::unique_ptr<MWidgetRecyclerPrivate> d;
};

#endif
