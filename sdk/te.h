// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

// The design of the open project, and the names of events and options.

#include "keywordson.h"

#include <te/designmanager.h>
#include <te/flowmanager.h>
#include <te/taskengine.h>
#include <te/teconstants.h>

#include "keywordsoff.h"
