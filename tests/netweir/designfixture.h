// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <netweir/hierachy.h>
#include <netweir/rtlextraction.h>
#include <netweir/rtlnet.h>
#include <netweir/rtlnetlist.h>

#include <te/designinfo.h>
#include <te/fileinfo.h>

#include <support/designcollection.h>
#include <support/files.h>

#include <QDir>
#include <QTemporaryDir>

#include <memory>

namespace TarnTest {

/// A design in a temporary folder, and the results of its extraction.
class DesignFixture
{
public:
    explicit DesignFixture(const QString &subfolder = QString())
        : m_folder(QDir::tempPath() + QStringLiteral("/design-XXXXXX"))
        , m_root(QDir(m_folder.path()).filePath(subfolder))
    {
        QDir().mkpath(m_root);
    }

    QString path(const QString &name) const { return QDir(m_root).filePath(name); }

    /// Adds a source. Names that end with .sv or .vhd get the type of their language unless
    /// @p type is given, others that of Verilog.
    void add(const QString &name, const QByteArray &content, int type = 0)
    {
        writeFile(path(name), content);
        list(name, type);
    }

    /// Adds a source to the project without writing it. @p library is the one of a VHDL file.
    void list(const QString &name, int type = 0, const QString &library = QString())
    {
        if (type == 0)
            type = typeOf(name);
        QVariantMap file{{TE::DesignInfo::Path, path(name)}, {TE::DesignInfo::Type, type}};
        if (!library.isEmpty())
            file[QLatin1String(TE::DesignInfo::Library)] = library;
        m_files.append(file);
    }

    void set(const char *key, const QVariant &value) { m_info[QLatin1String(key)] = value; }

    /// The design information map.
    QMap<QString, QVariant> info() const
    {
        QMap<QString, QVariant> result = m_info;
        result[QLatin1String(TE::DesignInfo::Files)] = m_files;
        return result;
    }

    void findModules()
    {
        tops.clear();
        modules.clear();
        messages.clear();
        QMap<QString, QVariant> given = info();
        collectDesign(m_folder.path(), given);
        NETWEIR::catchRtlModules(tops, modules, messages, given, nullptr);
    }

    NETWEIR::RtlNetlist *buildNetlist()
    {
        NETWEIR::RtlNetlist *result = nullptr;
        netMessages.clear();
        NETWEIR::catchRtlNetsWithProgressDialog(&result, netMessages, nullptr);
        netlist.reset(result);
        return result;
    }

    /// Finds the modules and builds the netlist. True when both went without an error.
    bool extract()
    {
        findModules();
        return firstError().isEmpty() && buildNetlist();
    }

    /// The first error of findModules(), with the folder of the design cut from it.
    QString firstError() const
    {
        for (QString message : messages) {
            if (message.startsWith(QLatin1String("ERROR")))
                return message.remove(m_root + QLatin1Char('/'));
        }
        return {};
    }

    QStringList tops;
    QStringList modules;
    QStringList messages;
    QStringList netMessages;
    std::unique_ptr<NETWEIR::RtlNetlist> netlist;

private:
    static int typeOf(const QString &name)
    {
        if (name.endsWith(QLatin1String(".vhd")))
            return TE::VhdlFile;
        return name.endsWith(QLatin1String(".sv")) ? TE::SystemVerilogFile : TE::VerilogFile;
    }

    QTemporaryDir m_folder;
    QString m_root;
    QVariantList m_files;
    QMap<QString, QVariant> m_info;
};

} // namespace TarnTest
