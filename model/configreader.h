// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "configformat.h"
#include "configlines.h"
#include "guardedinput.h"

#include <QCoreApplication>
#include <QList>
#include <QString>
#include <QXmlStreamReader>

#include <memory>
#include <utility>
#include <vector>

namespace TARN {

class TarnCore;
struct ProbeIn;
struct SignalItem;

/// Reads a configuration file and refuses everything that the format does not know, so that no
/// content is lost when the file is written again.
///
/// Owns the cores until takeCores(). Time and memory grow with the size of the file; members are
/// read recursively down to ConfigFormat::MaximumDepth.
class ConfigReader
{
    Q_DECLARE_TR_FUNCTIONS(TARN::ConfigReader)

public:
    /// @p device is open for reading, at its start, and outlives the reader.
    explicit ConfigReader(QIODevice *device);
    ~ConfigReader();

    /// Reads the whole document, once. On failure there are no cores.
    bool read();

    /// The cores in the order of the file; the caller owns them.
    QList<TarnCore *> takeCores();

    /// On which lines these cores and what belongs to them begin.
    ConfigLines takeLines() { return std::move(m_lines); }

    /// What is wrong and what to do about it, with line and column; empty after success.
    QString errorText() const { return m_error; }

private:
    void readDocument();
    void readVersion();
    void readCore();
    void readCoreAttributes(TarnCore *core);
    void readPort(ProbeIn *port, QString *initialValue);
    void readSignal(SignalItem *signal);
    void shareName(QString *name);

    bool nextElement();
    void checkEncoding();
    void checkCharacters();
    bool isElement(const QString &name) const { return m_xml.qualifiedName() == name; }
    QXmlStreamAttributes attributes(const QString &required);

    void take(const QXmlStreamAttribute &attribute, QString *text);
    void take(const QXmlStreamAttribute &attribute, qint32 *number);
    void take(const QXmlStreamAttribute &attribute, bool *flag);
    void takeKind(const QXmlStreamAttribute &attribute, int *kind);

    bool failed() const { return !m_error.isEmpty(); }
    void refuse(const QString &reason);
    QString inputError() const;
    void refuseElement();
    void refuseAttributes();
    void refuseAttribute(const QXmlStreamAttribute &attribute);
    void refuseValue(const QXmlStreamAttribute &attribute, const QString &expected);

    const qint64 m_size;
    GuardedInput m_input;
    QXmlStreamReader m_xml;
    std::vector<std::unique_ptr<TarnCore>> m_cores;
    ConfigLines m_lines;
    std::vector<QString> m_names; ///< Of signals, each where its hash says, the last one stays.
    int m_lastCount = 0;          ///< Of signals in a port. The next one is likely to have as many.
    int m_line = 0;               ///< On which the tag of the current element begins.
    int m_depth = 0;
    QString m_error;
};

} // namespace TARN
