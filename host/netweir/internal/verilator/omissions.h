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

#include <functional>
#include <map>
#include <memory>

namespace NETWEIR::Internal {

/// What is left out of the texts of a design, because the elaborator cannot read it.
///
/// The smallest item around a place goes first; when that was not enough, the next one around it.
/// Lines stay where they are.
class Omissions
{
public:
    using LineMap = std::function<TextLine(const ToolMessage &)>;
    using PlaceOfLine = std::function<Place(const TextLine &)>;

    /// @p isSystemVerilog tells the language of each text. The module @p top always stays.
    Omissions(const QVector<QByteArray> &texts, const QVector<bool> &isSystemVerilog,
              const QByteArray &top);
    ~Omissions();

    const QVector<QByteArray> &texts() const { return m_texts; }
    /// Modules that have gone whole.
    const QSet<QByteArray> &modules() const { return m_modules; }
    /// What items have written that are gone, by module.
    const QHash<QString, QVector<OmittedWrite>> &writes() const { return m_writes; }

    /// Leaves out what stands around the places of @p messages that are no fault of the source.
    /// Returns a message for each item, none when there was nothing new.
    QStringList leaveOut(const QVector<ToolMessage> &messages, const LineMap &lineOf,
                         const PlaceOfLine &placeOf);

private:
    enum class Cause { Fault, Unreadable, Syntax, Other };

    Cause causeOf(const ToolMessage &message, bool anySyntax) const;
    bool mayGo(int text, const TextItem &item, Cause cause);
    void remove(int text, const TextItem &item, const QByteArray &reason);
    void removeUsers();
    void removeUsers(int text, const QVector<TextItem> &declared);
    void noteWrites(int text, const TextItem &item);
    TextItems &itemsOf(int text);

    QVector<QByteArray> m_texts;
    QVector<bool> m_isSystemVerilog;
    QByteArray m_top;
    std::map<int, std::unique_ptr<TextItems>> m_items; ///< Of the original texts.
    QSet<QPair<int, int>> m_gone;                      ///< Text and begin of items.
    QSet<QByteArray> m_names;                          ///< What items declared that are gone.
    QSet<QByteArray> m_modules;
    QHash<QString, QVector<OmittedWrite>> m_writes;
    QMap<int, QVector<TextItem>> m_removed; ///< Items whose users are still there, by text.
    QStringList m_found;
    PlaceOfLine m_placeOf;
};

} // namespace NETWEIR::Internal
