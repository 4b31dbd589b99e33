// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QCoreApplication>
#include <QString>
#include <QStringList>

namespace NETWEIR::Internal {

/// A position in a source file; line and column are 0 when unknown.
struct Place
{
    QString file;
    int line = 0;
    int column = 0;
};

/// Translation context of all messages of the extractor.
struct Text
{
    Q_DECLARE_TR_FUNCTIONS(NETWEIR::Internal::Text)
};

/// "file:line", for a place in the text of a message.
QString fileAndLine(const Place &place);

/// "ERROR: file:line:col: text", without the unknown parts of the place.
QString errorMessage(const Place &place, const QString &text);
QString errorMessage(const QString &text);

/// The same with "WARNING".
QString warningMessage(const Place &place, const QString &text);

bool isError(const QString &message);
bool containsError(const QStringList &messages);

} // namespace NETWEIR::Internal
