// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QMap>
#include <QObject>
#include <QVariant>

namespace TE {

class DesignManager : public QObject
{
    Q_OBJECT

public:
    struct Record
    {
        int type = 0;
        bool enabled = false;
    };

    QMap<QString, QVariant> getSourceFileInfo();
    Record getFileInfo(const QString &file);
    QVariant getOptionValue(const QString &name);
    QString workingDir();

signals:
    void changed();
};

} // namespace TE
