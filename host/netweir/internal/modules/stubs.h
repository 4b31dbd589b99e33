// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <netweir/internal/verilog/modulescan.h>

#include <QHash>
#include <QPair>
#include <QSet>
#include <QString>

namespace NETWEIR::Internal {

/// The width of the inputs of stubs. Wider connections that consist of parts lose their upper
/// parts. Each constant on a pin costs the elaborator this many bits.
constexpr char PinRange[] = "[8191:0]";

/// The name as an escaped one, because it may be a keyword in another version of the language.
QByteArray escapedName(const QByteArray &name);

/// Modules in place of those that no file defines, so that the elaborator accepts the design.
///
/// Device primitives have their real interface. For any other module only its uses are known: each
/// pin becomes an input, and each parameter gets the default 0. The inputs are vectors that are
/// wide enough for the elaborator to keep the whole connection. In an array of instances the widths
/// would have to match, so a single instance with the same connections replaces the array.
class Stubs
{
public:
    /// @p instantiations are the instantiations of unknown modules in @p scan.
    Stubs(const QVector<Instantiation> &instantiations, const ModuleScan &scan);

    bool isEmpty() const { return m_unknown.isEmpty() && m_primitives.isEmpty(); }

    /// The Verilog text of all stubs, unknown modules in the order of their first use.
    QByteArray text() const;

    /// The text @p index of the design, in which single instances replace arrays of unknown
    /// modules. Everything else keeps its position.
    QByteArray withoutArrays(int index, const QByteArray &text) const;

    QSet<QString> unknownModules() const;
    const QSet<QString> &primitiveModules() const { return m_primitives; }

    /// Adds the pin or parameter @p name, which the elaborator misses in the instantiation at @p
    /// line. False when no unknown module is instantiated there or the module already has it.
    bool addMissing(const TextLine &line, const QByteArray &name, bool isParameter);

    /// Makes a parameter of the unknown module instantiated at @p line a type: @p name, or
    /// "__paramNumber3" for the third. False when no unknown module is instantiated there, or the
    /// parameter is a type already.
    bool addType(const TextLine &line, const QByteArray &name);

    /// An unknown module is instantiated at @p line.
    bool isUnknownAt(const TextLine &line) const;

private:
    /// Names in the order of their first use.
    struct NameList
    {
        void add(const QByteArray &name);

        QByteArrayList names;
        QSet<QByteArray> known;
        int positional = 0;
    };

    struct Stub
    {
        NameList parameters;
        NameList pins;
        QSet<QByteArray> types; ///< Parameters that are types.
    };

    void add(const Instantiation &instantiation);
    QSet<QByteArray> modulesAt(const TextLine &line) const;
    void addDefparams(const ModuleScan &scan);
    QByteArrayList parameterDeclarations(const Stub &stub) const;

    QByteArrayList m_unknown; ///< In the order of their first use.
    QHash<QByteArray, Stub> m_stubs;
    /// Unknown modules by text and line of their instantiations, and by the names of instances.
    QHash<QPair<int, int>, QSet<QByteArray>> m_modulesAt;
    QHash<QByteArray, QSet<QByteArray>> m_modulesOf;
    QHash<int, QVector<TextRange>> m_ranges; ///< Ranges of arrays of unknown modules, by text.
    QSet<QString> m_primitives;
};

} // namespace NETWEIR::Internal
