// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "wholefile.h"

#include <files/regularfile.h>

namespace TE {

bool WholeFile::read(const QString &path, QByteArray *content, QString *reason)
{
    constexpr qint64 LargestFile = 64 * 1024 * 1024;
    switch (Files::readRegularFile(path, LargestFile, content, reason)) {
    case Files::Access::Granted:
        return true;
    case Files::Access::Folder:
        *reason = tr("it is a folder");
        break;
    case Files::Access::Special:
        *reason = tr("it is a pipe or a device");
        break;
    case Files::Access::TooLarge:
        *reason = tr("it is too large");
        break;
    case Files::Access::Failed:
        break;
    }
    return false;
}

} // namespace TE
