// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "linelayout.h"

namespace {

constexpr QChar Blank = QLatin1Char(' ');
constexpr QChar Tab = QLatin1Char('\t');

void appendBlanks(QString &out, int count)
{
    out.resize(out.size() + count, Blank);
}

// The line with each TAB replaced by tabWidth blanks, as long as the padding lasts.
void appendWithTabs(QString &out, const QString &line, int tabWidth)
{
    int padding = printsrv::LargestTabPadding;
    int begin = 0;
    for (int tab = line.indexOf(Tab); tab >= 0; tab = line.indexOf(Tab, begin)) {
        out.append(line.constData() + begin, tab - begin);
        const int extra = qMin(tabWidth - 1, padding);
        appendBlanks(out, extra + 1);
        padding -= extra;
        begin = tab + 1;
    }
    out.append(line.constData() + begin, line.size() - begin);
}

} // namespace

void printsrv::appendLaidOutLine(QString &out, const QString &line, ETextAlignment alignment, int width)
{
    const int room = qBound(0, width, LargestLineWidth) - line.size();
    if (room <= 0) {
        appendWithTabs(out, line, 1);
        return;
    }
    switch (alignment) {
    case TextAlignFullWidth:
        appendWithTabs(out, line, room + 1);
        return;
    case TextAlignRight:
        appendBlanks(out, room);
        break;
    case TextAlignCenter:
        appendBlanks(out, room / 2);
        break;
    case TextAlignLeft:
        break;
    }
    out.append(line);
}
