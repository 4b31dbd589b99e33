// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "setting.h"

namespace TarnTest {

quint32 setting(const char *name, quint32 usual)
{
    return qEnvironmentVariableIsSet(name) ? qgetenv(name).toUInt() : usual;
}

} // namespace TarnTest
