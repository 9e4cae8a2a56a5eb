// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "finding.h"

#include <algorithm>
#include <tuple>

namespace printsrv {

namespace {

qint64 placeKey(ELintCode code, int offset)
{
    return qint64(offset) << 8 | qint64(code);
}

} // namespace

void Findings::add(ELintCode code, Spot spot, const QString &text)
{
    addMade(code, spot, [&text] { return text; });
}

bool Findings::has(ELintCode code, int offset) const
{
    return m_counts.contains(placeKey(code, offset));
}

QVector<Findings::Found> Findings::sorted() const
{
    const auto isBefore = [](const Found &a, const Found &b) {
        return std::tie(a.offset, a.code) < std::tie(b.offset, b.code);
    };
    QVector<Found> found = m_found;
    std::stable_sort(found.begin(), found.end(), isBefore);
    for (int i = 0; i < found.size(); ++i) {
        Found &one = found[i];
        const bool isLast = i + 1 == found.size() || isBefore(one, found.at(i + 1));
        const int more = isLast ? m_counts.value(placeKey(one.code, one.offset)) - MostAtOnePlace : 0;
        if (more > 0) {
            one.text += QStringLiteral("; %1 more like it are not listed").arg(more);
        }
    }
    return found;
}

/** True when the spot is a new one and there is room for it. */
bool Findings::claim(ELintCode code, Spot spot)
{
    const qint64 place = placeKey(code, spot.offset);
    if (!m_spots.insert({place, spot.detail}).second) {
        return false;
    }
    return ++m_counts[place] <= MostAtOnePlace;
}

} // namespace printsrv
