// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later
#include "allocations.h"

#include <cstddef>

namespace {
bool counting = false;
int allocations = 0;
} // namespace

AllocationCount::AllocationCount()
{
    allocations = 0;
    counting = true;
}

AllocationCount::~AllocationCount()
{
    counting = false;
}

int AllocationCount::count() const
{
    return allocations;
}

#ifdef __SANITIZE_ADDRESS__
bool canCountAllocations()
{
    return false;
}
#else
bool canCountAllocations()
{
    return true;
}

// The program's own definitions stand before the C library's, for the libraries that it uses as well.
#define CONNUI_REPLACES_LIBC extern "C" __attribute__((visibility("default")))

// NOLINTBEGIN(bugprone-reserved-identifier): these are the C library's own names for what is replaced here.
extern "C" {
void *__libc_malloc(std::size_t size);
void *__libc_calloc(std::size_t count, std::size_t size);
void *__libc_realloc(void *memory, std::size_t size);
}
// NOLINTEND(bugprone-reserved-identifier)

CONNUI_REPLACES_LIBC void *malloc(std::size_t size)
{
    allocations += counting;
    return __libc_malloc(size);
}

CONNUI_REPLACES_LIBC void *calloc(std::size_t count, std::size_t size)
{
    allocations += counting;
    return __libc_calloc(count, size);
}

CONNUI_REPLACES_LIBC void *realloc(void *memory, std::size_t size)
{
    allocations += counting;
    return __libc_realloc(memory, size);
}
#endif
