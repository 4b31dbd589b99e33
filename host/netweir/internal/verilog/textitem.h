// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <netweir/internal/ground/textrange.h>

#include <QByteArray>

namespace NETWEIR::Internal {

/// A part of a text that can be left out without affecting the syntax of the rest.
struct TextItem
{
    /// In the order in which items are left out: items that are not hardware come first.
    enum Kind {
        Assertion,
        Property,
        Sequence,
        Covergroup,
        Clocking, ///< "default disable iff" too.
        Let,
        Checker,
        Constraint, ///< Of a class.
        Config,
        Class,
        Statement, ///< A statement that uses one of those above.
        Process,
        Module,     ///< Or a program.
        Assignment, ///< A continuous assignment in a module that has to stay.
        OtherUnit   ///< An interface, which nothing can replace.
    };

    bool isVerification() const { return kind <= Statement; }

    Kind kind = OtherUnit;
    TextRange range;
    int line = 0;
    int keyword = 0; ///< Offset of its first word after labels and attributes.
    QByteArray name; ///< The name that it declares, if any.
    QByteArray unit; ///< The module that contains it, or its own name for a module; empty outside
                     ///< of modules.
};

} // namespace NETWEIR::Internal
