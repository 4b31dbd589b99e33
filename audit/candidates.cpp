// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "candidates.h"

#include "designnames.h"

namespace TARN {

class CandidateSearch::Private
{
};

CandidateSearch::CandidateSearch(const DesignNames &names)
    : d(std::make_unique<Private>())
{
    Q_UNUSED(names)
}

CandidateSearch::~CandidateSearch() = default;

void CandidateSearch::setMissing(const QVector<MissingName> &missing)
{
    Q_UNUSED(missing)
}

bool CandidateSearch::step(std::chrono::microseconds budget)
{
    Q_UNUSED(budget)
    return true;
}

QVector<Replacement> CandidateSearch::candidates(const QString &name, ProbeType type) const
{
    Q_UNUSED(name)
    Q_UNUSED(type)
    return {};
}

QVector<Replacement> CandidateSearch::prefixChanges() const
{
    return {};
}

} // namespace TARN
