// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "ghdlreport.h"

#include "ghdlinput.h"
#include "vhdldesign.h"

#include <netweir/internal/sources/designsources.h>
#include <netweir/internal/tool/messagelist.h>
#include <netweir/internal/vhdl/vhdlname.h>

#include <QHash>
#include <QPair>
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
    explicit GhdlCauses(const VhdlDesign &design)
    {
        for (int file = 0; file < design.size(); ++file) {
            for (const VhdlUnit &unit : design.source(file).file.units) {
                if (unit.kind != VhdlUnit::Architecture && unit.kind != VhdlUnit::PackageBody)
                    m_declared.insert(primaryNameOf(unit));
                noteUses(unit, design, copyNameOf(file).toLatin1());
            }
        }
    }

    /// Whether the error is about a unit that a file declares: GHDL has only not come to it yet, or
    /// the unit has errors itself.
    bool isAboutDeclared(const GhdlMessage &error) const
    {
        const QByteArray unit = foldedVhdlName(missingUnitOf(error));
        return !unit.isEmpty() && m_declared.contains(unit);
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
            if (m_used.contains({error.file, unit}))
                m_filesThatMiss.insert(error.file);
            return isOfMissing || isRepeated("unit " + unit, {});
        }
        if (isSyntaxError(error.text))
            return followsInText(error);
        return m_filesThatMiss.contains(error.file) ||
               (error.text.startsWith("no declaration for ") && isRepeated(error.file, error.text));
    }

private:
    void noteUses(const VhdlUnit &unit, const VhdlDesign &design, const QByteArray &file)
    {
        for (const QByteArrayList &use : unit.context.uses + unit.context.contexts)
            m_used.insert({file, foldedVhdlName(use.value(1))});
        for (const QByteArray &name : unit.context.libraries) {
            const QByteArray library = foldedVhdlName(name);
            if (library != "ieee" && library != "std" &&
                !design.libraries().contains(QString::fromLatin1(library)))
                m_filesThatMiss.insert(file);
        }
    }

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
        const auto known = m_confused.constFind(error.file);
        const bool isNear = known != m_confused.constEnd() && error.line >= *known &&
                            error.line - *known <= FewLines;
        const bool isAtEnd = known != m_confused.constEnd() && error.text.contains("end of file");
        m_confused.insert(error.file, error.line);
        return isNear || isAtEnd;
    }

    QSet<QByteArray> m_declared;                ///< Units.
    QSet<QPair<QByteArray, QByteArray>> m_used; ///< Files and the packages in their contexts.
    QSet<QByteArray> m_filesThatMiss;           ///< A package or library that their contexts name.
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
                       const QVector<GhdlMessage> &errors, const QStringList &suspicions)
{
    MessageList causes;
    MessageList all;
    for (const QString &suspicion : suspicions)
        causes.add(suspicion);
    GhdlCauses separation(design);
    for (const GhdlMessage &error : errors) {
        Place place = places.place(error.file, error.line, error.column);
        if (place.file.isEmpty())
            place = placeInTexts(design, error.text);
        const QString line = errorMessage(place, textOf(error));
        all.add(line);
        if (!causes.contains(line) && !separation.isAboutDeclared(error))
            causes.add(line, separation.follows(error));
    }
    return containsError(causes.lines()) ? causes.lines() : all.lines();
}

} // namespace NETWEIR::Internal
