// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "netlistreader.h"

#include "definitionmarker.h"
#include "instancemarker.h"
#include "instancetree.h"
#include "interfacebindings.h"
#include "memories.h"
#include "netliststamp.h"
#include "pathresolver.h"

#include <files/regularfile.h>
#include <netweir/internal/xml/elaborateddesign.h>
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

/// Empty when a definition has too many bits.
std::vector<PlacedDefinition> placeDefinitions(const ElaboratedDesign &design, const Layout &layout)
{
    auto placed = design.listByDefinition<PlacedDefinition>();
    for (const Definition *definition : design.bottomUp()) {
        PlacedDefinition &result = itemAt(placed, definition->number);
        result = layout.place(*definition);
        if (result.bits > MostBits)
            return {};
    }
    return placed;
}

std::vector<MarkedDefinition> markDefinitions(const ElaboratedDesign &design, const Layout &layout,
                                              const std::vector<PlacedDefinition> &placed)
{
    auto marked = design.listByDefinition<MarkedDefinition>();
    for (const Definition *definition : design.bottomUp()) {
        const PlacedDefinition &source = itemAt(placed, definition->number);
        itemAt(marked, definition->number) =
            DefinitionMarker(design, layout, marked, source).mark();
    }
    return marked;
}

/// False when the design has too many bits or instances.
bool buildNetlist(const ElaboratedDesign &design, NetlistBuilder *builder)
{
    InstanceTree tree;
    if (!tree.build(design.top()))
        return false;
    const InterfaceBindings bindings = bindInterfaces(design, tree);
    const PathResolver paths(design.types(), tree, bindings);
    const Memories memories = findMemories(design, tree, paths);
    const Layout layout(design.types(), memories);
    const std::vector<PlacedDefinition> placed = placeDefinitions(design, layout);
    if (placed.empty())
        return false;
    const std::vector<MarkedDefinition> marked = markDefinitions(design, layout, placed);
    InstanceMarks marks;
    if (!marks.fill(tree, marked))
        return false;
    InstanceMarker({design, tree, bindings, paths, layout, marked}, &marks).mark();
    stampNetlist(tree, placed, marks, builder);
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
    const pugi::xml_parse_result parsed = document->load_buffer_inplace(text->data(), text->size());
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
    NetlistBuilder builder(design.top().sourceName);
    builder.setUsesJtagPrimitive(usesJtagPrimitive(design));
    if (buildNetlist(design, &builder))
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
