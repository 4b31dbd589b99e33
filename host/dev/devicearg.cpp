// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "devicearg.h"

// The type is complete in its header. The library exists so that it links like the others.
