// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "configreader.h"

#include "tarncore.h"

#include <algorithm>

namespace TARN {

namespace {

/// A text of the file in a message: on one line and not longer than a message should be.
QString shown(const QStringRef &text)
{
    constexpr int Longest = 60;
    QString line = text.left(Longest).toString();
    std::replace_if(
        line.begin(), line.end(), [](QChar c) { return c.isSpace(); }, QLatin1Char(' '));
    return text.size() > Longest ? line + QStringLiteral("...") : line;
}

/// Two values of an attribute in a message.
QString shown(const QString &one, const QString &other)
{
    return QStringLiteral("\"%1\", \"%2\"").arg(one, other);
}

/// How many names a file of so many bytes may share: about as many as it has elements.
std::size_t nameCount(qint64 size)
{
    constexpr qint64 bytesOfElement = 64;
    constexpr qint64 most = 1 << 17;
    return std::size_t(std::clamp<qint64>(size / bytesOfElement, 1, most));
}

} // namespace

ConfigReader::ConfigReader(QIODevice *device)
    : m_size(device->size())
    , m_input(device)
    , m_xml(&m_input)
{
    // Without it, names with a prefix and "xmlns" are ordinary names that the format does not know.
    m_xml.setNamespaceProcessing(false);
}

ConfigReader::~ConfigReader() = default;

bool ConfigReader::read()
{
    if (m_size > ConfigFormat::MaximumSize)
        refuse(tr("The file is larger than %1 MB and is no configuration of this program.")
                   .arg(ConfigFormat::MaximumSize / (1024 * 1024)));
    else
        readDocument();
    if (m_xml.hasError())
        refuse(inputError());
    if (failed())
        m_cores.clear();
    return !failed();
}

QList<TarnCore *> ConfigReader::takeCores()
{
    QList<TarnCore *> cores;
    cores.reserve(int(m_cores.size()));
    for (std::unique_ptr<TarnCore> &core : m_cores)
        cores.append(core.release());
    m_cores.clear();
    return cores;
}

void ConfigReader::readDocument()
{
    if (!nextElement())
        return;
    if (!isElement(ConfigFormat::Root)) {
        refuse(tr("The root element is \"%1\" instead of \"%2\". Choose a file that this program "
                  "has written.")
                   .arg(shown(m_xml.qualifiedName()), ConfigFormat::Root));
        return;
    }
    refuseAttributes();
    readVersion();
    while (nextElement()) {
        if (isElement(ConfigFormat::Core))
            readCore();
        else
            refuseElement();
    }
    // Only comments may follow the root.
    nextElement();
}

void ConfigReader::readVersion()
{
    if (!nextElement() || !isElement(ConfigFormat::Version)) {
        refuse(tr("The first element is not \"%1\". Add it, with the text \"%2\".")
                   .arg(ConfigFormat::Version, ConfigFormat::CurrentVersion));
        return;
    }
    refuseAttributes();
    const QString text = m_xml.readElementText().simplified();
    --m_depth;
    if (failed() || m_xml.hasError() || text == ConfigFormat::CurrentVersion)
        return;
    const QString reason =
        ConfigFormat::isNewerVersion(text)
            ? tr("The file has the newer version \"%1\"; versions up to \"%2\" can be read. Use "
                 "a newer release of this program.")
            : tr("The file has the unknown version \"%1\" instead of \"%2\". Correct it.");
    refuse(reason.arg(shown(QStringRef(&text)), ConfigFormat::CurrentVersion));
}

void ConfigReader::readCore()
{
    auto core = std::make_unique<TarnCore>(0);
    m_lines.addCore(m_line);
    readCoreAttributes(core.get());
    while (nextElement()) {
        if (isElement(ConfigFormat::ProbeIn)) {
            auto port = std::make_unique<ProbeIn>();
            m_lines.addPort(ProbeTypeIn, m_line);
            readPort(port.get(), nullptr);
            core->probeIns.append(port.release());
        } else if (isElement(ConfigFormat::ProbeOut)) {
            auto port = std::make_unique<ProbeOut>();
            m_lines.addPort(ProbeTypeOut, m_line);
            readPort(port.get(), &port->initialValue);
            core->probeOuts.append(port.release());
        } else {
            refuseElement();
        }
    }
    m_cores.push_back(std::move(core));
}

void ConfigReader::readCoreAttributes(TarnCore *core)
{
    for (const QXmlStreamAttribute &attribute : attributes(ConfigFormat::Index)) {
        const QStringRef name = attribute.qualifiedName();
        if (name == ConfigFormat::Index)
            take(attribute, &core->index);
        else if (name == ConfigFormat::Module)
            take(attribute, &core->module);
        else if (name == ConfigFormat::UserClock)
            take(attribute, &core->userClock);
        else if (name == ConfigFormat::SyncUserClock)
            take(attribute, &core->syncUserClock);
        else
            refuseAttribute(attribute);
    }
}

void ConfigReader::readPort(ProbeIn *port, QString *initialValue)
{
    for (const QXmlStreamAttribute &attribute : attributes(ConfigFormat::Index)) {
        const QStringRef name = attribute.qualifiedName();
        if (name == ConfigFormat::Index)
            take(attribute, &port->index);
        else if (initialValue && name == ConfigFormat::InitialValue)
            take(attribute, initialValue);
        else
            refuseAttribute(attribute);
    }
    while (nextElement()) {
        if (isElement(ConfigFormat::Signal)) {
            if (port->signals.isEmpty())
                port->signals.reserve(m_lastCount);
            port->signals.append(SignalItem()); // NOLINT(clang-analyzer-*): never null
            m_lines.addSignal(m_line);
            readSignal(&port->signals.last());
        } else {
            refuseElement();
        }
    }
    if (!port->signals.isEmpty())
        m_lastCount = port->signals.size();
}

void ConfigReader::readSignal(SignalItem *signal)
{
    for (const QXmlStreamAttribute &attribute : attributes(ConfigFormat::Name)) {
        const QStringRef name = attribute.qualifiedName();
        if (name == ConfigFormat::Name)
            take(attribute, &signal->name);
        else if (name == ConfigFormat::DisplayName)
            take(attribute, &signal->displayName);
        else if (name == ConfigFormat::Kind)
            takeKind(attribute, &signal->kind);
        else if (name == ConfigFormat::Enabled)
            take(attribute, &signal->enabled);
        else if (name == ConfigFormat::Usable)
            take(attribute, &signal->usable);
        else
            refuseAttribute(attribute);
    }
    shareName(&signal->name);
    while (nextElement()) {
        if (isElement(ConfigFormat::Member)) {
            signal->members.append(SignalItem());
            if (m_depth == ConfigFormat::SignalDepth + 1) // Members of members are no bits.
                m_lines.addBit(m_line);
            readSignal(&signal->members.last());
        } else {
            refuseElement();
        }
    }
}

/// Lets equal names share their memory: cores may probe the same nets. A table of all names would
/// take longer than all else when they differ, so this one forgets.
void ConfigReader::shareName(QString *name)
{
    if (m_names.empty())
        m_names.resize(nameCount(m_size));
    QString &known = m_names[qHash(*name) % m_names.size()];
    if (known == *name)
        *name = known;
    else
        known = *name;
}

/// Moves to the next element inside the current one. False at the end of the current element and
/// after an error, so that every loop over elements ends then.
bool ConfigReader::nextElement()
{
    while (!failed() && !m_xml.hasError()) {
        // What is in front of a tag is a token of its own, so the tag begins where that ended.
        m_line = int(m_xml.lineNumber());
        switch (m_xml.readNext()) {
        case QXmlStreamReader::StartElement:
            if (++m_depth <= ConfigFormat::MaximumDepth)
                return true;
            refuse(tr("Elements are nested deeper than %1 levels. Remove the inner ones.")
                       .arg(ConfigFormat::MaximumDepth));
            break;
        case QXmlStreamReader::EndElement:
            --m_depth;
            return false;
        case QXmlStreamReader::EndDocument:
            return false;
        case QXmlStreamReader::StartDocument:
            checkEncoding();
            break;
        case QXmlStreamReader::Characters:
            checkCharacters();
            break;
        case QXmlStreamReader::DTD:
            refuse(tr("The file has a document type declaration. Remove it."));
            break;
        default:
            break;
        }
    }
    return false;
}

void ConfigReader::checkEncoding()
{
    const QStringRef encoding = m_xml.documentEncoding();
    if (!encoding.isEmpty() && encoding.compare(ConfigFormat::Encoding, Qt::CaseInsensitive) != 0)
        refuse(tr("The file declares the encoding \"%1\" instead of \"%2\". Convert it.")
                   .arg(shown(encoding), ConfigFormat::Encoding));
}

void ConfigReader::checkCharacters()
{
    if (!m_xml.isWhitespace())
        refuse(tr("The text \"%1\" stands between elements. Remove it.")
                   .arg(shown(m_xml.text().trimmed())));
}

/// The attributes of the current element; refuses the element when it lacks @p required.
QXmlStreamAttributes ConfigReader::attributes(const QString &required)
{
    const QXmlStreamAttributes all = m_xml.attributes();
    if (!all.hasAttribute(required))
        refuse(tr("The element \"%1\" has no attribute \"%2\". Add it.")
                   .arg(shown(m_xml.qualifiedName()), required));
    return all;
}

void ConfigReader::take(const QXmlStreamAttribute &attribute, QString *text)
{
    *text = attribute.value().toString();
}

void ConfigReader::take(const QXmlStreamAttribute &attribute, qint32 *number)
{
    *number = attribute.value().toInt(); // NOLINT(clang-analyzer-*): never null
    if (attribute.value() != QString::number(*number))
        refuseValue(attribute, tr("a whole number in digits"));
}

void ConfigReader::take(const QXmlStreamAttribute &attribute, bool *flag)
{
    *flag = attribute.value() == ConfigFormat::Yes;
    if (!*flag && attribute.value() != ConfigFormat::No)
        refuseValue(attribute, shown(ConfigFormat::Yes, ConfigFormat::No));
}

void ConfigReader::takeKind(const QXmlStreamAttribute &attribute, int *kind)
{
    if (attribute.value() == ConfigFormat::KindNet)
        *kind = SignalItem::Net;
    else if (attribute.value() == ConfigFormat::KindBus)
        *kind = SignalItem::Bus;
    else
        refuseValue(attribute, shown(ConfigFormat::KindNet, ConfigFormat::KindBus));
}

/// Ends the reading. The first reason counts, but an error of the XML itself comes before it.
void ConfigReader::refuse(const QString &reason)
{
    if (failed())
        return;
    // The character read last: the end of the tag, or the one that XML does not allow.
    const qint64 column = std::max<qint64>(m_xml.columnNumber(), 1);
    m_error = tr("Line %1, column %2: %3")
                  .arg(QString::number(m_xml.lineNumber()), QString::number(column),
                       m_xml.hasError() ? inputError() : reason);
}

/// Why the XML reader gave up.
QString ConfigReader::inputError() const
{
    switch (m_input.verdict()) {
    case GuardedInput::TooManyAttributes:
        return tr("An element has more than %1 attributes. Remove it.")
            .arg(GuardedInput::MaximumAttributes);
    case GuardedInput::OtherEncoding:
        return tr("The text is not encoded in %1. Convert it.").arg(ConfigFormat::Encoding);
    case GuardedInput::Harmless:
        break;
    }
    return tr("Not well-formed XML: %1 Correct it, or take an earlier copy of the file.")
        .arg(m_xml.errorString());
}

void ConfigReader::refuseElement()
{
    refuse(tr("The element \"%1\" is not known in this place. Remove it.")
               .arg(shown(m_xml.qualifiedName())));
}

/// For an element that may have no attributes.
void ConfigReader::refuseAttributes()
{
    for (const QXmlStreamAttribute &attribute : m_xml.attributes())
        refuseAttribute(attribute);
}

void ConfigReader::refuseAttribute(const QXmlStreamAttribute &attribute)
{
    refuse(tr("The attribute \"%1\" of the element \"%2\" is not known. Remove it.")
               .arg(shown(attribute.qualifiedName()), shown(m_xml.qualifiedName())));
}

void ConfigReader::refuseValue(const QXmlStreamAttribute &attribute, const QString &expected)
{
    refuse(tr("The attribute \"%1\" has the value \"%2\". Allowed: %3.")
               .arg(shown(attribute.qualifiedName()), shown(attribute.value()), expected));
}

} // namespace TARN
