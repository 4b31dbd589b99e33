// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QString>

namespace NETWEIR::Internal {

/// The primitives of the development device, as modules with ports and parameters but no content.
/// They ship inside the library, one source each.

/// The device has a primitive of that name. Constant time.
bool isDevicePrimitive(const QString &name);

/// The Verilog source of the primitive; null when the device has none of that name.
QByteArray devicePrimitiveSource(const QString &name);

} // namespace NETWEIR::Internal
