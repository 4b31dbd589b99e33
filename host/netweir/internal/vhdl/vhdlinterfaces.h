// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "vhdlfile.h"

namespace NETWEIR::Internal {

class VhdlReader;

/// Reads "generic (...);", "port (...);" and the maps of a block, as far as they are here. Appends
/// the port map to @p portMap if that is not null.
void readVhdlInterface(VhdlReader *reader, VhdlInterface *interface,
                       QVector<VhdlAssociation> *portMap = nullptr);

/// Reads "(item; item)"; nothing where no parenthesis is.
QVector<VhdlInterfaceItem> readVhdlItems(VhdlReader *reader);

/// Reads "(formal => actual, ...)"; nothing where no parenthesis is.
QVector<VhdlAssociation> readVhdlAssociations(VhdlReader *reader);

/// Reads the rest of an instantiation behind "label :", up to the semicolon. Returns false when it
/// is another statement, with the reader anywhere within it.
bool readVhdlInstance(VhdlReader *reader, VhdlInstance *instance);

/// Reads "u1, u2" or "all" up to the colon.
QByteArrayList takeVhdlLabels(VhdlReader *reader);

/// Reads a binding from "for" up to the semicolon behind its entity and maps, or up to whatever
/// follows the component when no entity is bound. The caller handles "end for;".
VhdlBinding readVhdlBinding(VhdlReader *reader);

} // namespace NETWEIR::Internal
