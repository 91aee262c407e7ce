// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef CONNUI_ALLOCATIONS_H
#define CONNUI_ALLOCATIONS_H

/** Returns whether allocations can be counted: not where a sanitizer has an allocator of its own. */
bool canCountAllocations();

/** Counts the allocations of the whole program, those of its libraries included, while it lives. */
class AllocationCount
{
public:
    AllocationCount();
    ~AllocationCount();

    int count() const;
};

#endif
