// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "resources.h"

/// The linker takes them out of a static library only when something names them. The macro works
/// outside of namespaces only.
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
