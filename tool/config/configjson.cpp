// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "configjson.h"

#include "configjsonkeys.h"
#include "configjsonreader.h"

#include <model/tarncore.h>
#include <tool/configfile.h>
#include <tool/jsonvalue.h>

namespace Tool {

using TARN::ProbeIn;
using TARN::ProbeOut;
using TARN::SignalItem;
using TARN::TarnCore;
namespace Format = TARN::ConfigFormat;

namespace {

constexpr int Indent = 4;

QByteArray quoted(const QString &text)
{
    return jsonLine(jsonText(text));
}

/// Writes a line for each port, signal and member, so that a difference of two configurations is as
/// easy to read as that of the files.
class ConfigJsonWriter
{
public:
    QByteArray write(const QList<TarnCore *> &cores);

private:
    enum Layout {
        Lines,   ///< A line for each key.
        OneLine, ///< Up to a list, which takes a line for each of its values.
    };

    void writeCore(const TarnCore &core);
    void writePort(const ProbeIn &port, const QString *initialValue);
    void writeSignal(const SignalItem &item);

    void beginObject(Layout layout);
    void key(const QString &key, Layout layout);
    void endObject(Layout layout);
    template <typename Values, typename Write>
    void writeList(const Values &values, Write write);
    void beginLine() { m_json += '\n' + QByteArray(m_level * Indent, ' '); }

    QByteArray m_json;
    int m_level = 0;          ///< Of the current line.
    bool m_isAtBegin = false; ///< Of an object.
};

QByteArray ConfigJsonWriter::write(const QList<TarnCore *> &cores)
{
    beginObject(Lines);
    key(ConfigJson::Version, Lines);
    m_json += quoted(Format::CurrentVersion);
    key(ConfigJson::Cores, Lines);
    writeList(cores, [this](const TarnCore *core) { writeCore(*core); });
    endObject(Lines);
    m_json += '\n';
    return m_json;
}

void ConfigJsonWriter::writeCore(const TarnCore &core)
{
    beginObject(Lines);
    key(Format::Index, Lines);
    m_json += QByteArray::number(core.index);
    key(Format::Module, Lines);
    m_json += quoted(core.module);
    key(Format::UserClock, Lines);
    m_json += quoted(core.userClock);
    key(Format::SyncUserClock, Lines);
    m_json += core.syncUserClock ? "true" : "false";
    key(ConfigJson::ProbeIns, Lines);
    writeList(core.probeIns, [this](const ProbeIn *port) { writePort(*port, nullptr); });
    key(ConfigJson::ProbeOuts, Lines);
    writeList(core.probeOuts,
              [this](const ProbeOut *port) { writePort(*port, &port->initialValue); });
    endObject(Lines);
}

void ConfigJsonWriter::writePort(const ProbeIn &port, const QString *initialValue)
{
    beginObject(OneLine);
    key(Format::Index, OneLine);
    m_json += QByteArray::number(port.index);
    if (initialValue) {
        key(Format::InitialValue, OneLine);
        m_json += quoted(*initialValue);
    }
    key(ConfigJson::Signals, OneLine);
    writeList(port.signals, [this](const SignalItem &item) { writeSignal(item); });
    endObject(OneLine);
}

/// Leaves out what the file leaves out.
void ConfigJsonWriter::writeSignal(const SignalItem &item)
{
    beginObject(OneLine);
    key(Format::Name, OneLine);
    m_json += quoted(item.name);
    if (!item.displayName.isEmpty()) {
        key(Format::DisplayName, OneLine);
        m_json += quoted(item.displayName);
    }
    if (item.kind != SignalItem::Unset) {
        key(Format::Kind, OneLine);
        m_json += quoted(item.kind == SignalItem::Bus ? Format::KindBus : Format::KindNet);
    }
    if (!item.enabled) {
        key(Format::Enabled, OneLine);
        m_json += "false";
    }
    if (!item.usable) {
        key(Format::Usable, OneLine);
        m_json += "false";
    }
    if (!item.members.isEmpty()) {
        key(ConfigJson::Members, OneLine);
        writeList(item.members, [this](const SignalItem &member) { writeSignal(member); });
    }
    endObject(OneLine);
}

void ConfigJsonWriter::beginObject(Layout layout)
{
    m_json += '{';
    m_isAtBegin = true;
    m_level += layout == Lines ? 1 : 0;
}

void ConfigJsonWriter::key(const QString &key, Layout layout)
{
    if (!m_isAtBegin)
        m_json += ',';
    m_isAtBegin = false;
    if (layout == Lines)
        beginLine();
    else
        m_json += ' ';
    m_json += '"' + key.toLatin1() + "\": ";
}

void ConfigJsonWriter::endObject(Layout layout)
{
    if (layout == Lines) {
        --m_level;
        beginLine();
    } else {
        m_json += ' ';
    }
    m_json += '}';
}

/// Values on lines of their own, one level deeper than the current line.
template <typename Values, typename Write>
void ConfigJsonWriter::writeList(const Values &values, Write write)
{
    m_json += '[';
    ++m_level;
    for (int i = 0; i < values.size(); ++i) {
        if (i > 0)
            m_json += ',';
        beginLine();
        write(values.at(i));
    }
    --m_level;
    if (!values.isEmpty())
        beginLine();
    m_json += ']';
}

} // namespace

QByteArray configToJson(const QList<TarnCore *> &cores)
{
    return ConfigJsonWriter().write(cores);
}

bool configFromJson(const QByteArray &json, OwnedCores *cores, QString *error)
{
    ConfigJsonReader reader(json);
    if (!reader.read()) {
        *error = reader.errorText();
        return false;
    }
    *cores = reader.takeCores();
    return true;
}

} // namespace Tool
