// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "configwriter.h"

#include "tarncore.h"
#include "xmltext.h"

#include <QBuffer>

#include <algorithm>

namespace TARN {

ConfigWriter::ConfigWriter(const QList<TarnCore *> &cores)
    : m_cores(cores)
{
}

QByteArray ConfigWriter::content()
{
    m_error.clear();
    const auto check = [this](const TarnCore *core) { return checkCore(core); };
    if (!std::all_of(m_cores.cbegin(), m_cores.cend(), check))
        return QByteArray();

    // Through a device: only then does the declaration carry the encoding.
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    m_xml.setDevice(&buffer);
    m_xml.setAutoFormatting(true);
    m_xml.setAutoFormattingIndent(4);
    m_xml.writeStartDocument();
    m_xml.writeStartElement(ConfigFormat::Root);
    m_xml.writeTextElement(ConfigFormat::Version, ConfigFormat::CurrentVersion);
    for (const TarnCore *core : m_cores)
        writeCore(*core);
    m_xml.writeEndDocument();
    m_xml.setDevice(nullptr);

    if (buffer.size() > ConfigFormat::MaximumSize) {
        m_error = QStringLiteral("the configuration is too large for one file");
        return QByteArray();
    }
    return buffer.data();
}

bool ConfigWriter::checkCore(const TarnCore *core)
{
    if (!core) {
        m_error = QStringLiteral("the list of cores holds a null pointer");
        return false;
    }
    const auto checkIn = [this](const ProbeIn *port) {
        return checkSignals(port->signals, ConfigFormat::SignalDepth);
    };
    const auto checkOut = [&](const ProbeOut *port) {
        return checkText(port->initialValue) && checkIn(port);
    };
    return checkText(core->module) && checkText(core->userClock) &&
           std::all_of(core->probeIns.cbegin(), core->probeIns.cend(), checkIn) &&
           std::all_of(core->probeOuts.cbegin(), core->probeOuts.cend(), checkOut);
}

bool ConfigWriter::checkSignals(const QList<SignalItem> &list, int depth)
{
    if (!list.isEmpty() && depth > ConfigFormat::MaximumDepth) {
        m_error = QStringLiteral("the members of a signal are nested too deep");
        return false;
    }
    for (const SignalItem &signal : list) {
        if (signal.kind < SignalItem::Unset || signal.kind > SignalItem::Bus) {
            m_error = QStringLiteral("a signal has the unknown kind %1").arg(signal.kind);
            return false;
        }
        if (!checkText(signal.name) || !checkText(signal.displayName) ||
            !checkSignals(signal.members, depth + 1))
            return false;
    }
    return true;
}

bool ConfigWriter::checkText(const QString &text)
{
    if (isXmlText(text))
        return true;
    m_error = QStringLiteral("XML cannot represent the text \"%1\"").arg(text);
    return false;
}

void ConfigWriter::writeCore(const TarnCore &core)
{
    m_xml.writeStartElement(ConfigFormat::Core);
    m_xml.writeAttribute(ConfigFormat::Index, QString::number(core.index));
    m_xml.writeAttribute(ConfigFormat::Module, core.module);
    m_xml.writeAttribute(ConfigFormat::UserClock, core.userClock);
    m_xml.writeAttribute(ConfigFormat::SyncUserClock,
                         core.syncUserClock ? ConfigFormat::Yes : ConfigFormat::No);
    for (const ProbeIn *port : core.probeIns)
        writePort(ConfigFormat::ProbeIn, *port, nullptr);
    for (const ProbeOut *port : core.probeOuts)
        writePort(ConfigFormat::ProbeOut, *port, &port->initialValue);
    m_xml.writeEndElement();
}

void ConfigWriter::writePort(const QString &element, const ProbeIn &port,
                             const QString *initialValue)
{
    m_xml.writeStartElement(element);
    m_xml.writeAttribute(ConfigFormat::Index, QString::number(port.index));
    if (initialValue)
        m_xml.writeAttribute(ConfigFormat::InitialValue, *initialValue);
    writeSignals(ConfigFormat::Signal, port.signals);
    m_xml.writeEndElement();
}

void ConfigWriter::writeSignals(const QString &element, const QList<SignalItem> &list)
{
    for (const SignalItem &signal : list) {
        m_xml.writeStartElement(element);
        m_xml.writeAttribute(ConfigFormat::Name, signal.name);
        if (!signal.displayName.isEmpty())
            m_xml.writeAttribute(ConfigFormat::DisplayName, signal.displayName);
        if (signal.kind != SignalItem::Unset) {
            m_xml.writeAttribute(ConfigFormat::Kind, signal.kind == SignalItem::Bus
                                                         ? ConfigFormat::KindBus
                                                         : ConfigFormat::KindNet);
        }
        if (!signal.enabled)
            m_xml.writeAttribute(ConfigFormat::Enabled, ConfigFormat::No);
        if (!signal.usable)
            m_xml.writeAttribute(ConfigFormat::Usable, ConfigFormat::No);
        writeSignals(ConfigFormat::Member, signal.members);
        m_xml.writeEndElement();
    }
}

} // namespace TARN
