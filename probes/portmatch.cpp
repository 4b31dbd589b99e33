// SPDX-FileCopyrightText: The TARN Inserter authors
// SPDX-License-Identifier: Apache-2.0
#include "portmatch.h"

#include <algorithm>

namespace TARN {

namespace {

/// Matches what lies between matched ports in pairs.
void matchGaps(QVector<int> *sources, int former)
{
    int next = 0; // The first former port that is still free.
    for (int k = 0; k < sources->size(); ++k) {
        if (sources->at(k) != -1) {
            next = sources->at(k) + 1;
            continue;
        }
        const auto taken = std::find_if(sources->cbegin() + k, sources->cend(),
                                        [](int source) { return source != -1; });
        if (next < (taken == sources->cend() ? former : *taken))
            (*sources)[k] = next++;
    }
}

} // namespace

QVector<int> matchPorts(int former, int now, const std::function<bool(int, int)> &same)
{
    QVector<int> sources(now, -1);
    const int common = std::min(former, now);
    int front = 0;
    while (front < common && same(front, front)) {
        sources[front] = front;
        ++front;
    }
    int back = 0;
    while (back < common - front && same(former - 1 - back, now - 1 - back)) {
        sources[now - 1 - back] = former - 1 - back;
        ++back;
    }
    int first = front; // The first port that may still be matched.
    for (int i = front; i < former - back; ++i) {
        int k = first;
        while (k < now - back && !same(i, k))
            ++k;
        if (k < now - back) {
            sources[k] = i;
            first = k + 1;
        }
    }
    matchGaps(&sources, former);
    return sources;
}

} // namespace TARN
