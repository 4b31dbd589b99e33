// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "vhdlrecords.h"

#include "vhdlname.h"
#include "vhdlreader.h"

namespace NETWEIR::Internal {

namespace {

/// Types may refer to each other in a circle only in a design with errors.
constexpr int MostSteps = 64;

} // namespace

QByteArray vhdlTypeName(const QByteArray &text, const TextRange &subtype)
{
    VhdlReader reader(VhdlTokens(text, subtype));
    if (reader.token().is(VhdlKeyword::Array)) {
        while (!reader.atEnd() && !reader.token().is(VhdlKeyword::Of))
            reader.advance();
        reader.advance();
    }
    reader.skipGroup(); // "(resolved) name"
    QByteArrayList name = reader.takeSelectedName();
    if (reader.token().isName()) // "resolved name"
        name = reader.takeSelectedName();
    return name.isEmpty() ? QByteArray() : foldedVhdlName(name.last());
}

VhdlRecords::VhdlRecords(const QVector<VhdlSource> &sources)
{
    for (const VhdlSource &source : sources) {
        for (const VhdlUnit &unit : source.file.units)
            addTypes(source, unit);
    }
}

void VhdlRecords::addTypes(const VhdlSource &source, const VhdlUnit &unit)
{
    const QByteArray unitName = foldedVhdlName(unit.name);
    QHash<QByteArray, QHash<QByteArray, Field>> records;
    for (const VhdlRecordField &field : unit.fields) {
        const QByteArray name = foldedVhdlName(field.name);
        records[foldedVhdlName(field.record)].insert(
            name, {field.name, vhdlTypeName(source.text, field.type)});
        const auto known = m_spellings.constFind(name);
        const bool isAmbiguous = known != m_spellings.constEnd() && *known != field.name;
        m_spellings.insert(name, isAmbiguous ? QByteArray("") : field.name);
    }
    for (const VhdlDeclaration &declaration : unit.declarations) {
        if (declaration.kind != VhdlDeclaration::Type &&
            declaration.kind != VhdlDeclaration::Subtype)
            continue;
        const QByteArray name = foldedVhdlName(declaration.name);
        Type type{unitName, {}, records.value(name)};
        if (type.fields.isEmpty())
            type.base = vhdlTypeName(source.text, declaration.type);
        m_types[name].append(type);
    }
}

const VhdlRecords::Type *VhdlRecords::find(const QByteArray &name,
                                           const QByteArrayList &units) const
{
    const auto found = m_types.constFind(name);
    if (found == m_types.constEnd())
        return nullptr;
    for (const QByteArray &unit : units) {
        for (const Type &type : *found) {
            if (type.unit == unit)
                return &type;
        }
    }
    return found->size() == 1 ? &found->first() : nullptr;
}

const VhdlRecords::Type *VhdlRecords::findRecord(QByteArray name, const QByteArrayList &units) const
{
    for (int step = 0; step < MostSteps; ++step) {
        const Type *type = find(name, units);
        if (!type || !type->fields.isEmpty())
            return type;
        name = type->base;
    }
    return nullptr;
}

QByteArray VhdlRecords::spelling(const QByteArray &type, const QByteArrayList &fields,
                                 const QByteArray &name, const QByteArrayList &packages) const
{
    QByteArrayList units = packages;
    const Type *record = findRecord(type, units);
    for (const QByteArray &field : fields) {
        if (!record)
            break;
        units.prepend(record->unit); // Which also declares or sees the types of the fields.
        record = findRecord(record->fields.value(field).type, units);
        units.removeFirst();
    }
    if (record && record->fields.contains(name))
        return record->fields.value(name).spelling;
    return m_spellings.value(name);
}

} // namespace NETWEIR::Internal
