// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "definition.h"

#include "attributes.h"

#include <netweir/internal/ground/itemat.h>
#include <netweir/internal/ground/readguard.h>

#include <QStringList>

#include <algorithm>
#include <utility>

namespace NETWEIR::Internal {

Symbol Definition::find(int scope, std::string_view name) const
{
    while (scope >= 0) {
        ReadGuard::check();
        const NameScope &level = itemAt(scopes, scope);
        const Symbol symbol = level.find(name);
        if (symbol.kind != Symbol::Kind::None)
            return symbol;
        scope = level.parent;
    }
    return {};
}

/// Built only when a name is needed: storing the names of all nested scopes would take memory with
/// the square of the depth.
QString Definition::prefixOf(int scope) const
{
    QStringList names;
    for (; scope > 0; scope = itemAt(scopes, scope).parent) {
        ReadGuard::check();
        names.prepend(itemAt(scopes, scope).name);
    }
    return names.join(QString());
}

std::vector<int> Definition::identifiersOf(int scope) const
{
    std::vector<int> lengths;
    for (; scope > 0; scope = itemAt(scopes, scope).parent) {
        if (!itemAt(scopes, scope).name.isEmpty())
            lengths.push_back(itemAt(scopes, scope).identifier);
    }
    std::reverse(lengths.begin(), lengths.end());
    return lengths;
}

bool Definition::isEscaped(int scope) const
{
    for (; scope > 0; scope = itemAt(scopes, scope).parent) {
        const NameScope &level = itemAt(scopes, scope);
        if (hidesSteps(QStringView(level.name).left(level.identifier)))
            return true;
    }
    return false;
}

int Definition::portOfPin(std::string_view pinName) const
{
    if (startsWith(pinName, PinNumber)) {
        const int position = pinPosition(pinName);
        const bool exists = position > 0 && position <= countOf(ports);
        return exists ? itemAt(ports, position - 1) : -1;
    }
    const Symbol symbol = scopes.front().find(pinName);
    return symbol.kind == Symbol::Kind::Variable ? symbol.index : -1;
}

void Definition::forgetElements()
{
    node = {};
    std::vector<pugi::xml_node>().swap(variableElements);
    std::vector<InstanceElement>().swap(instanceElements);
    for (std::vector<Occurrence> *list : {&writes, &computedIndexes, &calls, &supplies})
        std::vector<Occurrence>().swap(*list);
}

void Definition::forgetDeclarations()
{
    for (NameScope &scope : scopes)
        scope.symbols = SymbolTable();
    variables = std::vector<Variable>();
    interfacePins = std::vector<InterfacePin>();
    routines = std::vector<Routine>();
    ports = std::vector<int>();
    modportOutputs.clear();
    omittedWrites.clear();
}

void Definition::forgetContent()
{
    Definition heading;
    heading.number = number;
    heading.rawName = std::move(rawName);
    heading.sourceName = sourceName;
    heading.role = role;
    heading.isTop = isTop;
    heading.foreignUnit = foreignUnit;
    *this = std::move(heading);
}

} // namespace NETWEIR::Internal
