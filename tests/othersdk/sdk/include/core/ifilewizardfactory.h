// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QObject>

class QWidget;

namespace Core {

class IFileWizardFactory : public QObject
{
    Q_OBJECT

public:
    virtual QString id() const = 0;
    virtual QString displayName() const = 0;
    virtual QString description() const = 0;
    virtual void runWizard(QWidget *parent, const QString &path) = 0;
};

} // namespace Core
