// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "rtlnet.h"

#include <netweir/internal/store/netname.h>

namespace NETWEIR {

Internal::NetName RtlNet::parts() const
{
    return {m_prefix, *m_name, m_isBit ? Internal::RangeText(m_index) : Internal::RangeText()};
}

QString RtlNet::name() const
{
    return parts().local();
}

QString RtlNet::fullPathName() const
{
    return parts().full();
}

int RtlNet::copyFullPathName(QString *name, const RtlNet *before) const
{
    return parts().copyFull(name, before ? before->m_prefix : nullptr);
}

} // namespace NETWEIR
