// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "elaboratedsignals.h"

#include "filestream.h"
#include "signaltables.h"
#include "vhdltext.h"

#include <netweir/internal/ground/itemat.h>
#include <netweir/internal/ground/messages.h>
#include <netweir/internal/ground/readguard.h>

#include <string>

namespace NETWEIR::Internal {

namespace {

constexpr int LongestShown = 200; ///< Letters of a line in a message.

/// Reads the lines that GHDL has printed against the header of the wave file.
class OutputReader
{
public:
    OutputReader(FileStream *output, ElaboratedSignals *design)
        : m_output(*output)
        , m_design(*design)
        , m_types(design->header.types())
        , m_strings(design->header.strings())
    {
    }

    /// False with what is wrong.
    bool read(QString *fault)
    {
        matchScopes(readTree());
        if (m_fault.isEmpty()) {
            assignGenerics();
            readMap();
        }
        if (m_fault.isEmpty())
            readTable();
        *fault = m_fault;
        return m_fault.isEmpty();
    }

    qint64 lines() const { return m_lines; }

private:
    bool nextLine();
    void fail(const QString &fault);
    std::vector<TreeScope> readTree();
    void matchScopes(const std::vector<TreeScope> &tree);
    std::string shownName(const WaveScope &scope) const;
    void assignGenerics();
    static std::string nameInPath(const TreeScope &scope, bool isTop);
    void readMap();
    void readSignal(const WaveSignal &signal);
    void readScalars(int type);
    void readElements(const SignalType &type, std::size_t dimension);
    void readScalar();
    void readTable();

    FileStream &m_output;
    ElaboratedSignals &m_design;
    const SignalTypes &m_types;
    const WaveStrings &m_strings;
    QString m_fault;
    qint64 m_lines = 0;
    std::string_view m_line; ///< Null at the end of the output.
    std::unordered_map<std::string, std::vector<GenericLine>> m_generics; ///< By instance.
    std::string m_path;                ///< Of the part of a signal that the next line shows.
    std::vector<int> m_driverOfNumber; ///< The net of the tables for one of the wave file.
    std::vector<quint32> m_numberOfDriver;
};

bool OutputReader::nextLine()
{
    m_line = {};
    if (!m_output.line(&m_line))
        return false;
    ++m_lines;
    return true;
}

void OutputReader::fail(const QString &fault)
{
    if (m_fault.isEmpty())
        m_fault = fault;
}

/// Stubs report their generics before the tree is printed.
std::vector<TreeScope> OutputReader::readTree()
{
    DesignTree tree(m_design.header.text(m_design.header.scopes().front().name));
    while (nextLine()) {
        ReadGuard::check();
        GenericLine generic;
        if (tree.addLine(m_line))
            continue;
        if (!tree.scopes().empty())
            break;
        if (parseGenericLine(m_line, &generic))
            m_generics[generic.instance].push_back(generic);
    }
    return tree.scopes();
}

/// Leaves the scopes of the tree that the wave file has too.
void OutputReader::matchScopes(const std::vector<TreeScope> &tree)
{
    const std::vector<WaveScope> &scopes = m_design.header.scopes();
    std::vector<int> scopeOf; // By scope of the tree; -1 for one that does not exist.
    for (const TreeScope &shown : tree) {
        ReadGuard::check();
        const int next = countOf(m_design.tree);
        const int parent = shown.parent < 0 ? -1 : itemAt(scopeOf, shown.parent);
        if (next < countOf(scopes) && itemAt(scopes, next).parent == parent &&
            shownName(itemAt(scopes, next)) == shown.name) {
            scopeOf.push_back(next);
            m_design.tree.push_back(shown);
        } else if (shown.isRound) {
            scopeOf.push_back(-1);
        } else {
            break;
        }
    }
    if (scopeOf.size() < tree.size() || m_design.tree.size() < scopes.size())
        fail(Text::tr("its scopes are not those of the wave file"));
}

/// As the tree shows the scope: "u1", "g(0)".
std::string OutputReader::shownName(const WaveScope &scope) const
{
    const std::string &name = m_design.header.text(scope.name);
    return scope.index.empty() ? name : name + '(' + scope.index + ')';
}

/// "g(0)", "u1@leaf(rtl)"; an instance without an entity is bound to nothing.
std::string OutputReader::nameInPath(const TreeScope &scope, bool isTop)
{
    if (isTop)
        return scope.name + '(' + scope.architecture + ')';
    if (scope.entity.empty())
        return scope.name;
    return scope.name + '@' + scope.entity + '(' + scope.architecture + ')';
}

void OutputReader::assignGenerics()
{
    if (m_generics.empty())
        return;
    std::vector<std::size_t> lengths;
    std::string path;
    const std::vector<WaveScope> &scopes = m_design.header.scopes();
    for (int scope = 0; scope < countOf(scopes); ++scope) {
        const int parent = itemAt(scopes, scope).parent;
        path.resize(parent < 0 ? 0 : itemAt(lengths, parent));
        path += parent < 0 ? ":" : "";
        path += nameInPath(itemAt(m_design.tree, scope), parent < 0) + ':';
        lengths.push_back(path.size());
        ReadGuard::check();
        const auto found = m_generics.find(path);
        if (found != m_generics.end())
            m_design.generics[scope] = std::move(found->second);
    }
}

void OutputReader::readMap()
{
    const WaveHeader &header = m_design.header;
    m_driverOfNumber.assign(std::size_t(header.lastNet()) + 1, -1);
    m_design.nets.reserve(header.nets().size());
    std::vector<std::size_t> lengths;
    for (int scope = 0; scope < countOf(header.scopes()) && m_fault.isEmpty(); ++scope) {
        const WaveScope &opened = itemAt(header.scopes(), scope);
        m_path.resize(opened.parent < 0 ? 0 : itemAt(lengths, opened.parent));
        m_path += '.' + nameInPath(itemAt(m_design.tree, scope), opened.parent < 0);
        lengths.push_back(m_path.size());
        for (int i = opened.firstSignal; i < opened.endSignal && m_fault.isEmpty(); ++i) {
            ReadGuard::check();
            readSignal(itemAt(header.signalList(), i));
        }
    }
}

void OutputReader::readSignal(const WaveSignal &signal)
{
    const std::size_t length = m_path.size();
    m_path += '.';
    m_path += itemAt(m_strings, signal.name);
    readScalars(signal.type);
    m_path.resize(length);
}

/// The depth of types is limited.
void OutputReader::readScalars(int typeIndex)
{
    const SignalType &type = m_types.at(typeIndex);
    const std::size_t length = m_path.size();
    if (type.isScalar()) {
        readScalar();
    } else if (type.scalars == 0) {
        return;
    } else if (type.kind == SignalType::Array) {
        m_path += '(';
        readElements(type, 0);
    } else {
        for (const SignalType::Field &field : type.fields) {
            m_path += '.';
            m_path += itemAt(m_strings, field.name);
            readScalars(field.type);
            m_path.resize(length);
        }
    }
    m_path.resize(length);
}

/// Several dimensions are shown as "(0,2)".
void OutputReader::readElements(const SignalType &type, std::size_t number)
{
    const std::size_t length = m_path.size();
    const Dimension &dimension = type.dimensions[number];
    const bool isLast = number + 1 == type.dimensions.size();
    for (qint64 i = 0; i < dimension.size() && m_fault.isEmpty(); ++i) {
        m_path += m_types.indexText(dimension, dimension.at(i), m_strings);
        m_path += isLast ? ')' : ',';
        if (isLast)
            readScalars(type.element);
        else
            readElements(type, number + 1);
        m_path.resize(length);
    }
}

/// The map has one line for each scalar, and lines for implicit signals.
void OutputReader::readScalar()
{
    MapLine line;
    bool isMapLine = parseMapLine(m_line, &line);
    while (isMapLine && line.path != m_path && isImplicitSignal(line.path)) {
        nextLine();
        isMapLine = parseMapLine(m_line, &line);
    }
    if (!isMapLine || line.path != m_path)
        return fail(Text::tr("it does not show the signal %1")
                        .arg(vhdlText(std::string_view(m_path).substr(0, LongestShown))));
    const quint32 number = itemAt(m_design.header.nets(), countOf(m_design.nets));
    const int driver = m_design.drivers.add(line.pointer);
    if (driver == countOf(m_numberOfDriver))
        m_numberOfDriver.push_back(number);
    int &known = itemAt(m_driverOfNumber, number);
    if (known < 0)
        known = driver;
    if (known != driver || itemAt(m_numberOfDriver, driver) != number)
        fail(Text::tr("the nets are not those of the wave file"));
    m_design.nets.push_back(driver);
    nextLine();
}

/// Functions may have printed anything behind the table.
void OutputReader::readTable()
{
    const int shown = m_design.drivers.size();
    std::vector<bool> isListed(std::size_t(shown), false);
    int listed = 0;
    do {
        TableLine line;
        if (!parseTableLine(m_line, &line))
            continue;
        const int net = m_design.drivers.add(line);
        if (net < shown && !isListed[std::size_t(net)]) {
            isListed[std::size_t(net)] = true;
            ++listed;
        }
    } while (nextLine());
    m_design.drivers.forgetPointers();
    if (listed < shown)
        fail(Text::tr("its table of signals is not complete"));
    else if (!m_design.drivers.complete())
        fail(Text::tr("inputs get their values from each other"));
}

} // namespace

std::unique_ptr<ElaboratedSignals> readElaboratedSignals(const QString &outputPath,
                                                         const QString &wavePath, QString *error)
{
    auto design = std::make_unique<ElaboratedSignals>();
    FileStream output;
    if (!design->header.read(wavePath, error) || !output.open(outputPath, error))
        return nullptr;
    OutputReader reader(&output, design.get());
    QString fault;
    if (reader.read(&fault))
        return design;
    *error = Text::tr("The elaborated design \"%1\" cannot be read: %2 (line %3).")
                 .arg(outputPath, fault, QString::number(reader.lines()));
    return nullptr;
}

} // namespace NETWEIR::Internal
