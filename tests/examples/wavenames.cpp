// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "wavenames.h"

#include <netweir/hierachy.h>
#include <netweir/rtlnet.h>
#include <netweir/rtlnetbus.h>
#include <support/files.h>

#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QVector>

#include <memory>

namespace TarnTest {

namespace {

constexpr int ToolTimeout = 60000;

/// The output of @p program; null with @p error when it fails.
QString outputOf(const QString &program, const QStringList &arguments, const QString &folder,
                 QString *error)
{
    QProcess process;
    process.setWorkingDirectory(folder);
    process.start(program, arguments);
    const bool finished = process.waitForFinished(ToolTimeout);
    if (finished && process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0)
        return QStringLiteral("%1\n").arg(QString::fromLatin1(process.readAllStandardOutput()));
    *error = program + ": " + process.errorString() + '\n' +
             QString::fromUtf8(process.readAllStandardOutput()) +
             QString::fromUtf8(process.readAllStandardError());
    process.kill();
    process.waitForFinished();
    return QString();
}

// ----- VHDL -----

/// A range of indexes or values, as ghwdump writes it.
struct Range
{
    QString left;
    QString right;
    bool isDown = false;
};

struct WaveType;
using TypePointer = std::shared_ptr<const WaveType>;

struct WaveType
{
    enum Kind { Bit, Enumeration, Integer, NoNet, Array, Record };
    Kind kind = NoNet;
    QStringList letters;        ///< Enumeration.
    QVector<Range> ranges;      ///< Integer: one; array: one for each dimension; or none.
    QVector<TypePointer> types; ///< Array: indexes, then the element; record: of the fields.
    QStringList fields;
};

/// Pieces of @p text between commas that are not within parentheses or quotes.
QStringList piecesOf(const QString &text)
{
    QStringList pieces{QString()};
    int depth = 0;
    for (int i = 0; i < text.size(); ++i) {
        if (text[i] == '\'' && i + 2 < text.size() && text[i + 2] == '\'') {
            pieces.last() += text.mid(i, 3);
            i += 2;
            continue;
        }
        depth += text[i] == '(' ? 1 : text[i] == ')' ? -1 : 0;
        if (text[i] == ',' && depth == 0)
            pieces.append(QString());
        else
            pieces.last() += text[i];
    }
    for (QString &piece : pieces)
        piece = piece.trimmed();
    return pieces;
}

/// The definition that begins in a line; that of a record ends in a line of its own.
QString definitionAt(const QStringList &lines, int line)
{
    const int end = lines[line].endsWith("is record") ? lines.indexOf("end record;", line) : line;
    return lines.mid(line, end - line + 1).join('\n');
}

bool readRange(const QString &text, Range *range)
{
    static const QRegularExpression form("^(\\S+) (to|downto) (\\S+)$");
    const QRegularExpressionMatch match = form.match(text);
    if (!match.hasMatch())
        return false;
    *range = {match.captured(1), match.captured(3), match.captured(2) == "downto"};
    return true;
}

int bitsOfCount(qint64 highest)
{
    int bits = 1;
    while ((highest >> bits) != 0)
        ++bits;
    return bits;
}

/// Bits of an integer between the bounds of @p range: two's complement when there are negative
/// ones.
int bitsOfInteger(const Range &range)
{
    const qint64 a = range.left.toLongLong();
    const qint64 b = range.right.toLongLong();
    const qint64 low = qMin(a, b);
    const qint64 high = qMax(a, b);
    if (low >= 0)
        return bitsOfCount(high);
    int bits = 1;
    while (low < -(Q_INT64_C(1) << (bits - 1)) || high >= (Q_INT64_C(1) << (bits - 1)))
        ++bits;
    return bits;
}

/// Types and hierarchy as `ghwdump -t -h` prints them.
class GhwText
{
public:
    WaveNames read(const QString &text, const QString &top, QString *error);

private:
    void readTypes(const QStringList &lines);
    void readRecord(const QString &name, const QStringList &lines, int *next);
    void define(const QString &name, const TypePointer &type);
    TypePointer typeOf(const QString &indication);
    TypePointer constrained(const QString &name, const QString &constraint);
    TypePointer withFields(const TypePointer &base, const QString &constraints);
    TypePointer arrayType(const QString &indexes, const QString &element);

    void readScope(const QString &line, int depth);
    void readSignal(const QString &line);
    void add(const QString &name, const TypePointer &type, int scalars);
    void addArray(const QString &name, const TypePointer &type, int dimension, int scalars);
    void addBus(const QString &name, int width);
    static bool indexesOf(const Range &range, const TypePointer &type, QVector<int> *indexes);
    static int scalarsOf(const TypePointer &type);

    QMap<QString, TypePointer> m_types;
    QMap<QString, QString> m_definitions; ///< By "type" or "subtype" and the name.
    QSet<QString> m_repeated;             ///< Names with several definitions.
    QVector<QString> m_scopes;            ///< Beginning of the names in each open scope.
    WaveNames m_names;
    QString m_error;
};

WaveNames GhwText::read(const QString &text, const QString &top, QString *error)
{
    const QStringList lines = text.split('\n');
    const int design = lines.indexOf("design");
    readTypes(lines.mid(0, design));
    const QRegularExpression begin("^ instance " + QRegularExpression::escape(top.toLower()) + ':');
    bool isBelowTop = false;
    for (const QString &line : lines.mid(design + 1)) {
        const int depth = int(line.size() - QString(line).remove(QRegularExpression("^ +")).size());
        if (depth == 1)
            isBelowTop = begin.match(line).hasMatch();
        else if (isBelowTop && depth > 1)
            readScope(line.mid(depth), depth - 2);
    }
    m_names.foldsCase = true;
    if (m_names.nets.isEmpty() && m_error.isEmpty())
        m_error = "no nets in:\n" + text;
    *error = m_error;
    return m_error.isEmpty() ? m_names : WaveNames();
}

void GhwText::readTypes(const QStringList &lines)
{
    static const QRegularExpression form("^(type|subtype) (\\S+) is (.*?);?(?:  -- .*)?$");
    static const QRegularExpression array("^array \\((.*)\\) of (.*)$");
    for (int i = 0; i < lines.size(); ++i) {
        const QRegularExpressionMatch match = form.match(lines[i]);
        if (!match.hasMatch())
            continue; // A unit of a physical type.
        const QString name = match.captured(2);
        const QString text = match.captured(3);
        const QString definition = definitionAt(lines, i);
        if (m_definitions.value(match.captured(1) + name, definition) != definition)
            m_repeated.insert(name);
        m_definitions.insert(match.captured(1) + name, definition);
        auto type = std::make_shared<WaveType>();
        if (match.captured(1) == "subtype") {
            define(name, typeOf(text));
        } else if (text == "record") {
            readRecord(name, lines, &i);
        } else if (array.match(text).hasMatch()) {
            define(name, arrayType(array.match(text).captured(1), array.match(text).captured(2)));
        } else if (text.startsWith('(')) {
            const bool isBit = QStringList{"std_ulogic", "bit", "boolean"}.contains(name);
            type->kind = isBit ? WaveType::Bit : WaveType::Enumeration;
            type->letters = piecesOf(text.mid(1, text.size() - 2));
            define(name, type);
        } else {
            const bool isNumber = text == "range <>" && name != "real";
            type->kind = isNumber ? WaveType::Integer : WaveType::NoNet;
            define(name, type);
        }
    }
}

void GhwText::readRecord(const QString &name, const QStringList &lines, int *next)
{
    static const QRegularExpression field("^  ([^:]+): (.*);$");
    auto type = std::make_shared<WaveType>();
    type->kind = WaveType::Record;
    for (++*next; *next < lines.size() && lines[*next] != "end record;"; ++*next) {
        const QRegularExpressionMatch match = field.match(lines[*next]);
        type->fields.append(match.captured(1));
        type->types.append(typeOf(match.captured(2)));
    }
    define(name, type);
}

void GhwText::define(const QString &name, const TypePointer &type)
{
    m_types.insert(name, type);
}

TypePointer GhwText::arrayType(const QString &indexes, const QString &element)
{
    auto type = std::make_shared<WaveType>();
    type->kind = WaveType::Array;
    for (const QString &index : piecesOf(indexes))
        type->types.append(typeOf(index.section(' ', 0, 0)));
    type->types.append(typeOf(element));
    return type;
}

/// The type of "name", "name range 0 to 7", "name (7 downto 0)" or "name(field (7 downto 0))".
TypePointer GhwText::typeOf(const QString &indication)
{
    static const QRegularExpression form("^([^\\s(]+)(.*)$");
    const QRegularExpressionMatch match = form.match(indication);
    const QString name = match.captured(1);
    if (m_repeated.contains(name))
        m_error = "two types have the name " + name;
    if (!m_types.contains(name)) {
        m_error = "no type of the name " + name;
        return std::make_shared<WaveType>();
    }
    return constrained(name, match.captured(2).trimmed());
}

TypePointer GhwText::constrained(const QString &name, const QString &constraint)
{
    const TypePointer base = m_types.value(name);
    if (constraint.isEmpty())
        return base;
    auto type = std::make_shared<WaveType>(*base);
    Range range;
    if (constraint.startsWith("range ")) {
        if (base->kind == WaveType::Integer && readRange(constraint.mid(6), &range))
            type->ranges = {range};
        return type;
    }
    const QString inner = constraint.mid(1, constraint.size() - 2);
    if (base->kind == WaveType::Record)
        return withFields(base, inner);
    type->ranges.clear();
    for (const QString &piece : piecesOf(inner)) {
        if (!readRange(piece, &range))
            m_error = "no range: " + constraint;
        type->ranges.append(range);
    }
    return type;
}

TypePointer GhwText::withFields(const TypePointer &base, const QString &constraints)
{
    auto type = std::make_shared<WaveType>(*base);
    for (const QString &piece : piecesOf(constraints)) {
        const int space = piece.indexOf(' ');
        const int field = type->fields.indexOf(piece.left(space));
        auto constrainedField = std::make_shared<WaveType>(*type->types.value(field));
        Range range;
        if (!readRange(piece.mid(space + 2, piece.size() - space - 3), &range))
            m_error = "no range: " + piece;
        constrainedField->ranges = {range};
        type->types[field] = constrainedField;
    }
    return type;
}

/// Scopes below the top: an instance ends with '/', a block or generate statement with '.'.
void GhwText::readScope(const QString &line, int depth)
{
    static const QRegularExpression form(
        "^(instance|block|generate-if|generate-for|process|package) (.+): ?(?:\\((.*)\\))?$");
    m_scopes.resize(depth);
    const QRegularExpressionMatch match = form.match(line);
    if (!match.hasMatch()) {
        m_scopes.append(m_scopes.isEmpty() ? QString() : m_scopes.last());
        readSignal(line);
        return;
    }
    QString name = (m_scopes.isEmpty() ? QString() : m_scopes.last()) + match.captured(2);
    if (!match.captured(3).isEmpty())
        name += '[' + match.captured(3) + ']';
    m_scopes.append(name + (match.captured(1) == "instance" ? '/' : '.'));
}

void GhwText::readSignal(const QString &line)
{
    static const QRegularExpression form(
        "^(?:signal|port-\\w+) ([^:]+): (.*): ?(?:#(\\d+)(?:-#(\\d+))?)?$");
    const QRegularExpressionMatch match = form.match(line);
    if (!match.hasMatch()) {
        m_error = "unknown line: " + line;
        return;
    }
    const int first = match.captured(3).toInt();
    const int last = match.captured(4).isEmpty() ? first : match.captured(4).toInt();
    const int scalars = match.captured(3).isEmpty() ? 0 : last - first + 1;
    add(m_scopes.last() + match.captured(1), typeOf(match.captured(2)), scalars);
}

void GhwText::add(const QString &name, const TypePointer &type, int scalars)
{
    switch (type->kind) {
    case WaveType::Enumeration:
        return addBus(name, bitsOfCount(type->letters.size() - 1));
    case WaveType::Integer:
        return addBus(name, bitsOfInteger(type->ranges.value(0, {"-2147483648", "2147483647"})));
    case WaveType::Array:
        return addArray(name, type, 0, scalars);
    case WaveType::Record:
        for (int i = 0; i < type->fields.size(); ++i)
            add(name + '.' + type->fields[i], type->types[i], scalarsOf(type->types[i]));
        return;
    default:
        m_names.nets.insert(name);
    }
}

void GhwText::addBus(const QString &name, int width)
{
    m_names.nets.insert(QString("%1[%2:0]").arg(name).arg(width - 1));
}

/// @p scalars is the number of scalars in the array from dimension @p dimension on. It gives the
/// width of an element whose type has no range.
void GhwText::addArray(const QString &name, const TypePointer &type, int dimension, int scalars)
{
    const TypePointer &element = type->types.last();
    if (element->letters.size() == 256) { // A string.
        m_names.nets.insert(name);
        return;
    }
    const int dimensions = type->types.size() - 1;
    QVector<int> indexes;
    if (!indexesOf(type->ranges.value(dimension), type->types[dimension], &indexes)) {
        m_names.widths.insert(name, scalars);
        return;
    }
    const bool isLast = dimension == dimensions - 1;
    if (indexes.isEmpty() || (isLast && element->kind == WaveType::Bit)) {
        m_names.nets.insert(
            indexes.isEmpty()
                ? name
                : QString("%1[%2:%3]").arg(name).arg(indexes.first()).arg(indexes.last()));
        return;
    }
    for (const int index : indexes) {
        const QString inner = QString("%1[%2]").arg(name).arg(index);
        if (isLast)
            add(inner, element, scalars / indexes.size());
        else
            addArray(inner, type, dimension + 1, scalars / indexes.size());
    }
}

/// The indexes of @p range from the left; the letters of an enumeration count from 0. Returns false
/// when there is no range.
bool GhwText::indexesOf(const Range &range, const TypePointer &type, QVector<int> *indexes)
{
    if (range.left.isEmpty())
        return false;
    const bool isNumber = type->letters.isEmpty();
    const int left = isNumber ? range.left.toInt() : type->letters.indexOf(range.left);
    const int right = isNumber ? range.right.toInt() : type->letters.indexOf(range.right);
    const int step = range.isDown ? -1 : 1;
    for (int i = left; range.isDown ? i >= right : i <= right; i += step)
        indexes->append(i);
    return true;
}

/// Number of scalars in a type with ranges; 0 when it has none.
int GhwText::scalarsOf(const TypePointer &type)
{
    if (type->kind == WaveType::Record) {
        int sum = 0;
        for (const TypePointer &field : type->types)
            sum += scalarsOf(field);
        return sum;
    }
    if (type->kind != WaveType::Array)
        return 1;
    int product = scalarsOf(type->types.last());
    for (int i = 0; i < type->types.size() - 1; ++i) {
        QVector<int> indexes;
        indexesOf(type->ranges.value(i), type->types[i], &indexes);
        product *= int(indexes.size());
    }
    return product;
}

// ----- Verilog -----

/// The names in a VCD file below the scope of @p top.
WaveNames vcdNames(const QString &text, const QString &top)
{
    static const QRegularExpression scope("^\\$scope (\\w+) (\\S+) \\$end$");
    static const QRegularExpression variable(
        "^\\$var (\\w+)\\s+(\\d+) \\S+ (\\S+)(?: (\\[-?\\d+:-?\\d+\\]))? \\$end$");
    WaveNames names;
    QVector<QString> scopes;
    for (const QString &line : text.split('\n')) {
        const QRegularExpressionMatch opened = scope.match(line.trimmed());
        if (opened.hasMatch() && scopes.isEmpty()) {
            scopes.append(opened.captured(2) == top ? QString() : QStringLiteral("//"));
        } else if (opened.hasMatch()) {
            const bool isModule = opened.captured(1) == "module";
            scopes.append(scopes.last() + opened.captured(2) + (isModule ? '/' : '.'));
        } else if (line.startsWith("$upscope")) {
            scopes.removeLast();
        } else if (const auto found = variable.match(line.trimmed()); found.hasMatch()) {
            if (found.captured(1) == "parameter" || scopes.last().startsWith("//"))
                continue;
            QString range = found.captured(4);
            if (range.isEmpty() && found.captured(2) != "1")
                range = QString("[%1:0]").arg(found.captured(2).toInt() - 1);
            names.nets.insert(scopes.last() + found.captured(3) + range);
        }
    }
    return names;
}

// ----- Netlist -----

/// The nets and buses below @p node; "name *" for a net that is excluded for both kinds of ports.
void addNetlist(const NETWEIR::Hierachy *node, const QString &path, const QStringList &foreign,
                QMap<QString, int> *nets, QStringList *omitted)
{
    for (const NETWEIR::RtlNet *net : node->nets()) {
        const bool isOpaque = net->excludedForProbeIn() && net->excludedForProbeOut();
        nets->insert(path + net->name(), isOpaque ? -1 : 1);
    }
    for (const NETWEIR::RtlNetBus *bus : node->buses())
        nets->insert(path + bus->BusName(), int(bus->nets().size()));
    for (const NETWEIR::Hierachy *child : node->children()) {
        const QString inner = path + child->instName() + '/';
        if (foreign.contains(child->moduleName()))
            omitted->append(inner);
        else
            addNetlist(child, inner, foreign, nets, omitted);
    }
}

/// @p name as GHDL shows it: in lower case outside of extended identifiers.
QString foldedVhdl(const QString &name)
{
    QStringList pieces = name.split('\\');
    for (int i = 0; i < pieces.size(); i += 2)
        pieces[i] = pieces[i].toLower();
    return pieces.join('\\');
}

bool isBelow(const QString &name, const QString &net)
{
    return name == net ||
           (name.startsWith(net) && (name[net.size()] == '[' || name[net.size()] == '.'));
}

} // namespace

WaveNames vhdlWaveNames(const QMap<QString, QStringList> &filesOfLibraries, const QString &top,
                        const QStringList &generics, QString *error)
{
    const QTemporaryDir folder;
    for (auto library = filesOfLibraries.cbegin(); library != filesOfLibraries.cend(); ++library) {
        const QStringList arguments{"-i", "--std=08", "--work=" + library.key()};
        if (outputOf("ghdl", arguments + library.value(), folder.path(), error).isNull())
            return {};
    }
    if (outputOf("ghdl", {"-m", "--std=08", top}, folder.path(), error).isNull())
        return {};
    const QStringList arguments{
        "-r", "--std=08", top, "--stop-time=0ns", "--asserts=disable", "--wave=names.ghw"};
    if (outputOf("ghdl", arguments + generics, folder.path(), error).isNull())
        return {};
    const QString text = outputOf("ghwdump", {"-t", "-h", "names.ghw"}, folder.path(), error);
    return text.isNull() ? WaveNames() : GhwText().read(text, top, error);
}

WaveNames verilogWaveNames(const QStringList &arguments, const QString &top, QString *error)
{
    const QTemporaryDir folder;
    writeFile(folder.filePath("dump.v"),
              "module dump;\n    initial begin\n        $dumpfile(\"names.vcd\");\n"
              "        $dumpvars(0, " +
                  top.toUtf8() + ");\n        $finish;\n    end\nendmodule\n");
    const QStringList all = QStringList{"-g2012", "-o", "names.vvp", "-s", top, "-s", "dump"} +
                            arguments + QStringList{"dump.v"};
    if (outputOf("iverilog", all, folder.path(), error).isNull() ||
        outputOf("vvp", {"-n", "names.vvp"}, folder.path(), error).isNull())
        return {};
    const WaveNames names =
        vcdNames(QString::fromUtf8(readFile(folder.filePath("names.vcd"))), top);
    if (names.nets.isEmpty())
        *error = "no nets in the wave file";
    return names;
}

QString waveDifferences(const NETWEIR::Hierachy *node, const WaveNames &wave,
                        const QStringList &foreign)
{
    QMap<QString, int> nets;
    QStringList omitted;
    addNetlist(node, QString(), foreign, &nets, &omitted);

    QStringList only;
    QSet<QString> shown = wave.nets;
    QMap<QString, int> widths = wave.widths;
    QStringList opaque;
    const auto folded = [&wave](const QString &name) {
        return wave.foldsCase ? foldedVhdl(name) : name;
    };
    for (auto net = nets.cbegin(); net != nets.cend(); ++net) {
        const QString name = folded(net.key());
        const int range = name.lastIndexOf('[');
        if (net.value() < 0)
            opaque.append(name);
        else if (range > 0 && widths.value(name.left(range)) == net.value())
            widths.remove(name.left(range));
        else if (!shown.remove(name))
            only.append("only in the netlist: " + name);
    }
    const QStringList rest = shown.values() + widths.keys();
    for (const QString &net : qAsConst(opaque)) {
        const bool isShown = std::any_of(
            rest.begin(), rest.end(), [&net](const QString &name) { return isBelow(name, net); });
        if (!isShown)
            only.append("only in the netlist: " + net);
    }
    for (const QString &name : rest) {
        const auto hides = [&name](const QString &net) { return isBelow(name, net); };
        const auto omits = [&](const QString &path) { return name.startsWith(folded(path)); };
        if (std::none_of(opaque.begin(), opaque.end(), hides) &&
            std::none_of(omitted.begin(), omitted.end(), omits))
            only.append("only in the wave: " + name);
    }
    only.sort();
    return only.join('\n');
}

} // namespace TarnTest
