// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "rtlnetbus.h"

#include <netweir/internal/store/netname.h>

namespace NETWEIR {

Internal::NetName RtlNetBus::parts() const
{
    return {m_prefix, m_name, Internal::RangeText(m_left, m_right)};
}

QString RtlNetBus::BusName() const
{
    return parts().local();
}

QString RtlNetBus::fullBusName() const
{
    return parts().full();
}

int RtlNetBus::copyFullBusName(QString *name, const RtlNetBus *before) const
{
    return parts().copyFull(name, before ? before->m_prefix : nullptr);
}

} // namespace NETWEIR
