// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "netlisttext.h"

#include <netweir/internal/ground/readguard.h>
#include <netweir/internal/nets/verilogpart.h>
#include <netweir/internal/verilator/elaboratorinput.h>
#include <netweir/netlistbuilder.h>
#include <netweir/rtlnetlist.h>

#include <support/designcollection.h>
#include <support/files.h>
#include <te/designinfo.h>
#include <te/fileinfo.h>

#include <QProcess>
#include <QTemporaryDir>

#include <memory>

namespace TarnTest {

/// The netlist of the elaborated design at @p xmlPath, whose root is a top. Null on failure; @p
/// error then says why. Definitions that are read run by run are let go while it is built.
inline std::unique_ptr<NETWEIR::RtlNetlist>
readNetlist(const QString &xmlPath, const NETWEIR::Internal::ReadOptions &options, QString *error,
            const NETWEIR::Internal::ReadLimits &limits = {})
{
    NETWEIR::Internal::PartRoot top;
    top.isTop = true;
    std::unique_ptr<NETWEIR::RtlNetlist> netlist;
    const auto read = [&](QString *reason) {
        const auto part = NETWEIR::Internal::VerilogPart::read(xmlPath, {top}, options, reason);
        if (!part)
            return false;
        NETWEIR::NetlistBuilder builder(part->unitName(0));
        builder.setUsesJtagPrimitive(part->usesJtagPrimitive());
        if (options.runSize == 1)
            part->buildLast(0, {}, builder.top(), &builder, {});
        else
            part->build(0, {}, builder.top(), &builder, {});
        netlist = builder.take();
        return true;
    };
    NETWEIR::Internal::readWithin(limits, read, error);
    return netlist;
}

/// Runs the elaborator on a design as the host does. Owns the source and the XML, which go with it.
class Elaboration
{
public:
    explicit Elaboration(const QByteArray &source, const QString &top = QStringLiteral("top"))
    {
        const QString file = m_folder.filePath(QStringLiteral("design.sv"));
        writeFile(file, source);
        collectDesign(m_folder.path(),
                      {{TE::DesignInfo::Top, top},
                       {TE::DesignInfo::Files,
                        QVariantList{QVariantMap{{TE::DesignInfo::Path, file},
                                                 {TE::DesignInfo::Type, TE::SystemVerilogFile}}}}});
        QProcess process;
        process.setWorkingDirectory(m_folder.path());
        process.setProcessChannelMode(QProcess::MergedChannels);
        process.start(
            QStringLiteral("verilator_bin"),
            NETWEIR::Internal::elaboratorArguments(top, QStringLiteral("1800-2017"), false) +
                QStringList{file});
        const bool ended = process.waitForFinished(60000);
        m_log = process.readAll();
        m_ok = ended && process.exitCode() == 0;
        m_xml = m_folder.filePath(QLatin1String(NETWEIR::Internal::ElaboratedFile));
    }

    bool isOk() const { return m_ok; }
    QByteArray log() const { return m_log; }
    QString xmlPath() const { return m_xml; }

    std::unique_ptr<NETWEIR::RtlNetlist> read(const NETWEIR::Internal::ReadOptions &options,
                                              QString *error) const
    {
        return readNetlist(m_xml, options, error);
    }

private:
    QTemporaryDir m_folder;
    QByteArray m_log;
    QString m_xml;
    bool m_ok = false;
};

/// The netlist of @p source as text, or what went wrong. When it is another one as soon as each
/// member of a definition is read by itself, the text of that.
inline QString netlistTextOf(const QByteArray &source,
                             const NETWEIR::Internal::ReadOptions &options = {})
{
    const Elaboration design(source);
    if (!design.isOk())
        return QString::fromUtf8(design.log());
    const auto textOf = [&design](const NETWEIR::Internal::ReadOptions &readOptions) {
        QString error;
        const auto netlist = design.read(readOptions, &error);
        return netlist ? netlistText(netlist->top()) : error;
    };
    NETWEIR::Internal::ReadOptions runOptions = options;
    runOptions.runSize = 1;
    const QString text = textOf(options);
    const QString textOfRuns = textOf(runOptions);
    return textOfRuns == text ? text : QStringLiteral("Read in runs:\n") + textOfRuns;
}

} // namespace TarnTest
