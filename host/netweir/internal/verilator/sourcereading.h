// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <netweir/internal/modules/sourceorder.h>
#include <netweir/internal/sources/designsources.h>
#include <netweir/internal/sources/preprocessedtext.h>
#include <netweir/internal/verilog/modulescan.h>

#include <QByteArrayList>
#include <QHash>
#include <QSet>
#include <QString>
#include <QStringList>

#include <memory>

namespace NETWEIR::Internal {

class ToolFolder;
class ToolProcess;

/// The sources behind the preprocessor, and what the scan finds in them.
class SourceReading
{
public:
    /// Sources and folder must live as long as this. The macro of the tool is defined only with
    /// @p asTheTool.
    SourceReading(const DesignSources &sources, const SourceWords &words, const ToolFolder &folder,
                  bool asTheTool);

    /// To be called in front of the preprocessor. False when the folder cannot be written.
    bool prepare(QStringList *messages);
    QStringList preprocessorArguments() const;

    /// Takes what the preprocessor wrote and says. False when that is no text to go on with.
    bool takeTexts(const ToolProcess &process, QStringList *messages);

    /// The preprocessor found faults in code that marks hide; nobody is told of them.
    bool hasHiddenFaults() const { return m_hasHiddenFaults; }

    /// Finds modules and tops, and what cannot be elaborated.
    void scan(QStringList *messages);

    const PreprocessedText &text() const { return *m_text; }
    const SourceOrder &order() const { return *m_order; }
    /// Names of units and types.
    QSet<QByteArray> knownNames() const;
    const ModuleScan &scanned() const { return m_scan; }
    const QStringList &tops() const { return m_tops; }
    const QStringList &modules() const { return m_modules; }

    /// The module to be elaborated: the only top or, in texts that the scan does not understand,
    /// any one, so that the elaborator says what is wrong. Null when there is nothing to do.
    const QString &chosenTop() const { return m_chosenTop; }
    bool topInstantiatesItself() const { return m_topInstantiatesItself; }

    /// See ReadOptions.
    const QHash<QString, QSet<QString>> &tiedNets() const { return m_tiedNets; }
    /// Instantiations of modules that neither sources nor libraries define.
    const QVector<Instantiation> &unknownInstantiations() const { return m_unknown; }
    /// The same when nobody defines @p modules either.
    QVector<Instantiation> unknownWithout(const QSet<QByteArray> &modules) const;
    /// Modules and packages that a library folder may have a file for.
    const QByteArrayList &missingNames() const { return m_missing; }

private:
    void addMessages(const ToolProcess &process, QStringList *messages);
    void scanTexts();

    const DesignSources &m_sources;
    SourceWords m_words;
    bool m_asTheTool;
    const ToolFolder &m_folder;
    bool m_hasHiddenFaults = false;
    std::unique_ptr<PreprocessedText> m_text;
    std::unique_ptr<SourceOrder> m_order;
    ModuleScan m_scan;
    QStringList m_tops;
    QStringList m_modules;
    QString m_chosenTop;
    bool m_topInstantiatesItself = false;
    QHash<QString, QSet<QString>> m_tiedNets;
    QVector<Instantiation> m_unknown;
    QByteArrayList m_missing;
};

} // namespace NETWEIR::Internal
