// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_FINDING_H
#define PRINTSRV_FINDING_H

#include "lintcode.h"

#include <QHash>
#include <QPair>
#include <QVector>

#include <set>

namespace printsrv {

/** Something that is wrong with a template. */
struct Finding
{
    ELintCode code = ELintCode::UnknownAttribute;
    int line = 1; /**< Of the template file, from 1. */
    int column = 1; /**< Character of the line, from 1. */
    QString text; /**< What is wrong and, where it is not plain, how to mend it. */
};

/** What a finding is about: an offset of the template, and which of the things that came of it. */
struct Spot
{
    Spot(int offsetInTemplate, qint64 detailThere = 0)
        : offset(offsetInTemplate)
        , detail(detailThere)
    {
    }

    int offset;
    qint64 detail; /**< The number of an entry, a character; 0 where one finding tells all. */
};

/** Collects findings at offsets of a template; of those of one code at one spot the first one counts. */
class Findings
{
public:
    /** Of one code at one offset; further ones are only counted. */
    static constexpr int MostAtOnePlace = 10;

    /** A finding by its offset. */
    struct Found
    {
        ELintCode code;
        int offset;
        QString text;
    };

    void add(ELintCode code, Spot spot, const QString &text);

    /** As add(); @p makeText is called for a finding that counts only. */
    template<typename MakeText>
    void addMade(ELintCode code, Spot spot, MakeText makeText)
    {
        if (claim(code, spot)) {
            m_found.append({code, spot.offset, makeText()});
        }
    }

    /** True when there is a finding of this code at @p offset. */
    bool has(ELintCode code, int offset) const;

    /** All findings, sorted by their offset. */
    QVector<Found> sorted() const;

private:
    bool claim(ELintCode code, Spot spot);

    QVector<Found> m_found;
    QHash<qint64, int> m_counts; // by code and offset
    std::set<QPair<qint64, qint64>> m_spots; // no hash: that of a pair collides for millions of offsets
};

} // namespace printsrv

#endif
