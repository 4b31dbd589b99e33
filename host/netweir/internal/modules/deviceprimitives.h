// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QString>

namespace NETWEIR::Internal {

/// The primitives of the development device: modules with ports and parameters but without content.
/// The library contains one source per primitive.

/// Whether the device has a primitive with that name. Constant time.
bool isDevicePrimitive(const QString &name);

/// The Verilog source of the primitive; null when the device has no primitive with that name.
QByteArray devicePrimitiveSource(const QString &name);

} // namespace NETWEIR::Internal
