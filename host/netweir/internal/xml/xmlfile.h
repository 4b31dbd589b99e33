// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QByteArray>
#include <QString>

#include <pugixml.hpp>

namespace NETWEIR::Internal {

/// An output file of the elaborator, parsed in place. Owns the text and the document, which takes
/// many times the memory of the text.
class XmlFile
{
public:
    /// False when the file cannot be read, is larger than @p largest bytes or is not well-formed;
    /// @p error then says why and where.
    bool read(const QString &path, qint64 largest, QString *error);

    const pugi::xml_document &document() const { return m_document; }

private:
    bool readText(const QString &path, qint64 largest, QString *error);

    QByteArray m_text;
    pugi::xml_document m_document;
};

} // namespace NETWEIR::Internal
