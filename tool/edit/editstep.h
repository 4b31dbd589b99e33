// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <model/tarncore.h>

#include <QString>
#include <QStringList>
#include <QVector>

namespace Tool {

/// A core, or a port of it, by the numbers that the editor shows.
struct EditTarget
{
    int core = 0;
    TARN::ProbeType type = TARN::ProbeTypeIn;
    int port = -1; ///< -1 means the core.
};

/// One step of "tarn edit".
struct EditStep
{
    enum Kind { AddCore, AddIn, AddOut, Signals, Value, Clock, Remove, Replace, ReplacePrefix };

    Kind kind = AddCore;
    int number = 1; ///< The place in the arguments, from 1.
    QString text;   ///< The words of the step, for messages.
    EditTarget target;
    bool wildcard = false; ///< Of Signals: the names are patterns.
    QStringList names;     ///< What follows the target: names, a value, or old and new name.
};

/// The first words of all steps.
QStringList editStepNames();

/// How each step is written, one line each.
QStringList editStepUsages();

/// "step 2 (add-in 0)", for messages.
QString stepText(const EditStep &step);

/// "in3"
QString portText(TARN::ProbeType type, int port);

/// Takes @p words apart. The words of a step reach as far as its form says, those of the steps with
/// several names up to the next name of a step. Returns false and sets @p error.
bool parseSteps(const QStringList &words, QVector<EditStep> *steps, QString *error);

} // namespace Tool
