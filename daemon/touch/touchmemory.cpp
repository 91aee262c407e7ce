// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "daemon/touch/touchmemory.h"

#include <algorithm>

bool TouchMemory::Touch::isOver(qint64 now) const
{
    return lying == 0 && questions == 0 && now - left > mostMilliseconds;
}

bool TouchMemory::Touch::isOf(const QByteArray &otherUid, const QByteArray &otherContent) const
{
    return content == otherContent && (uid == otherUid || uid.isEmpty() || otherUid.isEmpty());
}

TouchMemory::Meeting TouchMemory::meet(const QByteArray &uid, const QByteArray &content, qint64 now)
{
    touches.removeIf([now](const Touch &touch) { return touch.isOver(now); });
    const auto known = std::find_if(touches.begin(), touches.end(),
                                    [&](const Touch &touch) { return touch.isOf(uid, content); });
    if (known != touches.end()) {
        ++known->lying;
        return {known->number, false};
    }
    touches.append({nextNumber++, uid, content, 1, 0, now});
    return {touches.constLast().number, true};
}

void TouchMemory::leave(int number, qint64 now)
{
    if (Touch *touch = find(number)) {
        --touch->lying;
        touch->left = now;
    }
}

void TouchMemory::glimpse(const QByteArray &uid, qint64 now)
{
    for (Touch &touch : touches)
        if (!uid.isEmpty() && touch.uid == uid && !touch.isOver(now))
            touch.left = now;
}

void TouchMemory::open(int number)
{
    if (Touch *touch = find(number))
        ++touch->questions;
}

void TouchMemory::close(int number)
{
    if (Touch *touch = find(number))
        --touch->questions;
}

void TouchMemory::forget(int number)
{
    touches.removeIf([number](const Touch &touch) { return touch.number == number; });
}

int TouchMemory::openQuestions() const
{
    return int(std::count_if(
        touches.cbegin(), touches.cend(), [](const Touch &touch) { return touch.questions > 0; }));
}

TouchMemory::Touch *TouchMemory::find(int number)
{
    const auto touch = std::find_if(touches.begin(), touches.end(),
                                    [number](const Touch &known) { return known.number == number; });
    return touch == touches.end() ? nullptr : &*touch;
}
