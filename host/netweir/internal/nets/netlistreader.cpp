// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "netlistreader.h"

#include "instancetree.h"
#include "marks.h"

#include <files/regularfile.h>
#include <netweir/netlistbuilder.h>
#include <netweir/rtlnetlist.h>

#include <QCoreApplication>
#include <QFileInfo>

#include <algorithm>
#include <cstdlib>
#include <mutex>
#include <new>

namespace NETWEIR::Internal {

namespace {

const char JtagPrimitive[] = "KX_JTAG";
constexpr qint64 Megabyte = 1024 * 1024;
constexpr qint64 LargestFile = 2000 * Megabyte; ///< Bound by the size of a QByteArray.

QString tr(const char *text)
{
    return QCoreApplication::translate("NETWEIR::NetlistReader", text);
}

/// Memories have to be known before variables get their places.
void findMemories(ElaboratedDesign *design, const Layout &layout)
{
    for (Definition *definition : design->bottomUp()) {
        for (const Occurrence &selection : definition->computedIndexes) {
            forEachReference(selection, [&](const Reference &reference) {
                if (reference.isHierarchical())
                    return;
                const Symbol symbol =
                    definition->find(reference.scope, reference.node.attribute("name").value());
                if (symbol.kind == Symbol::Kind::Variable)
                    layout.addMemory(&definition->variables[std::size_t(symbol.index)], reference);
            });
        }
    }
}

bool usesJtagPrimitive(const ElaboratedDesign &design)
{
    for (const Definition *definition : design.bottomUp()) {
        for (const InstanceItem &instance : definition->instances) {
            if (instance.definition &&
                instance.definition->sourceName == QLatin1String(JtagPrimitive))
                return true;
        }
    }
    return false;
}

/// False when the design has too many bits or instances.
bool buildInstances(ElaboratedDesign *design, NetlistBuilder *builder)
{
    const Layout layout(design->types());
    InstanceTree instances(design, layout);
    if (!instances.build())
        return false;
    findMemories(design, layout);
    instances.findMemoriesElsewhere();
    for (Definition *definition : design->bottomUp()) {
        layout.placeVariables(definition);
        if (definition->bits > MostBits)
            return false;
    }
    for (Definition *definition : design->bottomUp())
        MarkReader(design, layout, definition).read();
    if (!instances.markInstances())
        return false;
    instances.stamp(builder);
    return true;
}

/// The elements of a document take many times the memory of its text, so parsing stops for the
/// guard too. Other threads, and other users of the XML library, get memory as ever.
void *allocate(std::size_t size)
{
    constexpr std::size_t BytesOfWork = 512;
    return ReadGuard::mayGoOn(qint64(size / BytesOfWork)) ? std::malloc(size) : nullptr;
}

/// @p limit is that of memory, which the text alone must not take.
bool parse(const QString &xmlPath, qint64 limit, QByteArray *text, pugi::xml_document *document,
           QString *error)
{
    static std::once_flag guarded;
    std::call_once(guarded, [] { pugi::set_memory_management_functions(allocate, std::free); });

    const qint64 largest = std::min(limit, LargestFile);
    QString reason;
    const Files::Access access =
        Files::readRegularFile(xmlPath, largest, text, &reason, ReadGuard::checkNow);
    if (access != Files::Access::Granted) {
        if (access == Files::Access::TooLarge)
            reason = tr("it is larger than %1 MB").arg(largest / Megabyte);
        else if (access != Files::Access::Failed)
            reason = tr("it is no regular file");
        *error = tr("The elaborated design \"%1\" cannot be read: %2.").arg(xmlPath, reason);
        return false;
    }
    ReadGuard::checkNow();
    const pugi::xml_parse_result parsed =
        document->load_buffer_inplace(text->data(), std::size_t(text->size()));
    if (parsed)
        return true;
    ReadGuard::checkNow();
    *error = tr("The elaborated design \"%1\" cannot be read: %2 (byte %3).")
                 .arg(xmlPath, QString::fromLatin1(parsed.description()),
                      QString::number(parsed.offset));
    return false;
}

std::unique_ptr<RtlNetlist> read(const QString &xmlPath, const ReadOptions &options, QString *error)
{
    QByteArray text; // The document lives in it.
    pugi::xml_document document;
    if (!parse(xmlPath, options.memoryLimit, &text, &document, error))
        return nullptr;
    ElaboratedDesign design;
    if (!design.read(document, options, QFileInfo(xmlPath).absolutePath(), error))
        return nullptr;
    NetlistBuilder builder(design.top()->sourceName);
    builder.setUsesJtagPrimitive(usesJtagPrimitive(design));
    if (buildInstances(&design, &builder))
        return builder.take();
    *error = tr("The design is too large to be read.");
    return nullptr;
}

QString endedText(ReadGuard::Reason reason, const ReadOptions &options)
{
    switch (reason) {
    case ReadGuard::Cancelled:
        return tr("Reading was cancelled.");
    case ReadGuard::TimedOut:
        return tr("Reading took longer than %1 seconds and was ended. Raise the timeout in the "
                  "project's options.")
            .arg(options.timeoutSeconds);
    case ReadGuard::TooLarge:
        return tr("Reading needs more than %1 MB of memory and was ended.")
            .arg(options.memoryLimit / Megabyte);
    case ReadGuard::GoesOn:
        break;
    }
    return {};
}

} // namespace

std::unique_ptr<RtlNetlist> readElaboratedXml(const QString &xmlPath, const ReadOptions &options,
                                              QString *error)
{
    ReadGuard guard(options.cancelled, options.timeoutSeconds, options.memoryLimit);
    try {
        return read(xmlPath, options, error);
    } catch (const ReadingEnded &) {
        *error = endedText(guard.reason(), options);
    } catch (const std::bad_alloc &) {
        *error = tr("Reading needs more memory than the system gives to this program.");
    }
    return nullptr;
}

} // namespace NETWEIR::Internal
