// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "devicearg.h"

// The type is all header; the library is there to be linked like the host's other ones.
