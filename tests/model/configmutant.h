// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>

class QRandomGenerator;

/// Changes @p content, a configuration file, at a few places, the same for the same state of
/// @p random.
QByteArray mutant(QByteArray content, QRandomGenerator *random);
