// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

// Views, commands, wizards and the open project of the host.

#include "keywordson.h"

#include <core/actionmanager.h>
#include <core/coreconstants.h>
#include <core/ifilewizardfactory.h>
#include <core/iview.h>
#include <core/projectmanager.h>
#include <core/viewmanager.h>

#include "keywordsoff.h"
