// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "preview.h"

#include <QColor>
#include <QVector>

#include <sys/ioctl.h>
#include <unistd.h>

namespace printsrv {

namespace {

constexpr int UsualColumns = 80;
constexpr int FullDarkness = 255;
constexpr int BlackFrom = FullDarkness / 5;
constexpr int FirstGrey = 232;
constexpr int LastGrey = 23;

using Darkness = QVector<int>;

// How dark the squares of one row are, 0 to 255; below the picture everything is white.
Darkness darkness(const QImage &picture, int top, int side)
{
    const int columns = (picture.width() + side - 1) / side;
    Darkness sums(columns, 0);
    const int bottom = qMin(top + side, picture.height());
    for (int y = top; y < bottom; ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            sums[x / side] += FullDarkness - qGray(picture.pixel(x, y));
        }
    }
    for (int &sum : sums) {
        sum /= side * side;
    }
    return sums;
}

QByteArray halfBlock(bool isUpperBlack, bool isLowerBlack)
{
    if (isUpperBlack) {
        return isLowerBlack ? QByteArrayLiteral("\u2588") : QByteArrayLiteral("\u2580");
    }
    return isLowerBlack ? QByteArrayLiteral("\u2584") : QByteArrayLiteral(" ");
}

QByteArray plainLine(const Darkness &upper, const Darkness &lower)
{
    QByteArray line;
    for (int column = 0; column < upper.size(); ++column) {
        line += halfBlock(upper.at(column) >= BlackFrom, lower.at(column) >= BlackFrom);
    }
    while (line.endsWith(' ')) {
        line.chop(1);
    }
    return line;
}

int grey(int dark)
{
    return FirstGrey + LastGrey - dark * LastGrey / FullDarkness;
}

// The upper square is the block's own colour, the lower one the colour behind it.
QByteArray greyLine(const Darkness &upper, const Darkness &lower)
{
    QByteArray line;
    QByteArray last;
    for (int column = 0; column < upper.size(); ++column) {
        const QByteArray colours = "\033[38;5;" + QByteArray::number(grey(upper.at(column))) + ";48;5;"
            + QByteArray::number(grey(lower.at(column))) + 'm';
        line += (colours == last ? QByteArray() : colours) + QByteArrayLiteral("\u2580");
        last = colours;
    }
    return line + "\033[0m";
}

} // namespace

int terminalColumns()
{
    winsize size = {};
    const bool isTerminal = ::ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
    return isTerminal ? size.ws_col : UsualColumns;
}

EShades terminalShades()
{
    const bool hasColours = qgetenv("TERM").contains("256color") || !qEnvironmentVariableIsEmpty("COLORTERM");
    return hasColours && ::isatty(STDOUT_FILENO) == 1 ? EShades::Grey : EShades::BlackAndWhite;
}

QByteArray previewText(const QImage &picture, int columns, EShades shades)
{
    const int side = qMax(1, (picture.width() + columns - 1) / columns);
    QByteArray text;
    for (int top = 0; top < picture.height(); top += 2 * side) {
        const Darkness upper = darkness(picture, top, side);
        const Darkness lower = darkness(picture, top + side, side);
        text += (shades == EShades::Grey ? greyLine(upper, lower) : plainLine(upper, lower)) + '\n';
    }
    return text;
}

} // namespace printsrv
