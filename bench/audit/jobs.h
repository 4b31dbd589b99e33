// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

// Each job measures one part of following a design, checks the results, prints a table and returns
// false when a goal is missed.

bool measureAuditing();

bool measureReplacing();
