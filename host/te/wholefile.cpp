// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "wholefile.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>

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
    QFile file(path);
    if (QFileInfo(path).isDir()) {
        *reason = WholeFile::tr("it is a folder");
        return false;
    }
    if (!file.open(QIODevice::ReadOnly)) {
        *reason = file.errorString();
        return false;
    }
    // Only pipes and devices hide their size, and reading up to a limit takes memory for all of it.
    if (file.isSequential())
        *content = file.read(LargestFile + 1);
    else if (file.size() <= LargestFile)
        *content = file.readAll();
    if (content->size() > LargestFile || file.size() > LargestFile) {
        *reason = WholeFile::tr("it is too large");
        return false;
    }
    *reason = file.errorString();
    return file.error() == QFileDevice::NoError;
}

} // namespace TE
