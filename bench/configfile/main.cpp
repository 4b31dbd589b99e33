// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include <model/snapshotwriter.h>
#include <model/tarnconfig.h>
#include <model/tarncore.h>
#include <model/unsavedfile.h>
#include <support/benchmark.h>
#include <support/fullconfig.h>

#include <QFile>
#include <QTemporaryDir>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>

#include <algorithm>
#include <chrono>
#include <vector>

using TARN::TarnCore;
using TarnBench::fail;

namespace {

constexpr int Rounds = 5;
constexpr double Goal = 3.0;
constexpr std::chrono::milliseconds SliceBudget{5}; ///< As in the view.
constexpr double LongestSlice = 0.05;               ///< In seconds: what typing hardly notices.

/// A document as the list of calls that write it.
struct Element
{
    QString name; ///< Empty for an end tag.
    QVector<QPair<QString, QString>> attributes;
    QString text;
};

QVector<Element> elementsOf(const QString &path)
{
    QVector<Element> elements;
    QFile file(path);
    file.open(QIODevice::ReadOnly);
    QXmlStreamReader reader(&file);
    while (!reader.atEnd()) {
        reader.readNext();
        if (reader.isStartElement()) {
            elements.append({reader.name().toString(), {}, QString()});
            for (const QXmlStreamAttribute &attribute : reader.attributes())
                elements.last().attributes.append(
                    {attribute.name().toString(), attribute.value().toString()});
        } else if (reader.isCharacters() && !reader.isWhitespace()) {
            elements.last().text = reader.text().toString();
        } else if (reader.isEndElement()) {
            elements.append(Element());
        }
    }
    return elements;
}

void writeBare(const QVector<Element> &elements, const QString &path)
{
    QFile file(path);
    file.open(QIODevice::WriteOnly);
    QXmlStreamWriter writer(&file);
    writer.setAutoFormatting(true);
    writer.writeStartDocument();
    for (const Element &element : elements) {
        if (element.name.isEmpty()) {
            writer.writeEndElement();
            continue;
        }
        writer.writeStartElement(element.name);
        for (const QPair<QString, QString> &attribute : element.attributes)
            writer.writeAttribute(attribute.first, attribute.second);
        if (!element.text.isEmpty())
            writer.writeCharacters(element.text);
    }
    writer.writeEndDocument();
}

void readBare(const QString &path)
{
    QFile file(path);
    file.open(QIODevice::ReadOnly);
    QXmlStreamReader reader(&file);
    while (!reader.atEnd())
        reader.readNext();
    if (reader.hasError())
        fail("the bare reader failed");
}

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    file.open(QIODevice::ReadOnly);
    return file.readAll();
}

/// Median times of writing, of the bare writer, of checking, of reading and of the bare reader.
std::vector<double> measuredTimes(const QList<TarnCore *> &cores, const QString &path,
                                  const QVector<Element> &elements, const QString &barePath)
{
    const auto write = [&] {
        if (!TARN::writeTARNConfigToXml(cores, path))
            fail("the file was not written");
    };
    const auto check = [&] {
        if (!TARN::checkTARNFile(path))
            fail("the file was refused");
    };
    const auto read = [&] {
        const QList<TarnCore *> copy = TARN::readTARNConfigFromXml(path, nullptr, nullptr);
        if (copy.size() != TarnBench::FullConfigCores)
            fail("the file was not read");
        qDeleteAll(copy);
    };
    return TarnBench::interleavedMedians(Rounds, {write, [&] { writeBare(elements, barePath); },
                                                  check, read, [&] { readBare(path); }});
}

/// CPU times of the copy of unsaved changes, which the view writes in slices.
struct CopyTimes
{
    std::vector<double> all;
    std::vector<double> longest; ///< The longest slice that makes the content.
    std::vector<double> last;    ///< The slice that writes it into the file.
};

CopyTimes measuredCopies(const QList<TarnCore *> &cores, const QString &path)
{
    const TARN::ConfigSnapshot snapshot = TARN::snapshotOf(cores);
    TARN::UnsavedFile file(path);
    CopyTimes times;
    for (int round = 0; round < Rounds; ++round) {
        TARN::SnapshotWriter writer(snapshot);
        double all = 0;
        double longest = 0;
        while (!writer.isFinished()) {
            const double slice = TarnBench::timeOf([&] { writer.step(SliceBudget); });
            all += slice;
            longest = std::max(longest, slice);
        }
        QString error;
        const double last = TarnBench::timeOf([&] {
            if (!file.write(writer.content(), TARN::Durability::EndOfProcess, &error))
                fail("the copy was not written");
        });
        times.all.push_back(all + last);
        times.longest.push_back(longest);
        times.last.push_back(last);
    }
    if (contentOf(file.copyPath()) != contentOf(path))
        fail("the copy is another document");
    return times;
}

/// False when a goal is missed.
bool printTimes(const std::vector<double> &times, const CopyTimes &copies, int elementCount,
                qint64 size)
{
    const QString title =
        QStringLiteral(
            "Configuration file at all limits: %1 cores, %2 + %2 ports, %3 signals each, "
            "%4 elements, %5 MB; medians of %6 rounds")
            .arg(TarnBench::FullConfigCores)
            .arg(TarnBench::FullConfigPorts)
            .arg(TarnBench::FullConfigBits)
            .arg(elementCount)
            .arg(double(size) / 1e6, 0, 'f', 1)
            .arg(Rounds);
    TarnBench::Table table(title.toStdString());
    table.add("writing the file", times.at(0), "s");
    table.add("bare stream writer", times.at(1), "s");
    table.add("checking the file", times.at(2), "s");
    table.add("reading the file", times.at(3), "s");
    table.add("bare stream reader", times.at(4), "s");
    table.add("copy of unsaved changes, all slices", TarnBench::median(copies.all), "s");
    table.add("its longest slice", TarnBench::median(copies.longest), "s", LongestSlice);
    table.add("its last slice, into the file", TarnBench::median(copies.last), "s", LongestSlice);
    table.add("writing / bare writer", times.at(0) / times.at(1), "", Goal);
    table.add("checking / bare reader", times.at(2) / times.at(4), "", Goal);
    table.add("reading / bare reader", times.at(3) / times.at(4), "", Goal);
    return table.print();
}

} // namespace

int main(int argc, char *argv[])
{
    TarnBench::readArguments(argc, argv);
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("a.tarn"));
    const QString barePath = folder.filePath(QStringLiteral("bare.xml"));
    const QList<TarnCore *> cores = TarnBench::fullConfig();
    if (!TARN::writeTARNConfigToXml(cores, path))
        fail("the file was not written");
    const QVector<Element> elements = elementsOf(path);
    writeBare(elements, barePath);
    if (contentOf(path) != contentOf(barePath))
        fail("the bare writer writes another document");

    const std::vector<double> times = measuredTimes(cores, path, elements, barePath);
    const CopyTimes copies = measuredCopies(cores, path);
    qDeleteAll(cores);
    return printTimes(times, copies, elements.size() / 2, QFile(path).size()) ? 0 : 1;
}
