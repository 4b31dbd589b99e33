// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "toolmessages.h"

#include <netweir/internal/modules/sourceorder.h>
#include <netweir/internal/sources/preprocessedtext.h>

#include <QString>

namespace NETWEIR::Internal {

struct SourceFile;

/// The file name of the module around the roots.
constexpr char WrapperFile[] = "wrapper.v";

/// The file name of a piece of the text of @p file: "text7.sv", or "text7_2.sv" for the moved
/// blocks from the third one on. The suffix determines the language.
QString pieceName(const SourceFile &file, const TextPiece &piece);

/// The line of the texts that a line of @p file is. No text when the file is no piece.
TextLine textLineOf(const QByteArray &file, int line);

/// The same for the line to which a message refers.
TextLine textLineOf(const ToolMessage &message);

} // namespace NETWEIR::Internal
