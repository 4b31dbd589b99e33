// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "vhdlinterfaces.h"

#include "vhdlname.h"
#include "vhdlreader.h"

namespace NETWEIR::Internal {

namespace {

/// A group of a list of interface items or associations never contains these words.
bool atListEnd(const VhdlReader &reader)
{
    return reader.atRegionWord() || reader.token().is(VhdlKeyword::Port);
}

/// Skips an expression or subtype up to a sign for which @p ends holds outside of parentheses.
/// Returns its range.
template <typename Ends>
TextRange takeUntil(VhdlReader *reader, const Ends &ends)
{
    const int begin = reader->token().offset;
    int depth = 0;
    while (!atListEnd(*reader)) {
        const VhdlToken &token = reader->token();
        if (depth == 0 && (token.is(')') || ends(token)))
            break;
        depth += token.is('(') ? 1 : token.is(')') ? -1 : 0;
        reader->advance();
    }
    return reader->rangeFrom(begin);
}

bool endsSubtype(const VhdlToken &token)
{
    return token.is(';') || token.is(VhdlToken::Becomes) || token.is(VhdlKeyword::Bus) ||
           token.is(VhdlKeyword::Register);
}

VhdlInterfaceItem::Mode takeMode(VhdlReader *reader)
{
    if (reader->skip(VhdlKeyword::Out))
        return VhdlInterfaceItem::Out;
    if (reader->skip(VhdlKeyword::Inout))
        return VhdlInterfaceItem::Inout;
    if (reader->skip(VhdlKeyword::Buffer))
        return VhdlInterfaceItem::Buffer;
    if (reader->skip(VhdlKeyword::Linkage))
        return VhdlInterfaceItem::Linkage;
    reader->skip(VhdlKeyword::In);
    return VhdlInterfaceItem::In;
}

/// What kind of item begins here, behind the word that says so.
VhdlInterfaceItem::Kind takeKind(VhdlReader *reader)
{
    switch (reader->token().keyword) {
    case VhdlKeyword::Type:
        reader->advance();
        return VhdlInterfaceItem::Type;
    case VhdlKeyword::Package:
        reader->advance();
        return VhdlInterfaceItem::Package;
    case VhdlKeyword::Pure:
    case VhdlKeyword::Impure:
        reader->advance();
        [[fallthrough]];
    case VhdlKeyword::Function:
    case VhdlKeyword::Procedure:
        reader->advance();
        return VhdlInterfaceItem::Subprogram;
    case VhdlKeyword::Constant:
    case VhdlKeyword::Signal:
    case VhdlKeyword::Variable:
    case VhdlKeyword::File:
        reader->advance();
        return VhdlInterfaceItem::Object;
    default:
        return VhdlInterfaceItem::Object;
    }
}

/// One or more items with one subtype.
void readItems(VhdlReader *reader, QVector<VhdlInterfaceItem> *items)
{
    VhdlInterfaceItem item;
    item.kind = takeKind(reader);
    const int first = items->size();
    while (isVhdlNameOrString(reader->token())) {
        item.name = reader->token().bytes();
        item.line = reader->token().line;
        item.column = reader->token().column;
        items->append(item);
        reader->advance();
        if (!reader->skip(','))
            break;
    }
    if (reader->skip(':'))
        item.mode = takeMode(reader);
    item.type = takeUntil(reader, endsSubtype);
    if (!reader->token().is(VhdlToken::Becomes)) // "bus", or nothing.
        takeUntil(reader, [](const VhdlToken &token) {
            return token.is(';') || token.is(VhdlToken::Becomes);
        });
    if (reader->skip(VhdlToken::Becomes))
        item.value = takeUntil(reader, [](const VhdlToken &token) { return token.is(';'); });
    for (int i = first; i < items->size(); ++i) {
        (*items)[i].mode = item.mode;
        (*items)[i].type = item.type;
        (*items)[i].value = item.value;
    }
}

/// The names of a formal that are no record fields.
QByteArrayList formalNames(const QVector<VhdlToken> &tokens)
{
    QByteArrayList names;
    for (int i = 0; i < tokens.size(); ++i) {
        if (tokens.at(i).isName() && (i == 0 || !tokens.at(i - 1).is('.')))
            names.append(tokens.at(i).bytes());
    }
    return names;
}

bool endsAssociations(const VhdlReader &reader)
{
    return atListEnd(reader) || reader.token().is(';');
}

/// Reads up to the comma or parenthesis behind the association.
VhdlAssociation readAssociation(VhdlReader *reader)
{
    VhdlAssociation association;
    association.line = reader->token().line;
    association.column = reader->token().column;
    int begin = reader->token().offset;
    int depth = 0;
    QVector<VhdlToken> formal;
    bool isPositional = true;
    association.isOpen = reader->token().is(VhdlKeyword::Open);
    while (!endsAssociations(*reader)) {
        const VhdlToken token = reader->token();
        if (depth == 0 && (token.is(')') || token.is(',')))
            break;
        depth += token.is('(') ? 1 : token.is(')') ? -1 : 0;
        const bool isArrow = depth == 0 && isPositional && token.is(VhdlToken::Arrow);
        if (isArrow) {
            association.formal = reader->rangeFrom(begin);
            association.formalNames = formalNames(formal);
            isPositional = false;
        } else if (isPositional) {
            formal.append(token);
        }
        reader->advance();
        if (isArrow) {
            begin = reader->token().offset;
            association.isOpen = reader->token().is(VhdlKeyword::Open);
        }
    }
    association.actual = reader->rangeFrom(begin);
    return association;
}

/// Behind the name of a unit: "generic map (...)", "port map (...)".
void readMaps(VhdlReader *reader, QVector<VhdlAssociation> *generics,
              QVector<VhdlAssociation> *ports)
{
    while (reader->token(1).is(VhdlKeyword::Map)) {
        const bool isPort = reader->token().is(VhdlKeyword::Port);
        if (!isPort && !reader->token().is(VhdlKeyword::Generic))
            return;
        reader->advance();
        reader->advance();
        *(isPort ? ports : generics) += readVhdlAssociations(reader);
    }
}

VhdlInstance::Kind takeInstanceKind(VhdlReader *reader)
{
    if (reader->skip(VhdlKeyword::Entity))
        return VhdlInstance::Entity;
    if (reader->skip(VhdlKeyword::Configuration))
        return VhdlInstance::Configuration;
    reader->skip(VhdlKeyword::Component);
    return VhdlInstance::Component;
}

/// "(rtl)" behind the name of an entity.
QByteArray takeArchitecture(VhdlReader *reader)
{
    if (!reader->token().is('('))
        return {};
    const QByteArray name = reader->token(1).isName() ? reader->token(1).bytes() : QByteArray();
    reader->skipGroup();
    return name;
}

VhdlBinding::Kind readEntityAspect(VhdlReader *reader, QByteArrayList *unit,
                                   QByteArray *architecture)
{
    if (reader->skip(VhdlKeyword::Entity)) {
        *unit = reader->takeSelectedName();
        *architecture = takeArchitecture(reader);
        return VhdlBinding::Entity;
    }
    if (reader->skip(VhdlKeyword::Configuration)) {
        *unit = reader->takeSelectedName();
        return VhdlBinding::Configuration;
    }
    return VhdlBinding::Open;
}

} // namespace

void readVhdlInterface(VhdlReader *reader, VhdlInterface *interface,
                       QVector<VhdlAssociation> *portMap)
{
    while (reader->token().is(VhdlKeyword::Generic) || reader->token().is(VhdlKeyword::Port)) {
        const bool isPort = reader->token().is(VhdlKeyword::Port);
        reader->advance();
        if (reader->skip(VhdlKeyword::Map)) { // Of a block or a package.
            if (isPort && portMap)
                *portMap += readVhdlAssociations(reader);
            reader->skipToSemicolon();
            continue;
        }
        (isPort ? interface->ports : interface->generics) += readVhdlItems(reader);
        reader->skip(';');
    }
}

QVector<VhdlInterfaceItem> readVhdlItems(VhdlReader *reader)
{
    QVector<VhdlInterfaceItem> items;
    if (!reader->skip('('))
        return items;
    while (!atListEnd(*reader) && !reader->skip(')')) {
        readItems(reader, &items);
        reader->skip(';');
    }
    return items;
}

QVector<VhdlAssociation> readVhdlAssociations(VhdlReader *reader)
{
    QVector<VhdlAssociation> associations;
    if (!reader->skip('('))
        return associations;
    while (!endsAssociations(*reader) && !reader->skip(')')) {
        associations.append(readAssociation(reader));
        reader->skip(',');
    }
    return associations;
}

bool readVhdlInstance(VhdlReader *reader, VhdlInstance *instance)
{
    const bool hasKeyword = !reader->token().isName();
    instance->kind = takeInstanceKind(reader);
    instance->unit = reader->takeSelectedName();
    if (instance->unit.isEmpty())
        return false;
    if (instance->kind == VhdlInstance::Entity)
        instance->architecture = takeArchitecture(reader);
    const bool hasMap = reader->token(1).is(VhdlKeyword::Map);
    readMaps(reader, &instance->generics, &instance->ports);
    instance->bare = !hasKeyword && !hasMap;
    if (instance->bare && !reader->token().is(';'))
        return false;
    reader->skipToSemicolon();
    return true;
}

QByteArrayList takeVhdlLabels(VhdlReader *reader)
{
    QByteArrayList labels;
    while (!reader->atRegionWord() && !reader->token().is(':') && !reader->token().is(';')) {
        const VhdlToken &token = reader->token();
        if (token.isName() || token.is(VhdlKeyword::All) || token.is(VhdlKeyword::Others))
            labels.append(token.isName() ? token.bytes() : foldedVhdlName(token.text));
        reader->advance();
    }
    return labels;
}

VhdlBinding readVhdlBinding(VhdlReader *reader)
{
    VhdlBinding binding;
    binding.line = reader->token().line;
    binding.column = reader->token().column;
    reader->skip(VhdlKeyword::For);
    binding.labels = takeVhdlLabels(reader);
    reader->skip(':');
    binding.component = reader->takeSelectedName();
    if (reader->skip(VhdlKeyword::Use)) {
        binding.kind = readEntityAspect(reader, &binding.unit, &binding.architecture);
        QVector<VhdlAssociation> generics;
        readMaps(reader, &generics, &binding.ports);
        reader->skipToSemicolon();
    }
    return binding;
}

} // namespace NETWEIR::Internal
