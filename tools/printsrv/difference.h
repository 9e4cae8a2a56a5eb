// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_DIFFERENCE_H
#define PRINTSRV_DIFFERENCE_H

#include <QImage>
#include <QString>

namespace printsrv {

/**
 * The lines in which two texts differ, side by side in @p columns, each difference with the line before and behind it;
 * empty for equal texts.
 *
 * Each row has the number of the expected line, that line, "|" for changed, "<" for gone or ">" for new, and the line
 * there is now. Lines that do not fit go on in the next row. In lines that differ blanks at the end are dots, and
 * control characters are shown as their signs.
 */
QString textDifference(const QString &expected, const QString &actual, int columns);

/** How many dots differ; those of the part that one picture has and the other lacks count where they are black. */
qint64 differentDots(const QImage &expected, const QImage &actual);

/** Both pictures in one: black where both are, red where only the expected one is, blue where only the other one is. */
QImage pictureDifference(const QImage &expected, const QImage &actual);

} // namespace printsrv

#endif
