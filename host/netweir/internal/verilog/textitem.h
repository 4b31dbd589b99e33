// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <netweir/internal/ground/textrange.h>

#include <QByteArray>

namespace NETWEIR::Internal {

/// A part of a text without which the rest can be read.
struct TextItem
{
    /// In the order in which items are given up: what is no hardware comes first.
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
        Statement, ///< Uses one of those above.
        Process,
        Module,     ///< Or a program.
        Assignment, ///< A continuous one, where the module around it has to stay.
        OtherUnit   ///< An interface, for which nothing can stand in.
    };

    bool isVerification() const { return kind <= Statement; }

    Kind kind = OtherUnit;
    TextRange range;
    int line = 0;
    int keyword = 0; ///< Offset of the word that it begins with, labels and attributes apart.
    QByteArray name; ///< What it declares, if anything.
    QByteArray unit; ///< The module around it, or its own name if it is one; empty outside.
};

} // namespace NETWEIR::Internal
