// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "piecenames.h"

#include <netweir/internal/sources/designsources.h>

namespace NETWEIR::Internal {

namespace {

const char TextPrefix[] = "text";

} // namespace

QString pieceName(const SourceFile &file, const TextPiece &piece)
{
    // The elaborator reads library files in the order of their names, and the first of several
    // definitions counts.
    constexpr int Digits = 6;
    const bool isSystemVerilog = file.systemVerilog || !piece.blocks.isEmpty();
    QString name = QString::number(piece.text);
    if (file.library)
        name = name.rightJustified(Digits, QLatin1Char('0'));
    if (!piece.blocks.isEmpty())
        name += QLatin1Char('_') + QString::number(piece.blocks.first());
    return QLatin1String(TextPrefix) + name + QLatin1String(isSystemVerilog ? ".sv" : ".v");
}

TextLine textLineOf(const ToolMessage &message)
{
    return textLineOf(message.file, message.line);
}

TextLine textLineOf(const QByteArray &file, int line)
{
    const QByteArray prefix(TextPrefix);
    bool isText = file.startsWith(prefix);
    QByteArray number = file.mid(prefix.size(), file.indexOf('.') - prefix.size());
    number = number.split('_').first();
    const int text = isText ? number.toInt(&isText) : -1;
    return isText ? TextLine{text, line} : TextLine();
}

} // namespace NETWEIR::Internal
