// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "fixnumber.h"

#include <array>
#include <charconv>
#include <cmath>
#include <limits>

namespace {

constexpr int GroupDigits = 3;
constexpr int MaximumPowerOfTen = 19; // the largest one in 64 bits
constexpr quint64 LargestPositive = std::numeric_limits<qint64>::max();
constexpr quint64 LargestNegative = LargestPositive + 1;

constexpr auto PowersOfTen = [] {
    std::array<quint64, MaximumPowerOfTen + 1> powers{1};
    for (size_t i = 1; i < powers.size(); ++i) {
        powers[i] = powers[i - 1] * 10;
    }
    return powers;
}();

// A magnitude as digits × 10^exponent, exactly; a double has at most 17 digits, so 64 bits hold them.
struct Decimal
{
    quint64 digits = 0;
    int exponent = 0;
};

Decimal shortestDecimal(double magnitude)
{
    std::array<char, 32> text; // "1.7976931348623157e+308" is the longest
    const auto end
        = std::to_chars(text.data(), text.data() + text.size(), magnitude, std::chars_format::scientific).ptr;
    Decimal decimal;
    const char *at = text.data();
    int fractionDigits = 0;
    for (bool isFraction = false; *at != 'e'; ++at) {
        if (*at == '.') {
            isFraction = true;
            continue;
        }
        decimal.digits = decimal.digits * 10 + static_cast<quint64>(*at - '0');
        fractionDigits += isFraction ? 1 : 0;
    }
    at += at[1] == '+' ? 2 : 1; // from_chars knows no plus sign
    std::from_chars(at, end, decimal.exponent);
    decimal.exponent -= fractionDigits;
    return decimal;
}

quint64 scaledUp(quint64 digits, int exponent, quint64 limit)
{
    if (digits == 0) {
        return 0;
    }
    if (exponent > MaximumPowerOfTen) {
        return limit;
    }
    const quint64 power = PowersOfTen[static_cast<size_t>(exponent)];
    return digits > limit / power ? limit : digits * power;
}

quint64 roundedDown(quint64 digits, int places)
{
    if (places >= MaximumPowerOfTen) { // 17 digits are less than half of 10^19
        return 0;
    }
    const quint64 divisor = PowersOfTen[static_cast<size_t>(places)];
    return digits / divisor + (digits % divisor >= divisor / 2 ? 1 : 0);
}

quint64 scaledMagnitude(double magnitude, int places, quint64 limit)
{
    if (std::isinf(magnitude)) {
        return limit;
    }
    const Decimal decimal = shortestDecimal(magnitude);
    const int exponent = decimal.exponent + places;
    return exponent >= 0 ? scaledUp(decimal.digits, exponent, limit) : roundedDown(decimal.digits, -exponent);
}

qint64 scaledValue(double number, int places)
{
    if (std::isnan(number)) {
        return 0;
    }
    if (!std::signbit(number)) {
        return static_cast<qint64>(scaledMagnitude(number, places, LargestPositive));
    }
    const quint64 magnitude = scaledMagnitude(-number, places, LargestNegative);
    return static_cast<qint64>(0 - magnitude);
}

int placesOf(uint scale)
{
    int places = 0;
    for (; scale >= 10; scale /= 10) {
        ++places;
    }
    return places;
}

// Writes a number's text from its last character to its first, into a buffer that holds the longest one.
class BackwardText
{
public:
    BackwardText() = default;
    Q_DISABLE_COPY(BackwardText)

    void prepend(QChar character)
    {
        *--m_begin = character;
    }

    quint64 prependDigit(quint64 magnitude)
    {
        prepend(QLatin1Char(static_cast<char>('0' + magnitude % 10)));
        return magnitude / 10;
    }

    QString toString() const
    {
        return QString(m_begin, static_cast<int>(m_text.data() + m_text.size() - m_begin));
    }

private:
    std::array<QChar, 32> m_text; // 19 digits, 6 separators, the point and the sign
    QChar *m_begin = m_text.data() + m_text.size();
};

quint64 prependFraction(BackwardText &text, quint64 magnitude, int places, QChar decimalPoint)
{
    for (int i = 0; i < places; ++i) {
        magnitude = text.prependDigit(magnitude);
    }
    if (places > 0 && !decimalPoint.isNull()) {
        text.prepend(decimalPoint);
    }
    return magnitude;
}

void prependInteger(BackwardText &text, quint64 magnitude, QChar groupSeparator)
{
    int digits = 0;
    do {
        if (digits > 0 && digits % GroupDigits == 0 && !groupSeparator.isNull()) {
            text.prepend(groupSeparator);
        }
        magnitude = text.prependDigit(magnitude);
        ++digits;
    } while (magnitude > 0);
}

} // namespace

FixNumber::FixNumber(uint scale, double number)
    : m_places(placesOf(scale))
{
    m_value = scaledValue(number, m_places);
}

qint64 FixNumber::value() const
{
    return m_value;
}

QString FixNumber::toString(QChar decimalPoint, QChar groupSeparator) const
{
    const auto bits = static_cast<quint64>(m_value);
    BackwardText text;
    const quint64 integer = prependFraction(text, m_value < 0 ? 0 - bits : bits, m_places, decimalPoint);
    prependInteger(text, integer, groupSeparator);
    if (m_value < 0) {
        text.prepend(QLatin1Char('-'));
    }
    return text.toString();
}
