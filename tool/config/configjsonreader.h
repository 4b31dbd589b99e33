// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "jsonparser.h"

#include <tool/configfile.h>

#include <QByteArray>
#include <QString>

#include <cstddef>
#include <utility>
#include <vector>

namespace TARN {
struct ProbeIn;
struct SignalItem;
} // namespace TARN

namespace Tool {

/// Reads the JSON form of a configuration, piece by piece as the parser finds it. Refuses whatever
/// the form does not know, so that nothing of the document is lost when it becomes a file.
///
/// Owns the cores until takeCores().
class ConfigJsonReader final : private JsonHandler
{
public:
    /// Borrows @p json.
    explicit ConfigJsonReader(const QByteArray &json);
    ~ConfigJsonReader() override;

    /// Reads the whole document, once.
    bool read();

    /// The cores in the order of the document.
    OwnedCores takeCores() { return std::move(m_cores); }

    /// What is wrong, where, and what to do about it; empty after success. The place is a line with
    /// a column or, of the content, with a JSON pointer.
    QString errorText() const { return m_error; }

private:
    struct Field;
    struct Form;

    /// An object that is open.
    struct Level
    {
        const Form *form;
        std::size_t begin;            ///< Bytes of the document up to its brace.
        const Field *field = nullptr; ///< The current one.
        int values = -1;              ///< So far, in the list of the field; -1 outside a list.
        unsigned known = 0;           ///< A bit for each field of the form that occurred.

        bool isInList() const { return values >= 0; }
    };

    // JsonHandler
    bool beginObject() override;
    bool key(const QString &key) override;
    bool endObject() override;
    bool beginList() override;
    bool endList() override;
    bool value(const JsonValue &value) override;

    const Form *expectedForm() const;
    void countValue();
    void create(const Form &form);
    TARN::TarnCore *core() const;

    bool take(const JsonValue &value);
    bool takeVersion(const JsonValue &value);
    static bool takeKind(const JsonValue &value, int *kind);
    bool take(const JsonValue &value, QString *text);
    static bool take(const JsonValue &value, qint32 *number);
    static bool take(const JsonValue &value, bool *flag);

    bool failed() const { return !m_error.isEmpty(); }
    QString pointer() const;
    bool refuse(const QString &reason, std::size_t bytes);
    bool refuse(const QString &reason);
    bool refuseValue(const QString &found);

    JsonParser m_parser;
    std::vector<Level> m_levels;
    OwnedCores m_cores;
    TARN::ProbeIn *m_port = nullptr;           ///< The current one, of the last core.
    QString *m_initialValue = nullptr;         ///< Of that port.
    std::vector<TARN::SignalItem *> m_signals; ///< The current one and those that it is in.
    QString m_error;
};

} // namespace Tool
