// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

// The device of the project.

#include "keywordson.h"

#include <dev/devicearg.h>

#include "keywordsoff.h"
