// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "xmlguard.h"

#include <algorithm>
#include <iterator>

namespace {

constexpr int MostAttributes = 256;
constexpr int LargestUncounted = 64 * 1024;
constexpr int LongestDeclaration = 256;

constexpr const char *EncodingsWithAscii[]
    = {"utf-8", "us-ascii", "iso-8859", "windows-125", "cp125", "koi8", "ibm866", "cp866"};

/** The encoding that the declaration of @p xml names, in lower case; "utf-8" when it names none. */
QByteArray encodingOf(const QByteArray &xml)
{
    const QByteArray beginning = xml.left(LongestDeclaration).toLower();
    const QByteArray declaration = beginning.left(beginning.indexOf("?>") + 1);
    const int key = declaration.indexOf("encoding");
    const int quote = key < 0 ? -1 : declaration.indexOf('=', key);
    const QByteArray value = quote < 0 ? QByteArray() : declaration.mid(quote + 1).trimmed();
    return value.isEmpty() ? "utf-8" : value.mid(1, qMax(0, value.indexOf(value.at(0), 1) - 1));
}

bool containsAscii(const QByteArray &xml)
{
    // UTF-16 and UTF-32 begin with a mark of their own, or with a byte 0 in one of the first two characters.
    const bool isWide = xml.startsWith("\xFE\xFF") || xml.startsWith("\xFF\xFE") || xml.left(4).contains('\0');
    const QByteArray encoding = encodingOf(xml);
    return !isWide && std::any_of(std::begin(EncodingsWithAscii), std::end(EncodingsWithAscii), [&](const char *known) {
        return encoding.startsWith(known);
    });
}

/** Counts the quoted values from @p at on to the end of the element's tag, where it leaves @p at. */
int countValues(const QByteArray &xml, int &at)
{
    int count = 0;
    while (at < xml.size() && xml.at(at) != '>' && xml.at(at) != '<') {
        const char c = xml.at(at++);
        if (c == '"' || c == '\'') {
            ++count;
            const int end = xml.indexOf(c, at);
            at = end < 0 ? xml.size() : end + 1;
        }
    }
    return count;
}

bool hasManyAttributes(const QByteArray &xml)
{
    for (int at = xml.indexOf('<'); at >= 0; at = xml.indexOf('<', at)) {
        ++at;
        const bool isElement = at < xml.size() && xml.at(at) != '!' && xml.at(at) != '?';
        if (isElement && countValues(xml, at) > MostAttributes) {
            return true;
        }
    }
    return false;
}

} // namespace

QString printsrv::xmlRefusal(const QByteArray &xml)
{
    if (xml.size() <= LargestUncounted) {
        return {};
    }
    if (!containsAscii(xml)) {
        return QStringLiteral("is larger than 64 KiB in an encoding without ASCII");
    }
    return hasManyAttributes(xml) ? QStringLiteral("has an element of more than 256 attributes") : QString();
}
