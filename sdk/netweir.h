// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

// The netlist of the design and the functions that read it.

#include "keywordson.h"

#include <netweir/hierachy.h>
#include <netweir/rtlextraction.h>
#include <netweir/rtlnet.h>
#include <netweir/rtlnetbus.h>
#include <netweir/rtlnetlist.h>

#include "keywordsoff.h"
