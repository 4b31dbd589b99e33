// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "wholefile.h"

#include <files/regularfile.h>

#include <QCoreApplication>

namespace TE {

namespace {

constexpr qint64 LargestFile = 64 * 1024 * 1024;

class WholeFile
{
    Q_DECLARE_TR_FUNCTIONS(TE::WholeFile)
};

} // namespace

bool readWholeFile(const QString &path, QByteArray *content, QString *reason)
{
    switch (Files::readRegularFile(path, LargestFile, content, reason)) {
    case Files::Access::Granted:
        return true;
    case Files::Access::Folder:
        *reason = WholeFile::tr("it is a folder");
        break;
    case Files::Access::Special:
        *reason = WholeFile::tr("it is a pipe or a device");
        break;
    case Files::Access::TooLarge:
        *reason = WholeFile::tr("it is too large");
        break;
    case Files::Access::Failed:
        break;
    }
    return false;
}

} // namespace TE
