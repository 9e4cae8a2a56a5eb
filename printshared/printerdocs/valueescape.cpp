// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "valueescape.h"

#include "textnumber.h"

namespace printsrv {

namespace {

void appendCode(QString &out, QChar c)
{
    out += QLatin1String("<#") + QString::number(c.unicode()) + QLatin1Char('>');
}

/** @p text without its control characters and with the characters of @p special as codes. */
QString escaped(const QString &text, QLatin1String special)
{
    QString out;
    out.reserve(text.size());
    for (const QChar c : text) {
        if (special.contains(c)) {
            appendCode(out, c);
        } else if (c.category() != QChar::Other_Control) {
            out += c;
        }
    }
    return out;
}

/** True when @p value would be formatted as a number, or be taken for a zero in a group. */
bool isNumber(const QString &value)
{
    bool isDouble = false;
    value.toDouble(&isDouble);
    return isDouble || numberFromText(value).isValid();
}

} // namespace

QString escapedAttribute(const QString &text)
{
    // An empty tag in front, which line formatting takes out, makes a text of any number. The code of its first
    // character would not do: that of "i" in "inf" has three digits, and so many make an attribute of it.
    const QString value = escaped(text, QLatin1String("<[]"));
    return isNumber(value) ? QLatin1String("<:>") + value : value;
}

QString escapedEntry(const QString &text)
{
    return escaped(text, QLatin1String("<[]="));
}

} // namespace printsrv
