// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "ghdlreport.h"

#include "ghdlinput.h"
#include "vhdldesign.h"

#include <netweir/internal/sources/designsources.h>
#include <netweir/internal/tool/messagelist.h>
#include <netweir/internal/vhdl/vhdlname.h>

#include <QHash>
#include <QSet>

#include <algorithm>

namespace NETWEIR::Internal {

namespace {

bool isSyntaxError(const QByteArray &text)
{
    return text.startsWith("missing ") || text.startsWith("unexpected ") ||
           text.contains(" expected") || text.startsWith("string cannot be multi-line");
}

/// Separates causes from errors that follow from them.
class GhdlCauses
{
public:
    GhdlCauses(const VhdlDesign &design, const QVector<GhdlMessage> &errors)
    {
        for (const GhdlMessage &error : errors) {
            const int file = fileOfCopy(error.file);
            if (file < 0 || file >= design.size() || m_badFiles.contains(error.file))
                continue;
            m_badFiles.insert(error.file);
            for (const VhdlUnit &unit : design.source(file).file.units) {
                if (unit.kind != VhdlUnit::Architecture && unit.kind != VhdlUnit::PackageBody)
                    m_badUnits.insert(primaryNameOf(unit));
            }
        }
    }

    /// Call it for each error in order.
    bool follows(const GhdlMessage &error)
    {
        const QByteArray library = missingLibraryOf(error);
        const QByteArray unit = foldedVhdlName(missingUnitOf(error));
        if (!library.isEmpty()) {
            m_filesThatMiss.insert(error.file);
            return isRepeated("library " + library, error.text);
        }
        if (!unit.isEmpty()) {
            const QByteArray of = error.text.mid(error.text.lastIndexOf(' ') + 1);
            const bool isOfMissing = m_seen.contains("library " + of.mid(1, of.size() - 2));
            m_filesThatMiss.insert(error.file);
            return m_badUnits.contains(unit) || isOfMissing || isRepeated("unit " + unit, {});
        }
        if (error.text.startsWith("no architecture "))
            return m_filesThatMiss.contains(error.file);
        if (error.text.startsWith("no declaration for "))
            return m_filesThatMiss.contains(error.file) || isRepeated(error.file, error.text);
        return followsInText(error);
    }

private:
    bool isRepeated(const QByteArray &cause, const QByteArray &text)
    {
        const bool isKnown = m_seen.contains(cause + text);
        m_seen.insert(cause);
        m_seen.insert(cause + text);
        return isKnown;
    }

    /// The parser needs some lines to recover.
    bool followsInText(const GhdlMessage &error)
    {
        constexpr int FewLines = 3;
        if (!isSyntaxError(error.text))
            return false;
        const auto known = m_confused.constFind(error.file);
        const bool isNear = known != m_confused.constEnd() && error.line >= *known &&
                            error.line - *known <= FewLines;
        const bool isAtEnd = known != m_confused.constEnd() && error.text.contains("end of file");
        m_confused.insert(error.file, error.line);
        return isNear || isAtEnd;
    }

    QSet<QByteArray> m_badFiles;
    QSet<QByteArray> m_badUnits;
    QSet<QByteArray> m_filesThatMiss; ///< Something that is not there.
    QSet<QByteArray> m_seen;
    QHash<QByteArray, int> m_confused; ///< The line of the last syntax error, by file.
};

QString textOf(const GhdlMessage &error)
{
    const QByteArray library = missingLibraryOf(error);
    if (library.isEmpty())
        return ghdlErrorText(error.text);
    return Text::tr("The library \"%1\" is missing. %2")
        .arg(QString::fromLatin1(library), libraryAdvice(QString::fromLatin1(library)));
}

/// The names in double quotes in @p text, folded.
QByteArrayList quotedNames(const QByteArray &text)
{
    const QByteArrayList pieces = text.split('"');
    QByteArrayList names;
    for (int i = 1; i < pieces.size(); i += 2)
        names.append(foldedVhdlName(pieces[i]));
    return names;
}

/// The place of an error for which GHDL gives none, as far as the texts tell it.
Place placeInTexts(const VhdlDesign &design, const QByteArray &text)
{
    const QByteArrayList names = quotedNames(text);
    const bool hasNoArchitecture = text.contains(" has no architecture in library ");
    const bool lacksArchitecture = text.startsWith("cannot find architecture ");
    if (names.size() < 2 || !(hasNoArchitecture || lacksArchitecture))
        return {};
    for (int file = 0; file < design.size(); ++file) {
        for (const VhdlUnit &unit : design.source(file).file.units) {
            if (hasNoArchitecture && unit.kind == VhdlUnit::Entity &&
                primaryNameOf(unit) == names[0])
                return {design.path(file), unit.line, unit.column};
            if (!lacksArchitecture)
                continue;
            for (const VhdlInstance &instance : unit.instances) {
                if (foldedVhdlName(instance.architecture) == names[0] &&
                    foldedVhdlName(instance.unit.last()) == names[1])
                    return {design.path(file), instance.line, instance.column};
            }
        }
    }
    return {};
}

} // namespace

QStringList ghdlReport(const VhdlDesign &design, const GhdlPlaces &places,
                       const QVector<GhdlMessage> &errors)
{
    MessageList causes;
    MessageList all;
    GhdlCauses separation(design, errors);
    for (const GhdlMessage &error : errors) {
        Place place = places.place(error.file, error.line, error.column);
        if (place.file.isEmpty())
            place = placeInTexts(design, error.text);
        const QString line = errorMessage(place, textOf(error));
        if (causes.contains(line))
            continue;
        all.add(line);
        causes.add(line, separation.follows(error));
    }
    return containsError(causes.lines()) ? causes.lines() : all.lines();
}

} // namespace NETWEIR::Internal
