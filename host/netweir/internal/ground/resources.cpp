// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "resources.h"

/// The linker takes the resources from a static library only when something refers to them. The
/// macro works only outside of namespaces.
static void initResources()
{
    Q_INIT_RESOURCE(netweir);
}

namespace NETWEIR::Internal {

QString resourcePath(const QString &name)
{
    initResources();
    return QStringLiteral(":/netweir/") + name;
}

} // namespace NETWEIR::Internal
