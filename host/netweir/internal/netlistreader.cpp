// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "netlistreader.h"

#include "../netlistbuilder.h"
#include "../rtlnetlist.h"
#include "xmlinstances.h"
#include "xmlmarks.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>

namespace NETWEIR::Internal {

namespace {

const char JtagPrimitive[] = "KX_JTAG";

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

/// False when the design is too large, or reading was cancelled.
bool buildInstances(ElaboratedDesign *design, const ReadOptions &options, NetlistBuilder *builder)
{
    const Layout layout(design->types());
    InstanceTree instances(design, layout, options);
    if (!instances.build())
        return false;
    findMemories(design, layout);
    instances.findMemoriesElsewhere();
    for (Definition *definition : design->bottomUp()) {
        layout.placeVariables(definition);
        if (definition->bits > MostBits || options.isCancelled())
            return false;
    }
    for (Definition *definition : design->bottomUp()) {
        MarkReader(design, layout, definition).read();
        if (options.isCancelled())
            return false;
    }
    return instances.markInstances() && instances.stamp(builder);
}

} // namespace

std::unique_ptr<RtlNetlist> readElaboratedXml(const QString &xmlPath, const ReadOptions &options,
                                              QString *error)
{
    pugi::xml_document document;
    const pugi::xml_parse_result parsed =
        document.load_file(QFile::encodeName(xmlPath).constData());
    if (!parsed) {
        *error = tr("The elaborated design \"%1\" cannot be read: %2 (byte %3).")
                     .arg(xmlPath, QString::fromLatin1(parsed.description()),
                          QString::number(parsed.offset));
        return nullptr;
    }

    ElaboratedDesign design;
    if (options.isCancelled()) {
        *error = tr("Reading was cancelled.");
        return nullptr;
    }
    if (!design.read(document, options, QFileInfo(xmlPath).absolutePath(), error))
        return nullptr;

    NetlistBuilder builder(design.top()->sourceName);
    builder.setUsesJtagPrimitive(usesJtagPrimitive(design));
    if (buildInstances(&design, options, &builder))
        return builder.take();
    *error = options.isCancelled() ? tr("Reading was cancelled.")
                                   : tr("The design is too large to be read.");
    return nullptr;
}

} // namespace NETWEIR::Internal
