// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

// The host's event bus.

#include "keywordson.h"

#include <qutil/eventmanager.h>
#include <qutil/ievent.h>
#include <qutil/ieventhandler.h>

#include "keywordsoff.h"
