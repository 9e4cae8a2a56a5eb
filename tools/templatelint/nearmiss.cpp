// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "nearmiss.h"

#include <QVector>

#include <algorithm>
#include <numeric>

namespace printsrv {

namespace {

constexpr int MostNames = 1000;
constexpr int LongestName = 64;
constexpr int ShortestPrefix = 3;

/** How many letters must be put in, taken out, changed or swapped with the next one. */
int distance(const QString &a, const QString &b)
{
    QVector<int> before;
    QVector<int> last(b.size() + 1);
    std::iota(last.begin(), last.end(), 0);
    for (int i = 1; i <= a.size(); ++i) {
        QVector<int> row(b.size() + 1, i);
        for (int j = 1; j <= b.size(); ++j) {
            const int change = a.at(i - 1) == b.at(j - 1) ? 0 : 1;
            row[j] = std::min({last.at(j) + 1, row.at(j - 1) + 1, last.at(j - 1) + change});
            const bool isSwapped = i > 1 && j > 1 && a.at(i - 1) == b.at(j - 2) && a.at(i - 2) == b.at(j - 1);
            row[j] = isSwapped ? std::min(row.at(j), before.at(j - 2) + 1) : row.at(j);
        }
        before = last;
        last = row;
    }
    return last.last();
}

int commonPrefix(const QString &a, const QString &b)
{
    return int(std::mismatch(a.begin(), a.begin() + std::min(a.size(), b.size()), b.begin()).first - a.begin());
}

/** The smaller the more alike; -1 for names that are not alike enough. */
int unlikeness(const QString &name, const QString &other, ELikeness likeness)
{
    const int edits = distance(name, other);
    const int length = std::max(name.size(), other.size());
    if (edits <= (length < 5 ? 1 : 2)) {
        return edits;
    }
    if (likeness == ELikeness::Typo) {
        return -1;
    }
    const int prefix = commonPrefix(name, other);
    const bool isAlike
        = edits * 2 <= length || prefix >= ShortestPrefix || other.contains(name) || name.contains(other);
    return isAlike ? LongestName + edits - prefix * 4 : -1;
}

} // namespace

QString nearMiss(const QString &name, const QStringList &known, ELikeness likeness)
{
    const QString wanted = name.trimmed().toUpper();
    if (wanted.isEmpty() || wanted.size() > LongestName) {
        return {};
    }
    QString best;
    int least = -1;
    const QStringList others = known.mid(0, MostNames);
    for (const QString &other : others) {
        const int score = other.size() > LongestName ? -1 : unlikeness(wanted, other.toUpper(), likeness);
        if (score >= 0 && (least < 0 || score < least)) {
            least = score;
            best = other;
        }
    }
    return best;
}

} // namespace printsrv
