// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_NEARMISS_H
#define PRINTSRV_NEARMISS_H

#include <QStringList>

namespace printsrv {

/** How much like a name another one must be. */
enum class ELikeness {
    Typo, /**< One or two letters differ, or only their case: it was hardly meant as it stands. */
    Alike, /**< It begins like the other, or shares most of its letters: worth a hint. */
};

/**
 * The name of @p known that is most like @p name; an empty text when none is.
 *
 * Only the first 1,000 names are looked at and only names of at most 64 characters, so that the time stays in
 * proportion to the names asked for.
 */
QString nearMiss(const QString &name, const QStringList &known, ELikeness likeness);

} // namespace printsrv

#endif
