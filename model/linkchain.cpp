// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "linkchain.h"

#include <QFileInfo>

namespace TARN {

QStringList linkChain(const QString &path)
{
    constexpr int LongestChain = 40; // The limit of the system.
    QStringList chain{path};
    while (QFileInfo(chain.last()).isSymLink()) {
        if (chain.size() > LongestChain)
            return QStringList();
        chain.append(QFileInfo(chain.last()).symLinkTarget());
    }
    return chain;
}

} // namespace TARN
