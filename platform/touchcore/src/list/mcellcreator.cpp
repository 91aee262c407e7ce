// SPDX-FileCopyrightText: 2026 The ConnUi NFC authors
// SPDX-License-Identifier: LGPL-2.1-or-later

#include "mcellcreator.h"

MCellCreator::MCellCreator() = default;

MCellCreator::~MCellCreator() = default;
