// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <sdk/core.h>

namespace TARN {

/// The gallery entry of the plug-in. Owned by the host, which receives it from the plug-in's
/// initialize(). Holds nothing.
class TarnFileWizardFactory final : public Core::IFileWizardFactory
{
    Q_OBJECT

public:
    explicit TarnFileWizardFactory(QObject *parent = nullptr);

    // Core::IFileWizardFactory
    QString id() const override;
    QString displayName() const override;
    QString description() const override;
    /// Shows NewFileDialog. The new file is not opened.
    void runWizard(QWidget *parent, const QString &path) override;
};

} // namespace TARN
