// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "configjsonreader.h"

#include "configjsonkeys.h"

#include <model/configformat.h>
#include <model/tarncore.h>
#include <model/xmltext.h>
#include <tool/printable.h>

#include <QStringList>

#include <algorithm>
#include <limits>

namespace Tool {

using TARN::SignalItem;
using TARN::TarnCore;
namespace Format = TARN::ConfigFormat;

namespace {

/// A text of the document in a message, not longer than a message should be.
QString shown(const QString &text)
{
    constexpr int Longest = 60;
    const QString line = QString::fromLocal8Bit(printable(text.left(Longest)));
    return (text.size() > Longest ? QStringLiteral("\"%1...\"") : QStringLiteral("\"%1\""))
        .arg(line);
}

QString found(const JsonValue &value)
{
    switch (value.kind) {
    case JsonValue::Null:
        return QStringLiteral("null");
    case JsonValue::Flag:
        return value.flag ? Format::Yes : Format::No;
    case JsonValue::Text:
        return QStringLiteral("the text %1").arg(shown(value.text));
    case JsonValue::WholeNumber:
    case JsonValue::OtherNumber:
        break;
    }
    return QStringLiteral("the number %1").arg(value.text.left(60));
}

} // namespace

/// A key that objects of a form may have.
struct ConfigJsonReader::Field
{
    enum Id {
        Version,
        Cores,
        Index,
        Module,
        UserClock,
        SyncUserClock,
        ProbeIns,
        ProbeOuts,
        InitialValue,
        Signals,
        Name,
        DisplayName,
        Kind,
        Enabled,
        Usable,
        Members,
    };

    /// The values allowed, for a message.
    QString allowed() const;

    Id id;
    QString key;
    const Form &(*values)() = nullptr; ///< Of its list; null for a field that holds no list.
};

QString ConfigJsonReader::Field::allowed() const
{
    if (values)
        return QStringLiteral("a list in [ ]");
    switch (id) {
    case Version:
        return QStringLiteral("the text \"%1\"").arg(Format::CurrentVersion);
    case Index:
        return QStringLiteral("a whole number from -2147483648 to 2147483647, without fraction or "
                              "exponent");
    case SyncUserClock:
    case Enabled:
    case Usable:
        return QStringLiteral("true, false");
    case Kind:
        return QStringLiteral("\"%1\", \"%2\"").arg(Format::KindNet, Format::KindBus);
    default:
        return QStringLiteral("a text in quotes");
    }
}

/// The objects that stand for the same element of the file.
struct ConfigJsonReader::Form
{
    enum Id { Configuration, Core, ProbeIn, ProbeOut, Signal };

    static const Form &configuration();
    static const Form &core();
    static const Form &probeIn();
    static const Form &probeOut();
    static const Form &signal();

    QStringList keys() const;

    Id id;
    QString name;              ///< For a message, with its article.
    std::vector<Field> fields; ///< The first one is required.
};

const ConfigJsonReader::Form &ConfigJsonReader::Form::configuration()
{
    static const Form form{
        Configuration,
        QStringLiteral("The configuration"),
        {{Field::Version, ConfigJson::Version}, {Field::Cores, ConfigJson::Cores, core}}};
    return form;
}

const ConfigJsonReader::Form &ConfigJsonReader::Form::core()
{
    static const Form form{Core,
                           QStringLiteral("The core"),
                           {{Field::Index, Format::Index},
                            {Field::Module, Format::Module},
                            {Field::UserClock, Format::UserClock},
                            {Field::SyncUserClock, Format::SyncUserClock},
                            {Field::ProbeIns, ConfigJson::ProbeIns, probeIn},
                            {Field::ProbeOuts, ConfigJson::ProbeOuts, probeOut}}};
    return form;
}

const ConfigJsonReader::Form &ConfigJsonReader::Form::probeIn()
{
    static const Form form{
        ProbeIn,
        QStringLiteral("The Probe In port"),
        {{Field::Index, Format::Index}, {Field::Signals, ConfigJson::Signals, signal}}};
    return form;
}

const ConfigJsonReader::Form &ConfigJsonReader::Form::probeOut()
{
    static const Form form{ProbeOut,
                           QStringLiteral("The Probe Out port"),
                           {{Field::Index, Format::Index},
                            {Field::InitialValue, Format::InitialValue},
                            {Field::Signals, ConfigJson::Signals, signal}}};
    return form;
}

const ConfigJsonReader::Form &ConfigJsonReader::Form::signal()
{
    static const Form form{Signal,
                           QStringLiteral("The signal"),
                           {{Field::Name, Format::Name},
                            {Field::DisplayName, Format::DisplayName},
                            {Field::Kind, Format::Kind},
                            {Field::Enabled, Format::Enabled},
                            {Field::Usable, Format::Usable},
                            {Field::Members, ConfigJson::Members, signal}}};
    return form;
}

QStringList ConfigJsonReader::Form::keys() const
{
    QStringList list;
    for (const Field &field : fields)
        list.append(QLatin1Char('"') + field.key + QLatin1Char('"'));
    return list;
}

ConfigJsonReader::ConfigJsonReader(const QByteArray &json)
    : m_parser(json)
{
}

ConfigJsonReader::~ConfigJsonReader() = default;

bool ConfigJsonReader::read()
{
    if (m_parser.parse(this))
        return true;
    if (m_error.isEmpty())
        m_error = m_parser.errorText();
    return false;
}

bool ConfigJsonReader::beginObject()
{
    countValue();
    const Form *form = expectedForm();
    if (!form)
        return refuseValue(QStringLiteral("an object"));
    if (int(m_levels.size()) == Format::MaximumDepth)
        return refuse(QStringLiteral("Members are nested deeper than %1 levels. Remove the inner "
                                     "ones.")
                          .arg(Format::MaximumDepth - Format::SignalDepth));
    create(*form);
    m_levels.push_back({form, m_parser.bytesRead()});
    return true;
}

/// The form of an object in this place, null when there can be none.
const ConfigJsonReader::Form *ConfigJsonReader::expectedForm() const
{
    if (m_levels.empty())
        return &Form::configuration();
    return m_levels.back().isInList() ? &m_levels.back().field->values() : nullptr;
}

/// Of a list, for the pointer in messages.
void ConfigJsonReader::countValue()
{
    if (!m_levels.empty() && m_levels.back().isInList())
        ++m_levels.back().values;
}

void ConfigJsonReader::create(const Form &form)
{
    switch (form.id) {
    case Form::Configuration:
        break;
    case Form::Core:
        m_cores.append(new TarnCore(0));
        break;
    case Form::ProbeIn:
        core()->addProbeIn(0);
        m_port = core()->probeIns.last();
        m_initialValue = nullptr;
        break;
    case Form::ProbeOut: {
        core()->addProbeOut(0);
        TARN::ProbeOut *port = core()->probeOuts.last();
        m_port = port;
        m_initialValue = &port->initialValue;
        break;
    }
    case Form::Signal: {
        QList<SignalItem> &list = m_signals.empty() ? m_port->signals : m_signals.back()->members;
        list.append(SignalItem());
        m_signals.push_back(&list.last());
        break;
    }
    }
}

bool ConfigJsonReader::key(const QString &key)
{
    Level &level = m_levels.back();
    const std::vector<Field> &fields = level.form->fields;
    const auto field = std::find_if(fields.cbegin(), fields.cend(),
                                    [&key](const Field &each) { return each.key == key; });
    level.field = field == fields.cend() ? nullptr : &*field;
    if (!level.field)
        return refuse(QStringLiteral("The key %1 is not known in this place. Remove it. Known: %2.")
                          .arg(shown(key), level.form->keys().join(QLatin1String(", "))));
    const unsigned bit = 1U << unsigned(field - fields.cbegin());
    if (level.known & bit)
        return refuse(QStringLiteral("The key \"%1\" occurs twice. Remove one.").arg(key));
    level.known |= bit;
    return true;
}

bool ConfigJsonReader::endObject()
{
    const Level level = m_levels.back();
    m_levels.pop_back();
    if (level.form->id == Form::Signal)
        m_signals.pop_back();
    if (level.known & 1U)
        return true;
    return refuse(QStringLiteral("%1 has no key \"%2\". Add it.")
                      .arg(level.form->name, level.form->fields.front().key),
                  level.begin);
}

bool ConfigJsonReader::beginList()
{
    countValue();
    if (expectedForm() || !m_levels.back().field->values)
        return refuseValue(QStringLiteral("a list"));
    m_levels.back().values = 0;
    return true;
}

bool ConfigJsonReader::endList()
{
    m_levels.back().values = -1;
    return true;
}

bool ConfigJsonReader::value(const JsonValue &value)
{
    countValue();
    if (expectedForm() || !take(value))
        return failed() ? false : refuseValue(found(value));
    return true;
}

/// The value of the current field. False when it may not have this one.
bool ConfigJsonReader::take(const JsonValue &value)
{
    const Level &level = m_levels.back();
    switch (level.field->id) {
    case Field::Version:
        return takeVersion(value);
    case Field::Index:
        return take(value, level.form->id == Form::Core ? &core()->index : &m_port->index);
    case Field::Module:
        return take(value, &core()->module);
    case Field::UserClock:
        return take(value, &core()->userClock);
    case Field::SyncUserClock:
        return take(value, &core()->syncUserClock);
    case Field::InitialValue:
        return take(value, m_initialValue);
    case Field::Name:
        return take(value, &m_signals.back()->name);
    case Field::DisplayName:
        return take(value, &m_signals.back()->displayName);
    case Field::Kind:
        return takeKind(value, &m_signals.back()->kind);
    case Field::Enabled:
        return take(value, &m_signals.back()->enabled);
    case Field::Usable:
        return take(value, &m_signals.back()->usable);
    case Field::Cores:
    case Field::ProbeIns:
    case Field::ProbeOuts:
    case Field::Signals:
    case Field::Members:
        break;
    }
    return false;
}

bool ConfigJsonReader::takeVersion(const JsonValue &value)
{
    if (value.kind != JsonValue::Text || value.text == Format::CurrentVersion)
        return value.kind == JsonValue::Text;
    const QString reason =
        Format::isNewerVersion(value.text)
            ? QStringLiteral(
                  "The form has the newer version %1; versions up to \"%2\" can be read. "
                  "Use a newer release of this program.")
            : QStringLiteral("The form has the unknown version %1 instead of \"%2\". Correct it.");
    return refuse(reason.arg(shown(value.text), Format::CurrentVersion));
}

bool ConfigJsonReader::take(const JsonValue &value, QString *text)
{
    if (value.kind == JsonValue::Text && !TARN::isXmlText(value.text))
        return refuse(QStringLiteral("The text %1 has a control character or another one that the "
                                     "file cannot hold. Remove it.")
                          .arg(shown(value.text)));
    *text = value.text;
    return value.kind == JsonValue::Text;
}

bool ConfigJsonReader::take(const JsonValue &value, qint32 *number)
{
    *number = qint32(value.number);
    return value.kind == JsonValue::WholeNumber && *number == value.number;
}

bool ConfigJsonReader::take(const JsonValue &value, bool *flag)
{
    *flag = value.flag;
    return value.kind == JsonValue::Flag;
}

bool ConfigJsonReader::takeKind(const JsonValue &value, int *kind)
{
    const bool isNet = value.text == Format::KindNet;
    *kind = isNet ? SignalItem::Net : SignalItem::Bus;
    return value.kind == JsonValue::Text && (isNet || value.text == Format::KindBus);
}

/// RFC 6901. No key of the form needs an escape.
QString ConfigJsonReader::pointer() const
{
    QString path;
    for (const Level &level : m_levels) {
        if (level.field)
            path += QLatin1Char('/') + level.field->key;
        if (level.values > 0)
            path += QLatin1Char('/') + QString::number(level.values - 1);
    }
    return path;
}

/// Ends the reading, after so many bytes of the document.
bool ConfigJsonReader::refuse(const QString &reason, std::size_t bytes)
{
    const QString path = pointer();
    const QString line = QString::number(m_parser.lineAfter(bytes));
    m_error = path.isEmpty() ? QStringLiteral("Line %1: %2").arg(line, reason)
                             : QStringLiteral("Line %1, %2: %3").arg(line, path, reason);
    return false;
}

bool ConfigJsonReader::refuse(const QString &reason)
{
    return refuse(reason, m_parser.bytesRead());
}

bool ConfigJsonReader::refuseValue(const QString &found)
{
    const QString allowed =
        expectedForm() ? QStringLiteral("an object in { }") : m_levels.back().field->allowed();
    return refuse(QStringLiteral("The value is %1. Allowed: %2.").arg(found, allowed));
}

TarnCore *ConfigJsonReader::core() const
{
    return m_cores.list().last();
}

} // namespace Tool
