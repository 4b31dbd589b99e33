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

#include <netweir/internal/ground/messages.h>
#include <netweir/internal/ground/readguard.h>
#include <netweir/internal/xml/elaborateddesign.h>
#include <netweir/internal/xml/xmlfile.h>
#include <netweir/netlistbuilder.h>
#include <netweir/rtlnetlist.h>

#include <QFileInfo>

#include <algorithm>
#include <new>

namespace NETWEIR::Internal {

namespace {

const char JtagPrimitive[] = "KX_JTAG";
constexpr qint64 Megabyte = 1024 * 1024;

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

std::unique_ptr<RtlNetlist> read(const QString &xmlPath, const ReadOptions &options, QString *error)
{
    XmlFile file;
    if (!file.read(xmlPath, options.memoryLimit, error))
        return nullptr;
    ElaboratedDesign design;
    if (!design.read(file.document(), options, QFileInfo(xmlPath).absolutePath(), error))
        return nullptr;
    NetlistBuilder builder(design.top().sourceName);
    builder.setUsesJtagPrimitive(usesJtagPrimitive(design));
    if (buildNetlist(design, &builder))
        return builder.take();
    *error = Text::tr("The design is too large to be read.");
    return nullptr;
}

QString endedText(ReadGuard::Reason reason, const ReadOptions &options)
{
    switch (reason) {
    case ReadGuard::Cancelled:
        return Text::tr("Reading was cancelled.");
    case ReadGuard::TimedOut:
        return Text::tr(
                   "Reading took longer than %1 seconds and was stopped. Raise the timeout in the "
                   "project's options.")
            .arg(options.timeoutSeconds);
    case ReadGuard::TooLarge:
        return Text::tr("Reading needs more than %1 MB of memory and was stopped.")
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
        *error = Text::tr("Reading needs more memory than the system gives to this program.");
    }
    return nullptr;
}

} // namespace NETWEIR::Internal
