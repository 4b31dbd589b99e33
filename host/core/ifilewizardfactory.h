// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "core_global.h"

#include <QObject>
#include <QString>

class QWidget;

namespace Core {

/// An entry in the gallery of new files. Plug-ins offer it with
/// ExtSys::IPlugin::addAutoReleasedObject().
class CORE_EXPORT IFileWizardFactory : public QObject
{
    Q_OBJECT

public:
    explicit IFileWizardFactory(QObject *parent = nullptr);
    ~IFileWizardFactory() override;

    /// Unique and stable, for example "MB.Wizard.TARN".
    virtual QString id() const = 0;
    virtual QString displayName() const = 0;
    virtual QString description() const = 0;

    /// Runs the wizard modally. @p path is the folder to suggest, empty for none.
    virtual void runWizard(QWidget *parent, const QString &path) = 0;
};

} // namespace Core
