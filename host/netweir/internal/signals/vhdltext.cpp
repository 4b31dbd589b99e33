// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "vhdltext.h"

#include <QTextCodec>

#include <algorithm>

namespace NETWEIR::Internal {

QString vhdlText(std::string_view bytes)
{
    const int size = int(bytes.size());
    const bool isAscii =
        std::all_of(bytes.begin(), bytes.end(), [](char letter) { return quint8(letter) < 0x80; });
    if (isAscii)
        return QString::fromLatin1(bytes.data(), size);
    static QTextCodec *const utf8 = QTextCodec::codecForName("UTF-8");
    QTextCodec::ConverterState state;
    const QString text = utf8->toUnicode(bytes.data(), size, &state);
    const bool isUtf8 = state.invalidChars == 0 && state.remainingChars == 0;
    return isUtf8 ? text : QString::fromLatin1(bytes.data(), size);
}

QString vhdlText(const QByteArray &bytes)
{
    return vhdlText(std::string_view(bytes.constData(), std::size_t(bytes.size())));
}

} // namespace NETWEIR::Internal
