// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "xmlelement.h"

#include <QByteArray>
#include <QFile>
#include <QString>

#include <vector>

namespace NETWEIR::Internal {

/// An output file of the elaborator, of which one element at a time is in memory: parsed elements
/// take many times the memory of their text.
///
/// A file of an unusual form, or one with an error, is parsed as a whole. Owns the open file, the
/// text and the document.
class XmlFile
{
public:
    /// Finds the elements of the file at @p path. False when it cannot be read, is larger than
    /// @p largest bytes or is not well-formed; @p error then says why and where.
    bool open(const QString &path, qint64 largest, QString *error);
    /// Takes the elements of a document, which must outlive this object.
    void use(const pugi::xml_document &document);

    /// In the order of the file.
    const std::vector<XmlElement> &elements() const { return m_elements; }

    /// Parses @p element, which is one of elements(). The result is valid until the next call of a
    /// function that is not constant. Null when this does not work; isSound() is then false.
    pugi::xml_node load(const XmlElement &element);
    /// The same for the element without anything in it.
    pugi::xml_node loadStart(const XmlElement &element);

    /// Divides the children of @p element into runs of at least @p size bytes, by the line breaks
    /// that the elaborator puts before each child. A single one when they cannot be told apart, or
    /// when the element is in a document in memory. Empty when the file cannot be read.
    std::vector<XmlRun> runsOf(const XmlElement &element, qint64 size);
    /// Parses @p element with no other children than those of @p run, like load(). A run that was
    /// not divided between two children is not sound.
    pugi::xml_node load(const XmlElement &element, const XmlRun &run);
    /// The file is not as it was: it has to be read once more.
    void reject() { m_isSound = false; }

    /// False after an element could not be parsed by itself: then loadWhole() tells what the file
    /// contains.
    bool isSound() const { return m_isSound; }
    /// Parses the whole file. False when it cannot be read or is not well-formed; @p error then
    /// says why and where.
    bool loadWhole(QString *error);

private:
    bool readWhole(QString *error);
    bool readPart(qint64 begin, qint64 end);
    bool append(qint64 begin, qint64 end);
    QByteArray gapBefore(const XmlElement &element);
    qint64 endOfRun(const XmlElement &element, qint64 begin, qint64 size, const QByteArray &gap);
    pugi::xml_node parse(const XmlElement &element);

    QString m_path;
    qint64 m_largest = 0;
    QFile m_file;
    std::vector<XmlElement> m_elements;
    QByteArray m_text;
    pugi::xml_document m_document;
    bool m_isSound = true;
};

} // namespace NETWEIR::Internal
