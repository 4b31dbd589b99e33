// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "vhdlpartcontent.h"

#include "vhdltext.h"

#include <netweir/internal/ground/itemat.h>
#include <netweir/internal/ground/messages.h>
#include <netweir/internal/ground/readguard.h>
#include <netweir/internal/parts/part.h>
#include <netweir/internal/vhdl/vhdlfacts.h>

#include <QStringList>

#include <algorithm>
#include <map>

namespace NETWEIR::Internal {

namespace {

QByteArray toBytes(const std::string &text)
{
    return QByteArray::fromStdString(text);
}

PortDirection directionOf(WaveSignal::Mode mode)
{
    switch (mode) {
    case WaveSignal::Out:
    case WaveSignal::Buffer:
        return PortDirection::Output;
    case WaveSignal::Inout:
        return PortDirection::Inout;
    default:
        return PortDirection::Input;
    }
}

/// A text that is the same for roots that are the same.
QString keyOf(const PartRoot &root)
{
    QStringList words{root.library, root.unit};
    for (auto generic = root.generics.cbegin(); generic != root.generics.cend(); ++generic)
        words << generic.key() << QString::number(generic->kind) << generic->text;
    words << QString();
    for (const PartPort &port : root.ports)
        words << port.name << QString::number(int(port.direction)) << QString::number(port.width);
    QString key;
    for (const QString &word : qAsConst(words))
        key += QString::number(word.size()) + QLatin1Char(' ') + word;
    return key;
}

/// Completes the content from the elaborated signals and the facts of the sources.
class ContentReader
{
public:
    ContentReader(const VhdlPartInput &input, VhdlPartContent *content)
        : m_input(input)
        , m_content(*content)
        , m_header(content->design->header)
    {
    }

    /// False when a root is not there.
    bool read(QString *error)
    {
        m_content.names.reserve(m_header.signalList().size());
        m_content.nets.reserve(m_header.signalList().size());
        for (int scope = 0; scope < countOf(m_header.scopes()); ++scope) {
            ReadGuard::check();
            readScope(scope);
            readSignals(scope);
            if (itemAt(m_content.scopes, scope).kind == ScopeUse::Border)
                addBorder(scope);
        }
        return findRoots(error);
    }

private:
    /// The text around a scope's declarations.
    struct Place
    {
        const VhdlArchitectureFacts *facts = nullptr;
        QByteArrayList path;
    };

    static QString spelledIn(const Place &place, const QByteArray &name)
    {
        const QByteArray spelling =
            place.facts ? place.facts->spelling(place.path, name) : QByteArray();
        return vhdlText(spelling.isEmpty() ? name : spelling);
    }

    void readScope(int scope);
    Place placeOf(int instance, const Place &around) const;
    void readInstance(int scope, const Place &place, ScopeUse *use);
    void readSignals(int scope);
    void markConstant(int scope, const WaveSignal &signal);
    bool isAssociated(int scope, const WaveSignal &signal) const;
    void addBorder(int scope);
    bool findRoots(QString *error);
    int childNamed(int parent, const QByteArray &name) const;

    QByteArray label(int scope) const
    {
        return toBytes(m_header.text(m_content.scopeAt(scope).name));
    }

    const VhdlPartInput &m_input;
    VhdlPartContent &m_content;
    const WaveHeader &m_header;
    std::vector<Place> m_places;           ///< By scope.
    quint32 m_lastNet = 0;                 ///< The last one of the scopes so far.
    std::map<QString, int> m_foreignRoots; ///< By their keys.
};

void ContentReader::readScope(int scope)
{
    const WaveScope &declared = m_content.scopeAt(scope);
    ScopeUse use;
    Place place = declared.parent < 0 ? Place() : itemAt(m_places, declared.parent);
    use.name = spelledIn(place, label(scope));
    if (!declared.index.empty())
        use.name += QLatin1Char('[') + vhdlText(declared.index) + QLatin1Char(']');
    if (declared.kind == WaveScope::Instance) {
        place = placeOf(scope, place);
        readInstance(scope, place, &use);
    } else {
        place.path.append(label(scope));
        use.kind = ScopeUse::Inner;
    }
    m_places.push_back(place);
    m_content.scopes.push_back(use);
}

/// The tree does not show libraries.
ContentReader::Place ContentReader::placeOf(int instance, const Place &around) const
{
    Place place;
    const TreeScope &tree = itemAt(m_content.design->tree, instance);
    const QByteArray library =
        around.facts ? around.facts->libraryOf(around.path, label(instance)) : QByteArray();
    if (m_input.facts)
        place.facts =
            m_input.facts->find(toBytes(tree.entity), toBytes(tree.architecture), library);
    return place;
}

void ContentReader::readInstance(int scope, const Place &place, ScopeUse *use)
{
    const TreeScope &tree = itemAt(m_content.design->tree, scope);
    use->unit = place.facts ? vhdlText(place.facts->entityName()) : vhdlText(tree.entity);
    const auto foreign = m_input.foreignUnits.constFind(toBytes(tree.entity));
    if (foreign != m_input.foreignUnits.constEnd())
        use->unit = foreign->unit;
    if (use->unit.compare(QLatin1String(JtagPrimitive), Qt::CaseInsensitive) == 0)
        m_content.usesJtagPrimitive = true;
    if (tree.architecture == BorderArchitecture)
        use->kind = ScopeUse::Border;
    else if (tree.entity.empty() || tree.architecture == StubArchitecture)
        use->kind = ScopeUse::Hidden;
}

void ContentReader::readSignals(int scope)
{
    const WaveScope &declared = m_content.scopeAt(scope);
    const Place &place = itemAt(m_places, scope);
    const ScopeUse::Kind kind = itemAt(m_content.scopes, scope).kind;
    const bool isShown = kind == ScopeUse::Node || kind == ScopeUse::Inner;
    for (int i = declared.firstSignal; i < declared.endSignal; ++i) {
        const WaveSignal &signal = m_content.signalAt(i);
        const QByteArray name = toBytes(m_header.text(signal.name));
        const QString spelling = spelledIn(place, name);
        const SignalDeclaration declaration{place.facts, place.path, name, spelling};
        m_content.names.push_back(spelling);
        m_content.nets.push_back(
            isShown ? netsOf(declaration, signal.type, m_header.types(), m_header.strings())
                    : std::vector<SignalNet>());
        markConstant(scope, signal);
    }
}

/// No table shows that a constant is associated with an input, only that the input has a net of its
/// own and no source. If the source associates something, it is a constant, which drives the net.
void ContentReader::markConstant(int scope, const WaveSignal &signal)
{
    const bool mayBe = signal.mode == WaveSignal::In && m_content.scopeAt(scope).parent >= 0;
    const qint64 end = signal.firstScalar + m_content.typeOf(signal).scalars;
    ElaboratedSignals &design = *m_content.design;
    int associated = -1; // Not known yet.
    for (qint64 scalar = signal.firstScalar; scalar < end; ++scalar) {
        ReadGuard::check();
        const quint32 number = itemAt(m_header.nets(), scalar);
        const bool isOwn = number > std::max(m_lastNet, m_header.lastPackageNet());
        m_lastNet = std::max(m_lastNet, number);
        const int net = itemAt(design.nets, scalar);
        if (!mayBe || !isOwn || design.drivers.sourceOf(net) != net ||
            design.drivers.driversOf(net) > 0)
            continue;
        if (associated < 0)
            associated = isAssociated(scope, signal) ? 1 : 0;
        if (associated == 1)
            design.drivers.addDriver(net);
    }
}

bool ContentReader::isAssociated(int scope, const WaveSignal &signal) const
{
    const Place &around = itemAt(m_places, m_content.scopeAt(scope).parent);
    return around.facts && around.facts->isAssociated(around.path, label(scope),
                                                      toBytes(m_header.text(signal.name)));
}

void ContentReader::addBorder(int scope)
{
    const std::string &entity = itemAt(m_content.design->tree, scope).entity;
    const ForeignUnit unit = m_input.foreignUnits.value(toBytes(entity));
    PartRoot root;
    root.library = unit.library;
    root.unit = unit.unit.isEmpty() ? vhdlText(entity) : unit.unit;
    root.place = unit.place;
    root.ports = m_content.portsOf(scope);
    const auto generics = m_content.design->generics.find(scope);
    if (generics != m_content.design->generics.end()) {
        for (const GenericLine &generic : generics->second)
            root.generics.insert(generic.name, generic.value);
    }
    const auto known = m_foreignRoots.emplace(keyOf(root), countOf(m_content.foreignRoots));
    if (known.second)
        m_content.foreignRoots.push_back(root);
    itemAt(m_content.scopes, scope).foreignRoot = known.first->second;
}

bool ContentReader::findRoots(QString *error)
{
    for (const VhdlPartInput::Root &root : m_input.roots) {
        int scope = 0;
        for (const QByteArray &name : root.path) {
            scope = childNamed(scope, name);
            if (scope < 0) {
                *error = Text::tr("The elaborated design has no instance \"%1\".")
                             .arg(vhdlText(root.path.join('/')));
                return false;
            }
        }
        m_content.roots.push_back({scope, root.isTop});
    }
    return true;
}

/// Negative when there is none.
int ContentReader::childNamed(int parent, const QByteArray &name) const
{
    const int end = m_content.scopeAt(parent).end;
    for (int child = parent + 1; child < end; child = m_content.scopeAt(child).end) {
        ReadGuard::check();
        if (label(child) == name)
            return child;
    }
    return -1;
}

} // namespace

const WaveScope &VhdlPartContent::scopeAt(int scope) const
{
    return itemAt(design->header.scopes(), scope);
}

const WaveSignal &VhdlPartContent::signalAt(int signal) const
{
    return itemAt(design->header.signalList(), signal);
}

const SignalType &VhdlPartContent::typeOf(const WaveSignal &signal) const
{
    return design->header.types().at(signal.type);
}

std::vector<PartPort> VhdlPartContent::portsOf(int scope) const
{
    std::vector<PartPort> ports;
    for (int i = scopeAt(scope).firstSignal; i < scopeAt(scope).endSignal; ++i) {
        const WaveSignal &signal = signalAt(i);
        if (signal.mode == WaveSignal::Signal)
            continue;
        ports.push_back({itemAt(names, i), directionOf(signal.mode), typeOf(signal).bits});
    }
    return ports;
}

std::unique_ptr<VhdlPartContent> readVhdlPartContent(const VhdlPartInput &input, QString *error)
{
    auto content = std::make_unique<VhdlPartContent>();
    content->design = readElaboratedSignals(input.outputPath, input.wavePath, error);
    if (!content->design || !ContentReader(input, content.get()).read(error))
        return nullptr;
    return content;
}

} // namespace NETWEIR::Internal
