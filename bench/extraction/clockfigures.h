// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

/// Times by the clock of extractions and of their phases, for the examples and for generated
/// designs of 100,000 nets and more. They mean something only on a machine with two idle cores.
/// False when a goal is missed.
bool measureByTheClock();
