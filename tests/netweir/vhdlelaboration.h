// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "netlisttext.h"

#include <netweir/internal/dialog/extractiondialog.h>
#include <netweir/internal/ghdl/ghdlelaborator.h>
#include <netweir/internal/ground/messages.h>
#include <netweir/internal/tool/extractionprogress.h>

#include <netweir/netlistbuilder.h>
#include <netweir/rtlnetlist.h>

#include <support/designcollection.h>
#include <support/files.h>
#include <te/designinfo.h>
#include <te/fileinfo.h>

#include <QTemporaryDir>

#include <memory>

namespace TarnTest {

/// A VHDL source of a test design, or another file, which is only written.
struct VhdlTestFile
{
    QString name;
    QByteArray text;
    QString library = QStringLiteral("work");
    bool isLibraryFile = false;
};

/// A VHDL design in a folder of its own, and its elaborator.
class VhdlElaboration
{
public:
    explicit VhdlElaboration(const QVector<VhdlTestFile> &files,
                             const QString &standard = QStringLiteral("08"),
                             int timeoutSeconds = 60)
        : m_folder(QDir::tempPath() + QStringLiteral("/design-XXXXXX"))
        , m_dialog(nullptr)
        , m_progress(&m_dialog)
    {
        NETWEIR::Internal::DesignSources sources;
        QVariantList listed;
        for (const VhdlTestFile &file : files) {
            if (!file.name.endsWith(QLatin1String(".vhd"))) {
                QDir().mkpath(QFileInfo(m_folder.filePath(file.name)).path());
                writeFile(m_folder.filePath(file.name), file.text);
                continue;
            }
            NETWEIR::Internal::SourceFile source;
            source.path = m_folder.filePath(file.name);
            source.vhdl = true;
            source.library = file.isLibraryFile;
            source.vhdlLibrary = file.library;
            writeFile(source.path, file.text);
            sources.files.append(source);
            listed.append(QVariantMap{{TE::DesignInfo::Path, source.path},
                                      {TE::DesignInfo::Type, TE::VhdlFile},
                                      {TE::DesignInfo::Library, file.library}});
        }
        collectDesign(m_folder.path(),
                      {{TE::DesignInfo::Files, listed}, {TE::DesignInfo::VhdlStandard, standard}});
        sources.vhdlStandard = standard;
        sources.timeoutSeconds = timeoutSeconds;
        m_elaborator = std::make_unique<NETWEIR::Internal::GhdlElaborator>(sources);
    }

    NETWEIR::Internal::GhdlElaborator &elaborator() { return *m_elaborator; }
    NETWEIR::Internal::ExtractionProgress *progress() { return &m_progress; }

    /// Scans the sources and elaborates @p roots. False when it failed.
    bool elaborate(const std::vector<NETWEIR::Internal::PartRoot> &roots)
    {
        m_elaborator->scan(&m_progress);
        m_elaborator->setForeignUnits(&m_foreign);
        m_elaborator->begin(roots, &m_progress);
        m_elaborator->elaborate(&m_progress, -1);
        return m_elaborator->isElaborated();
    }

    bool elaborateTop(const QString &top = QStringLiteral("top"))
    {
        NETWEIR::Internal::PartRoot root;
        root.unit = top;
        root.isTop = true;
        return elaborate({root});
    }

    /// Units that sources in Verilog would declare.
    void addModule(const QString &name)
    {
        NETWEIR::Internal::DeclaredUnit unit;
        unit.name = name;
        addForeign(unit);
    }
    void addForeign(const NETWEIR::Internal::DeclaredUnit &unit) { m_foreign.push_back(unit); }

    /// All messages, without the folder of the design.
    QStringList messages() const
    {
        QStringList result = m_elaborator->sourceMessages() + m_elaborator->messages();
        return result.replaceInStrings(m_folder.path() + QLatin1Char('/'), QString());
    }

    /// What was elaborated: null when it cannot be read.
    std::unique_ptr<NETWEIR::Internal::Part> read(QString *error)
    {
        return m_elaborator->read(error);
    }

    /// The netlist below root @p number, and "BORDER name: unit" for each instance of a unit in
    /// another language. Or why there is none.
    QString netlist(int number = 0)
    {
        QString error;
        const auto part = read(&error);
        if (!part)
            return error + messages().join(QLatin1Char('\n'));
        NETWEIR::NetlistBuilder builder(part->unitName(number));
        QStringList borders;
        part->build(number, {}, builder.top(), &builder,
                    [&](const NETWEIR::Internal::BorderInstance &instance) {
                        borders.append(borderText(instance, *part));
                    });
        const auto netlist = builder.take();
        return netlistText(netlist->top()) + borders.join(QString());
    }

private:
    static QString borderText(const NETWEIR::Internal::BorderInstance &instance,
                              const NETWEIR::Internal::Part &part)
    {
        const NETWEIR::Internal::PartRoot &root =
            part.foreignRoots().at(std::size_t(instance.root));
        QStringList items;
        for (auto i = root.generics.begin(); i != root.generics.end(); ++i)
            items.append(i.key() + QLatin1Char('=') + i.value().text);
        for (const NETWEIR::Internal::PartPort &port : root.ports)
            items.append(QStringLiteral("%1:%2").arg(port.name).arg(port.width));
        return QStringLiteral("BORDER %1: %2(%3)\n")
            .arg(instance.name, root.unit, items.join(QStringLiteral(", ")));
    }

    QTemporaryDir m_folder;
    NETWEIR::Internal::ExtractionDialog m_dialog;
    NETWEIR::Internal::ExtractionProgress m_progress;
    std::vector<NETWEIR::Internal::DeclaredUnit> m_foreign;
    std::unique_ptr<NETWEIR::Internal::GhdlElaborator> m_elaborator;
};

} // namespace TarnTest

Q_DECLARE_METATYPE(TarnTest::VhdlTestFile)
