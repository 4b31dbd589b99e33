// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "editstep.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

namespace Tool {

class EditedConfig;
class SignalChoice;

/// Executes steps on a configuration. Owns nothing.
class StepExecution
{
public:
    /// The design, null when it cannot be read: then all has been said.
    using DesignReader = std::function<SignalChoice *()>;

    StepExecution(EditedConfig *config, DesignReader readDesign);

    /// False when the configuration refuses the step. Steps before it have been executed.
    bool execute(const EditStep &step);

    /// Why the last step was refused, empty when the design cannot be read.
    QString error() const { return m_error; }
    /// What was left out of the last step.
    QStringList warnings() const { return m_warnings; }

private:
    bool executeKind(const EditStep &step);
    bool findTarget(const EditStep &step);
    bool addPort(TARN::ProbeType type);
    bool addSignals(const EditStep &step);
    std::optional<QList<TARN::SignalItem>> findName(SignalChoice *choice, const QString &name,
                                                    TARN::ProbeType type);
    bool setValue(const QString &value);
    bool setClock(const QString &net);
    bool remove(const EditStep &step);
    bool removeSignals(const QStringList &names);
    bool replace(const QString &from, const QString &to);
    bool replacePrefix(const QString &from, const QString &to);
    bool fail(const QString &error);

    EditedConfig *const m_config;
    const DesignReader m_readDesign;
    int m_core = 0; ///< The position of the core of the step.
    EditTarget m_target;
    QString m_error;
    QStringList m_warnings;
};

} // namespace Tool
