// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef ORBEKEXTLIB_FIXNUMBER_H
#define ORBEKEXTLIB_FIXNUMBER_H

#include <QString>

/**
 * A decimal number with a fixed count of fraction places, such as an amount of money.
 *
 * The double is taken for the decimal number that people wrote: the shortest decimal text that reads back as the same
 * double. That text is rounded half away from zero, in integers, so that 1.005 with two places is 1.01, 0.285 is 0.29
 * and -2.5 without places is -3. Reentrant.
 */
class Q_DECL_EXPORT FixNumber
{
public:
    /**
     * Rounds @p number to the fraction places of @p scale: 1 for none, 10 for one, 100 for two, up to 1000000000 for
     * nine. Scale 0 counts as 1; a scale that is no power of ten counts as the next smaller one.
     * NaN is 0; a number whose scaled value does not fit 64 bits becomes the nearest one that does.
     */
    FixNumber(uint scale, double number);

    /** The number times its scale: 101 for 1.005 with scale 100. */
    qint64 value() const;

    /**
     * The number as text: "-", when the value is negative, at least one integer digit, and the decimal point with all
     * fraction places unless there are none. "-0.50" keeps its sign; what rounded to zero has none.
     * @p decimalPoint stands between the parts; a null character leaves them unparted.
     * @p groupSeparator stands between groups of three integer digits; a null character leaves them ungrouped.
     */
    QString toString(QChar decimalPoint, QChar groupSeparator) const;

private:
    qint64 m_value;
    int m_places;
};

#endif
