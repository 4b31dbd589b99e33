// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "../netweir_global.h"

#include <QByteArray>
#include <QString>

namespace NETWEIR {
namespace Internal {

/// The primitives of the development device, as modules with ports and parameters but no content.
/// They ship inside the library, one source each.

/// The device has a primitive of that name. Constant time.
NETWEIR_EXPORT bool isDevicePrimitive(const QString &name);

/// The Verilog source of the primitive; null when the device has none of that name.
NETWEIR_EXPORT QByteArray devicePrimitiveSource(const QString &name);

} // namespace Internal
} // namespace NETWEIR
