// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "configdocument.h"

#include "xmltext.h"

#include <probes/signalitem.h>

namespace TARN {

/// Writes through a device: only then does the declaration carry the encoding.
ConfigDocument::ConfigDocument()
{
    m_buffer.open(QIODevice::WriteOnly);
    m_xml.setDevice(&m_buffer);
    m_xml.setAutoFormatting(true);
    m_xml.setAutoFormattingIndent(4);
    m_xml.writeStartDocument();
    m_xml.writeStartElement(ConfigFormat::Root);
    m_xml.writeTextElement(ConfigFormat::Version, ConfigFormat::CurrentVersion);
}

bool ConfigDocument::beginCore(qint32 index, const QString &module, const QString &userClock,
                               bool syncUserClock)
{
    if (!checkText(module) || !checkText(userClock))
        return false;
    m_xml.writeStartElement(ConfigFormat::Core);
    m_xml.writeAttribute(ConfigFormat::Index, QString::number(index));
    m_xml.writeAttribute(ConfigFormat::Module, module);
    m_xml.writeAttribute(ConfigFormat::UserClock, userClock);
    m_xml.writeAttribute(ConfigFormat::SyncUserClock,
                         syncUserClock ? ConfigFormat::Yes : ConfigFormat::No);
    return true;
}

bool ConfigDocument::addProbeIn(qint32 index, const QList<SignalItem> &list)
{
    if (!checkSignals(list, ConfigFormat::SignalDepth))
        return false;
    beginPort(ConfigFormat::ProbeIn, index);
    endPort(list);
    return true;
}

bool ConfigDocument::addProbeOut(qint32 index, const QList<SignalItem> &list,
                                 const QString &initialValue)
{
    if (!checkText(initialValue) || !checkSignals(list, ConfigFormat::SignalDepth))
        return false;
    beginPort(ConfigFormat::ProbeOut, index);
    m_xml.writeAttribute(ConfigFormat::InitialValue, initialValue);
    endPort(list);
    return true;
}

void ConfigDocument::endCore()
{
    m_xml.writeEndElement();
}

QByteArray ConfigDocument::finish()
{
    m_xml.writeEndDocument();
    if (m_error.isEmpty() && m_buffer.size() > ConfigFormat::MaximumSize)
        m_error = QStringLiteral("the configuration is too large for one file");
    return m_error.isEmpty() ? m_buffer.data() : QByteArray();
}

bool ConfigDocument::checkSignals(const QList<SignalItem> &list, int depth)
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

bool ConfigDocument::checkText(const QString &text)
{
    if (isXmlText(text))
        return true;
    m_error = QStringLiteral("XML cannot represent the text \"%1\"").arg(text);
    return false;
}

void ConfigDocument::beginPort(const QString &element, qint32 index)
{
    m_xml.writeStartElement(element);
    m_xml.writeAttribute(ConfigFormat::Index, QString::number(index));
}

void ConfigDocument::endPort(const QList<SignalItem> &list)
{
    writeSignals(ConfigFormat::Signal, list);
    m_xml.writeEndElement();
}

void ConfigDocument::writeSignals(const QString &element, const QList<SignalItem> &list)
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
