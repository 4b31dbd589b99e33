// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <netweir/internal/verilog/modulescan.h>

#include <QHash>
#include <QPair>
#include <QSet>
#include <QString>

namespace NETWEIR::Internal {

/// Modules in place of those that no file defines, so that the elaborator accepts the design.
///
/// The device's primitives have their real interface. Of every other module nothing is known but
/// how it is used: each pin becomes an input, each parameter gets the default 0. The inputs are
/// vectors, wide enough that the elaborator keeps all of what is connected. In an array of
/// instances the widths would have to match, so a single instance with the same connections takes
/// the place of the array.
class Stubs
{
public:
    /// @p instantiations are those of unknown modules in the scan @p scan.
    Stubs(const QVector<Instantiation> &instantiations, const ModuleScan &scan);

    bool isEmpty() const { return m_unknown.isEmpty() && m_primitives.isEmpty(); }

    /// Verilog text of all of them, unknown modules in the order of their first use.
    QByteArray text() const;

    /// The text number @p index of the design with single instances in place of arrays of unknown
    /// modules. Everything else stays where it was.
    QByteArray withoutArrays(int index, const QByteArray &text) const;

    QSet<QString> unknownModules() const;
    const QSet<QString> &primitiveModules() const { return m_primitives; }

    /// Adds the pin or parameter @p name, which the elaborator misses in the instantiation at
    /// @p line. False when no unknown module is instantiated there, or it already has the name.
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
    QHash<int, QVector<TextRange>> m_ranges; ///< Of arrays of unknown modules, by text.
    QSet<QString> m_primitives;
};

} // namespace NETWEIR::Internal
