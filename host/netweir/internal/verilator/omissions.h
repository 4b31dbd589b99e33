// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "toolmessages.h"

#include <netweir/internal/ground/messages.h>
#include <netweir/internal/verilog/textitems.h>
#include <netweir/internal/xml/readoptions.h>

#include <QHash>
#include <QMap>
#include <QPair>
#include <QSet>
#include <QStringList>
#include <QVector>

#include <map>
#include <memory>

namespace NETWEIR::Internal {

class PreprocessedText;

/// The parts of a design that are left out because the elaborator cannot read them.
///
/// Leaves out the smallest item around a place first and, if that is not enough, the next larger
/// one. Lines keep their numbers.
class Omissions
{
public:
    /// @p isSystemVerilog tells the language of each text. The modules @p roots always stay. @p
    /// text must outlive this object.
    Omissions(const PreprocessedText &text, const QVector<bool> &isSystemVerilog,
              const QSet<QByteArray> &roots);
    ~Omissions();

    const QVector<QByteArray> &texts() const { return m_texts; }
    /// Modules that are left out as a whole.
    const QSet<QByteArray> &modules() const { return m_modules; }
    /// The writes of omitted items, by module.
    const QHash<QString, QVector<OmittedWrite>> &writes() const { return m_writes; }

    /// Leaves out the items around the places of those @p messages that are not errors of the
    /// source. Returns one message per item, none when there is nothing new.
    QStringList leaveOut(const QVector<ToolMessage> &messages);

private:
    enum class Cause { Fault, Unreadable, Syntax, Other };

    Cause causeOf(const ToolMessage &message, bool anySyntax) const;
    bool mayGo(int text, const TextItem &item, Cause cause);
    void remove(int text, const TextItem &item, const QByteArray &reason);
    void removeUsers();
    void removeUsers(int text, const QVector<TextItem> &declared);
    void noteWrites(int text, const TextItem &item);
    TextItems &itemsOf(int text);

    const PreprocessedText &m_text;
    QVector<QByteArray> m_texts;
    QVector<bool> m_isSystemVerilog;
    QSet<QByteArray> m_roots;
    std::map<int, std::unique_ptr<TextItems>> m_items; ///< Items of the original texts.
    QSet<QPair<int, int>> m_gone;                      ///< Text and begin of the omitted items.
    QSet<QByteArray> m_names;                          ///< Names that omitted items declared.
    QSet<QByteArray> m_modules;
    QHash<QString, QVector<OmittedWrite>> m_writes;
    QMap<int, QVector<TextItem>> m_removed; ///< Omitted items whose users remain, by text.
    QStringList m_found;
};

} // namespace NETWEIR::Internal
