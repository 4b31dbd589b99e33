// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "signalnets.h"

#include "vhdltext.h"

#include <netweir/internal/ground/itemat.h>
#include <netweir/internal/ground/readguard.h>
#include <netweir/internal/vhdl/vhdlfacts.h>

namespace NETWEIR::Internal {

namespace {

constexpr qint64 LargestArray = 4096; ///< Bits of an array that is shown as buses.

/// Lists the nets of one signal.
class NetList
{
public:
    NetList(const SignalDeclaration &signal, const SignalTypes &types, const WaveStrings &strings)
        : m_signal(signal)
        , m_types(types)
        , m_strings(strings)
    {
    }

    std::vector<SignalNet> list(int type)
    {
        Part whole;
        whole.type = type;
        whole.name = m_signal.spelling;
        whole.path = m_signal.name;
        add(whole);
        return std::move(m_nets);
    }

private:
    /// The signal, or a part of it.
    struct Part
    {
        int type = 0;
        QString name;
        QByteArray path;       ///< The signal and the fields passed, joined with '.'.
        QByteArrayList fields; ///< The fields passed.
        qint64 scalar = 0;
    };

    QString fieldName(const Part &part, const QByteArray &name) const;
    void add(const Part &part);
    void addFields(const Part &part, const SignalType &type);
    void addArray(const Part &part, const SignalType &type);
    void addElements(const Part &part, const SignalType &type, std::size_t number);
    bool isBus(const SignalType &array) const;
    bool isString(const SignalType &array) const;
    bool isMemory(const Part &part, const SignalType &array) const;
    int levels(const SignalType &array) const;
    void addNet(const Part &part, SignalNet::Kind kind, int left = 0, int right = 0);

    const SignalDeclaration &m_signal;
    const SignalTypes &m_types;
    const WaveStrings &m_strings;
    std::vector<SignalNet> m_nets;
};

/// The depth of types is limited.
void NetList::add(const Part &part)
{
    ReadGuard::check();
    const SignalType &type = m_types.at(part.type);
    switch (type.kind) {
    case SignalType::Net:
        return addNet(part, SignalNet::Single);
    case SignalType::Number:
        return addNet(part, SignalNet::Number, int(type.bits - 1));
    case SignalType::NoNet:
        return addNet(part, SignalNet::Excluded);
    case SignalType::Array:
        return addArray(part, type);
    case SignalType::Record:
        return addFields(part, type);
    }
}

void NetList::addFields(const Part &part, const SignalType &type)
{
    Part field = part;
    for (const SignalType::Field &declared : type.fields) {
        const QByteArray name = QByteArray::fromStdString(itemAt(m_strings, declared.name));
        field.type = declared.type;
        field.name = part.name + QLatin1Char('.') + fieldName(part, name);
        field.path = part.path + '.' + name;
        field.fields = part.fields;
        field.fields.append(name);
        add(field);
        field.scalar += m_types.at(declared.type).scalars;
    }
}

QString NetList::fieldName(const Part &part, const QByteArray &name) const
{
    QByteArray spelling;
    if (m_signal.facts)
        spelling = m_signal.facts->fieldSpelling(m_signal.path, m_signal.name, part.fields, name);
    return vhdlText(spelling.isEmpty() ? name : spelling);
}

void NetList::addArray(const Part &part, const SignalType &type)
{
    if (type.scalars == 0 || isString(type) || (!isBus(type) && isMemory(part, type)))
        addNet(part, SignalNet::Excluded);
    else
        addElements(part, type, 0);
}

/// Lists the elements along the dimension @p number and those after it. Nets along the last
/// dimension are a bus.
void NetList::addElements(const Part &part, const SignalType &type, std::size_t number)
{
    const Dimension &dimension = type.dimensions[number];
    const SignalType &element = m_types.at(type.element);
    const bool isLast = number + 1 == type.dimensions.size();
    if (isLast && element.kind == SignalType::Net)
        return addNet(part, SignalNet::Bus, dimension.left, dimension.right);
    Part next = part;
    if (isLast)
        next.type = type.element;
    qint64 scalars = element.scalars;
    for (std::size_t i = number + 1; i < type.dimensions.size(); ++i)
        scalars *= type.dimensions[i].size();
    for (qint64 i = 0; i < dimension.size(); ++i) {
        next.name =
            part.name + QLatin1Char('[') + QString::number(dimension.at(i)) + QLatin1Char(']');
        if (isLast)
            add(next);
        else
            addElements(next, type, number + 1);
        next.scalar += scalars;
    }
}

bool NetList::isBus(const SignalType &array) const
{
    return array.dimensions.size() == 1 && m_types.at(array.element).kind == SignalType::Net;
}

bool NetList::isString(const SignalType &array) const
{
    return array.dimensions.size() == 1 && m_types.at(array.element).isCharacter();
}

/// Arrays of arrays are one memory, whichever of the indexes is computed.
bool NetList::isMemory(const Part &part, const SignalType &array) const
{
    if (array.bits > LargestArray)
        return true;
    const int depth =
        m_signal.facts ? m_signal.facts->computedIndexDepth(m_signal.path, part.path) : -1;
    return depth >= 0 && depth < levels(array);
}

/// The number of arrays within each other, without buses and strings. The depth of types is
/// limited.
int NetList::levels(const SignalType &array) const
{
    int count = 0;
    for (const SignalType *type = &array;
         type->kind == SignalType::Array && !isBus(*type) && !isString(*type);
         type = &m_types.at(type->element))
        ++count;
    return count;
}

void NetList::addNet(const Part &part, SignalNet::Kind kind, int left, int right)
{
    m_nets.push_back({kind, part.name, left, right, part.scalar});
}

} // namespace

std::vector<SignalNet> netsOf(const SignalDeclaration &signal, int type, const SignalTypes &types,
                              const WaveStrings &strings)
{
    return NetList(signal, types, strings).list(type);
}

} // namespace NETWEIR::Internal
