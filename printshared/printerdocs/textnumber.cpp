// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "textnumber.h"

namespace printsrv {

namespace {

// Longer digit strings (card numbers, fiscal codes) stay text and lose no digit in a conversion.
constexpr int MaxIntegerLength = 18;
constexpr int MaxDoubleLength = 15;

/** False for most texts that are no number, without the cost of three conversions that fail. */
bool mayBeNumber(const QString &text)
{
    const auto first = std::find_if_not(text.cbegin(), text.cend(), [](QChar c) { return c.isSpace(); });
    if (first == text.cend()) {
        return false;
    }
    const ushort code = first->unicode();
    // Besides digits, sign and point: the minus sign of typesetters, "inf" and "nan" begin a number to Qt.
    return (code >= '0' && code <= '9') || QStringView(u"+-\u2212.,iInN").contains(*first);
}

} // namespace

QVariant numberFromText(const QString &text)
{
    if (text.size() > MaxIntegerLength || !mayBeNumber(text)) {
        return {};
    }
    bool isNumber = false;
    const qint64 integer = text.toLongLong(&isNumber);
    if (isNumber) {
        return integer;
    }
    if (text.size() > MaxDoubleLength) {
        return {};
    }
    double number = text.toDouble(&isNumber);
    if (!isNumber) {
        QString withPoint = text;
        number = withPoint.replace(QLatin1Char(','), QLatin1Char('.')).toDouble(&isNumber);
    }
    return isNumber ? QVariant(number) : QVariant();
}

} // namespace printsrv
