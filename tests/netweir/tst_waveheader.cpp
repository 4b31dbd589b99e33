// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "wavebytes.h"

#include <netweir/internal/signals/waveheader.h>

#include <support/files.h>
#include <support/testcase.h>

#include <QApplication>
#include <QTemporaryDir>
#include <QTest>

using namespace NETWEIR::Internal;
using TarnTest::WaveBytes;

namespace {

/// "net", "number 3", "none", "(3 downto 0) of net", "{a: net, b: none}".
QString typeText(const WaveHeader &header, int number)
{
    const SignalType &type = header.types().at(number);
    QStringList parts;
    switch (type.kind) {
    case SignalType::Net:
        return QStringLiteral("net");
    case SignalType::Number:
        return QStringLiteral("number %1").arg(type.bits);
    case SignalType::NoNet:
        return QStringLiteral("none");
    case SignalType::Array:
        for (const Dimension &dimension : type.dimensions)
            parts += QStringLiteral("%1 %2 %3")
                         .arg(QString::number(dimension.left),
                              QLatin1String(dimension.isDown ? "downto" : "to"),
                              QString::number(dimension.right));
        return '(' + parts.join(", ") + ") of " + typeText(header, type.element);
    case SignalType::Record:
        for (const SignalType::Field &field : type.fields)
            parts += QString::fromStdString(header.text(field.name)) + ": " +
                     typeText(header, field.type);
        return '{' + parts.join(", ") + '}';
    }
    return {};
}

/// A line for each scope and each signal of it: mode, name, type and nets.
QString headerText(const WaveHeader &header)
{
    static const char *const modes[] = {"signal", "in", "out", "inout", "buffer", "linkage"};
    static const char *const kinds[] = {"instance", "block", "generate"};
    QString text;
    for (const WaveScope &scope : header.scopes()) {
        text += QStringLiteral("%1 %2%3 in %4 to %5\n")
                    .arg(QLatin1String(kinds[scope.kind]),
                         QString::fromStdString(header.text(scope.name)),
                         QString::fromStdString(scope.index.empty() ? "" : "(" + scope.index + ")"),
                         QString::number(scope.parent), QString::number(scope.end));
        for (int i = scope.firstSignal; i < scope.endSignal; ++i) {
            const WaveSignal &signal = header.signalList().at(std::size_t(i));
            text += QStringLiteral("  %1 %2: %3 =")
                        .arg(QLatin1String(modes[signal.mode]),
                             QString::fromStdString(header.text(signal.name)),
                             typeText(header, signal.type));
            for (qint64 n = 0; n < header.types().at(signal.type).scalars; ++n)
                text +=
                    ' ' + QString::number(header.nets().at(std::size_t(signal.firstScalar + n)));
            text += '\n';
        }
    }
    return text;
}

/// A header with one signal of @p type, which has @p nets.
QByteArray withSignal(WaveBytes *wave, int type, const QVector<int> &nets)
{
    wave->instance("top");
    wave->signal(16, "s", type, nets);
    wave->end();
    return wave->file();
}

} // namespace

class TestWaveHeader : public TarnTest::TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void readsTypes_data();
    void readsTypes();
    void readsScopesAndSignals();
    void tellsNetsOfPackages();
    void refusesDamage_data();
    void refusesDamage();
    void refusesWhatIsCut();
    void survivesAnyChange();
    void saysWhichFileIsMissing();

private:
    bool read(const QByteArray &content, WaveHeader *header)
    {
        TarnTest::writeFile(m_folder.filePath("wave"), content);
        m_error.clear();
        return header->read(m_folder.filePath("wave"), &m_error);
    }

    QTemporaryDir m_folder;
    QString m_error;
};

void TestWaveHeader::readsTypes_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QString>("type");
    const auto row = [](const char *name, WaveBytes *wave, int type, int scalars,
                        const char *expected) {
        QVector<int> nets;
        for (int i = 0; i < scalars; ++i)
            nets += i + 1;
        QTest::newRow(name) << withSignal(wave, type, nets) << QString(expected);
    };
    const auto range = [&row](const char *name, qint64 left, qint64 right, const char *expected) {
        WaveBytes wave;
        row(name, &wave, wave.subtype(wave.integers(), WaveBytes::range(left, right)), 1, expected);
    };
    range("integer", -2147483648LL, 2147483647, "number 32");
    range("natural", 0, 2147483647, "number 31");
    range("0 to 9", 0, 9, "number 4");
    range("9 downto 0", 9, 0, "number 4");
    range("0 to 0", 0, 0, "number 1");
    range("6 to 6", 6, 6, "number 3");
    range("-1 to 0", -1, 0, "number 1");
    range("-3 to 3", -3, 3, "number 3");
    range("-5 to 4", -5, 4, "number 4");
    range("-4 to 4", -4, 4, "number 4");
    range("-9 to -3", -9, -3, "number 5");

    const auto enumeration = [&row](const char *name, const QByteArrayList &letters, int wellKnown,
                                    const char *expected) {
        WaveBytes wave;
        const int type = wave.enumeration("e", letters);
        const int part = wave.subtype(type, WaveBytes::letters(0));
        if (wellKnown > 0)
            wave.setWellKnown(wellKnown, type);
        const int both = wave.record({{"whole", type}, {"part", part}});
        row(name, &wave, both, 2, expected);
    };
    enumeration("boolean", {"false", "true"}, 1, "{whole: net, part: net}");
    enumeration("std_ulogic", {"u", "x", "0", "1", "z", "w", "l", "h", "-"}, 3,
                "{whole: net, part: net}");
    enumeration("one letter", {"a"}, 0, "{whole: number 1, part: number 1}");
    enumeration("two letters", {"a", "b"}, 0, "{whole: number 1, part: number 1}");
    enumeration("three letters", {"a", "b", "c"}, 0, "{whole: number 2, part: number 2}");
    enumeration("five letters", {"a", "b", "c", "d", "e"}, 0, "{whole: number 3, part: number 3}");

    {
        WaveBytes wave;
        row("real", &wave, wave.reals(), 1, "none");
    }
    {
        WaveBytes wave;
        row("time", &wave, wave.times(), 1, "none");
    }
    const auto bitType = [](WaveBytes *wave) {
        const int bit = wave->enumeration("bit", {"'0'", "'1'"});
        wave->setWellKnown(2, bit);
        return bit;
    };
    {
        WaveBytes wave;
        const int bits = wave.array(bitType(&wave), {wave.integers()});
        row("vector", &wave, wave.constrained(bits, WaveBytes::range(1, -2)), 4,
            "(1 downto -2) of net");
    }
    {
        WaveBytes wave;
        const int bits = wave.array(bitType(&wave), {wave.integers()});
        row("null range", &wave, wave.constrained(bits, WaveBytes::emptyRange(0, 1)), 0,
            "(0 downto 1) of net");
    }
    {
        WaveBytes wave;
        const int bit = bitType(&wave);
        const int integer = wave.integers();
        const int color = wave.enumeration("color", {"red", "green", "blue"});
        const int plane = wave.array(bit, {integer, color});
        row("dimensions", &wave,
            wave.constrained(plane, WaveBytes::range(0, 1) + WaveBytes::letters(2)), 6,
            "(0 to 1, 0 to 2) of net");
    }
    {
        WaveBytes wave;
        const int integer = wave.integers();
        const int bits = wave.array(bitType(&wave), {integer});
        const int open = wave.open(bits);
        const int words = wave.array(open, {integer});
        row("open elements", &wave,
            wave.constrained(words, WaveBytes::range(0, 1) + WaveBytes::range(2, 0)), 6,
            "(0 to 1) of (2 downto 0) of net");
    }
    {
        WaveBytes wave;
        const int bit = bitType(&wave);
        const int integer = wave.integers();
        const int bits = wave.array(bit, {integer});
        const int inner = wave.record({{"v", wave.open(bits)}, {"b", bit}});
        const int outer = wave.record({{"x", inner}, {"n", integer}, {"y", wave.open(bits)}});
        row("open fields", &wave,
            wave.constrained(outer, WaveBytes::range(1, 0) + WaveBytes::range(0, 2), 38), 7,
            "{x: {v: (1 downto 0) of net, b: net}, n: number 32, y: (0 to 2) of net}");
    }
}

void TestWaveHeader::readsTypes()
{
    QFETCH(QByteArray, file);
    QFETCH(QString, type);
    WaveHeader header;
    QVERIFY2(read(file, &header), qPrintable(m_error));
    QCOMPARE(typeText(header, header.signalList().front().type), type);
    QCOMPARE(m_error, QString());
}

void TestWaveHeader::readsScopesAndSignals()
{
    WaveBytes wave;
    const int bit = wave.enumeration("bit", {"'0'", "'1'", "\\a b\\"});
    wave.setWellKnown(2, bit);
    const int rounds = wave.subtype(wave.integers(), WaveBytes::range(-1, 0));
    wave.instance("top");
    wave.signal(17, "a", bit, {1});
    wave.signal(18, "b", bit, {2});
    wave.signal(19, "c", bit, {3});
    wave.signal(20, "d", bit, {4});
    wave.signal(21, "e", bit, {5});
    wave.scope(13, "P0");
    wave.scope(3, "\\b.l\\");
    wave.signal(16, "inner", bit, {2});
    wave.end();
    wave.scope(4, "gi");
    wave.end();
    wave.scope(5, "gf", WaveBytes::number(rounds) + WaveBytes::integer(-1));
    wave.instance("u");
    wave.signal(17, "i", bit, {6});
    wave.end();
    wave.end();
    wave.scope(5, "gf", WaveBytes::number(bit) + char(2));
    wave.end();
    wave.end();
    WaveHeader header;
    QVERIFY2(read(wave.file(), &header), qPrintable(m_error));
    QCOMPARE(headerText(header), QString("instance top in -1 to 6\n"
                                         "  in a: net = 1\n"
                                         "  out b: net = 2\n"
                                         "  inout c: net = 3\n"
                                         "  buffer d: net = 4\n"
                                         "  linkage e: net = 5\n"
                                         "block \\b.l\\ in 0 to 2\n"
                                         "  signal inner: net = 2\n"
                                         "generate gi in 0 to 3\n"
                                         "generate gf(-1) in 0 to 5\n"
                                         "instance u in 3 to 5\n"
                                         "  in i: net = 6\n"
                                         "generate gf(\\a b\\) in 0 to 6\n"));
}

void TestWaveHeader::tellsNetsOfPackages()
{
    WaveBytes wave;
    const int bit = wave.enumeration("bit", {"'0'", "'1'"});
    wave.setWellKnown(2, bit);
    wave.scope(7, "p");
    wave.signal(16, "shared", bit, {1});
    wave.scope(7, "inner");
    wave.signal(16, "shared", bit, {2});
    wave.end();
    wave.end();
    wave.instance("top");
    wave.signal(16, "a", bit, {3});
    wave.signal(16, "b", bit, {1});
    wave.end();
    WaveHeader header;
    QVERIFY2(read(wave.file(), &header), qPrintable(m_error));
    QCOMPARE(headerText(header), QString("instance top in -1 to 1\n"
                                         "  signal a: net = 3\n"
                                         "  signal b: net = 1\n"));
    QCOMPARE(header.lastPackageNet(), 2U);
    QCOMPARE(header.lastNet(), 3U);
}

void TestWaveHeader::refusesDamage_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QString>("fault");
    const auto row = [](const char *name, const QByteArray &file, const char *fault) {
        QTest::newRow(name) << file << QString(fault);
    };
    row("other file", "$date 2020 $end", "it is no wave file of GHDL (byte 1)");
    row("other machine", QByteArray("GHDLwave\n\x10\0\1\2\4\1\0", 16),
        "it is no wave file of GHDL (byte 13)");
    row("unknown section", WaveBytes::beginning() + "FOO" + '\0',
        "a section of the header is missing");
    row("no sections", WaveBytes::beginning() + "EOH" + '\0', "a section of the header is missing");
    row("strings twice", WaveBytes().file().replace("TYP", "STR"),
        "a section of the header is missing");
    row("no design", WaveBytes().file(), "the design is empty");
    const auto type = [&row](const char *name, int code, const QByteArray &content,
                             const char *fault) {
        WaveBytes wave;
        wave.integers();
        wave.type(code, "t", content);
        row(name, wave.file(), fault);
    };
    type("unknown type", 99, {}, "a type has the unknown kind 99");
    type("subtype of nothing", 34, WaveBytes::number(7), "a type is missing");
    type("array of itself", 31, WaveBytes::number(2), "a type is missing");
    type("array without dimensions", 31, WaveBytes::number(1) + WaveBytes::number(0),
         "a type is damaged");
    type("letter without name", 23, WaveBytes::number(1) + WaveBytes::number(50),
         "a type is damaged");
    type("number without end", 34, QByteArray(12, char(0x80)), "a number is too large");
    const auto index = [&row](const char *name, const QByteArray &range) {
        WaveBytes wave;
        const int words = wave.array(1, {wave.integers()});
        wave.constrained(words, range);
        row(name, wave.file(), "a type is damaged");
    };
    index("range of letters for numbers", WaveBytes::letters(1));
    index("large index", WaveBytes::range(0, 1LL << 40));
    index("unknown range", QByteArray(1, 3));
    {
        WaveBytes wave;
        const int color = wave.enumeration("color", {"red"});
        const int words = wave.array(color, {color});
        wave.constrained(words, WaveBytes::letters(1));
        row("letter that is not there", wave.file(), "a type is damaged");
    }
    {
        WaveBytes wave;
        int deepest = wave.integers();
        for (int i = 0; i < 101; ++i)
            deepest = wave.record({{"f", deepest}});
        row("deep type", wave.file(), "arrays and records are nested too deeply");
    }
    const auto signal = [&row](const char *name, int typeNumber, const QVector<int> &nets,
                               const char *fault) {
        WaveBytes wave;
        wave.constrained(wave.array(wave.integers(), {1}), WaveBytes::range(1, 1 << 30));
        row(name, withSignal(&wave, typeNumber, nets), fault);
    };
    signal("signal without type", 0, {}, "a type is missing");
    signal("signal without range", 2, {}, "a signal is too large");
    signal("too many bits", 3, {}, "a signal is too large");
    signal("net 0", 1, {0}, "the number of a net is wrong");
    signal("net that is left out", 1, {2}, "the number of a net is wrong");
    const auto hierarchy = [&row](const char *name, const QByteArray &bytes, const char *fault) {
        WaveBytes wave;
        wave.name("a");
        wave.enumeration("e", {"a"});
        wave.raw(bytes);
        row(name, wave.file(), fault);
    };
    hierarchy("unknown scope", "\x60\1", "a scope has the unknown kind 96");
    hierarchy("no name", "\x06\x50", "a name is missing");
    hierarchy("open scope", "\6\1", "the end of a scope is missing");
    hierarchy("open package", "\7\1", "the end of a scope is missing");
    hierarchy("closed twice", "\6\1\17\17", "a scope ends twice");
    hierarchy("two tops", "\6\1\17\6\1\17", "the design has two tops");
    hierarchy("signal without scope", "\20\1\1\1", "a signal is outside of its scope");
    hierarchy("signal behind a scope", "\6\1\6\1\17\20\1\1\1\17",
              "a signal is outside of its scope");
    hierarchy("round without letter", "\6\1\5\1\1\7", "a type is damaged");
}

void TestWaveHeader::refusesDamage()
{
    QFETCH(QByteArray, file);
    QFETCH(QString, fault);
    WaveHeader header;
    QVERIFY(!read(file, &header));
    QVERIFY2(m_error.startsWith("The elaborated design \"" + m_folder.filePath("wave") +
                                "\" cannot be read: " + fault),
             qPrintable(m_error));
}

namespace {

QByteArray someFile()
{
    WaveBytes wave;
    const int bit = wave.enumeration("bit", {"'0'", "'1'"});
    wave.setWellKnown(2, bit);
    const int integer = wave.integers();
    const int bits = wave.array(bit, {integer});
    const int word = wave.constrained(bits, WaveBytes::range(3, 0));
    const int record = wave.record({{"d", word}, {"open", wave.open(bits)}, {"r", wave.reals()}});
    const int part = wave.constrained(record, WaveBytes::range(0, 1), 38);
    wave.times();
    wave.scope(7, "p");
    wave.end();
    wave.instance("top");
    wave.signal(17, "a_long_name_that_is_shared", bit, {1});
    wave.signal(16, "a_long_name_that_is_shared_too", part, {2, 3, 4, 5, 6, 7, 8});
    wave.scope(5, "g", WaveBytes::number(integer) + WaveBytes::integer(-300));
    wave.instance("u");
    wave.signal(17, "i", word, {2, 3, 4, 5});
    wave.end();
    wave.end();
    wave.end();
    return wave.file();
}

} // namespace

void TestWaveHeader::refusesWhatIsCut()
{
    const QByteArray file = someFile();
    WaveHeader whole;
    QVERIFY2(read(file, &whole), qPrintable(m_error));
    QCOMPARE(QString::fromStdString(whole.text(whole.signalList().at(1).name)),
             QString("a_long_name_that_is_shared_too"));
    for (int size = 0; size < file.size(); ++size) {
        WaveHeader header;
        QVERIFY2(!read(file.left(size), &header), qPrintable(QString::number(size)));
        QVERIFY2(m_error.contains("the file ends too early") ||
                     (size < 9 && m_error.contains("it is no wave file")),
                 qPrintable(m_error));
    }
}

/// Reads the file with each byte replaced by some others. Most are refused, none may crash.
void TestWaveHeader::survivesAnyChange()
{
    const QByteArray file = someFile();
    int refused = 0;
    for (int i = 0; i < file.size(); ++i) {
        for (const char value : {'\0', '\x7F', char(0xFF)}) {
            QByteArray changed = file;
            changed[i] = value;
            WaveHeader header;
            if (!read(changed, &header)) {
                QVERIFY(m_error.contains("cannot be read"));
                ++refused;
            } else {
                headerText(header);
            }
        }
    }
    QVERIFY(refused > file.size());
}

void TestWaveHeader::saysWhichFileIsMissing()
{
    WaveHeader header;
    QVERIFY(!header.read(m_folder.filePath("missing"), &m_error));
    QCOMPARE(m_error, "The elaborated design \"" + m_folder.filePath("missing") +
                          "\" cannot be read: No such file or directory.");
    QVERIFY(!header.read(m_folder.path(), &m_error));
    QCOMPARE(m_error, "The elaborated design \"" + m_folder.path() +
                          "\" cannot be read: it is not a regular file.");
}

TARN_TEST_MAIN(TestWaveHeader)
#include "tst_waveheader.moc"
