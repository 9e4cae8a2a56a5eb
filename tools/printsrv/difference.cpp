// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "difference.h"

#include <QStringList>
#include <QVector>

namespace printsrv {

namespace {

constexpr int NumberWidth = 6;
constexpr int SmallestColumn = 16;
// Texts with more pairs of lines are compared line by line, so that memory stays bounded.
constexpr qint64 LargestPairCount = 4'000'000;

constexpr QRgb White = qRgb(255, 255, 255);
constexpr QRgb Black = qRgb(0, 0, 0);
constexpr QRgb OnlyExpected = qRgb(220, 0, 0);
constexpr QRgb OnlyActual = qRgb(0, 0, 220);

/** A row of the comparison: the places of its lines, -1 for none. */
struct Row
{
    int left = -1;
    int right = -1;
    bool isSame = false;
};

/** Two texts as lines, between their common beginning and their common end. */
struct Lines
{
    QStringList left;
    QStringList right;
    int begin = 0;
    int leftEnd = 0;
    int rightEnd = 0;

    Lines(const QString &expected, const QString &actual)
        : left(expected.split(QLatin1Char('\n')))
        , right(actual.split(QLatin1Char('\n')))
        , leftEnd(left.size())
        , rightEnd(right.size())
    {
        while (begin < qMin(leftEnd, rightEnd) && left.at(begin) == right.at(begin)) {
            ++begin;
        }
        while (begin < qMin(leftEnd, rightEnd) && left.at(leftEnd - 1) == right.at(rightEnd - 1)) {
            --leftEnd;
            --rightEnd;
        }
    }
};

/** The longest common subsequence of the lines that differ, by the usual table. */
class CommonLines
{
public:
    explicit CommonLines(const Lines &lines)
        : m_lines(lines)
        , m_width(lines.rightEnd - lines.begin + 1)
    {
        const qint64 pairs = qint64(lines.leftEnd - lines.begin + 1) * m_width;
        if (pairs > LargestPairCount) {
            return;
        }
        m_lengths.resize(static_cast<int>(pairs));
        for (int left = lines.leftEnd - 1; left >= lines.begin; --left) {
            for (int right = lines.rightEnd - 1; right >= lines.begin; --right) {
                m_lengths[index(left, right)] = lines.left.at(left) == lines.right.at(right)
                    ? length(left + 1, right + 1) + 1
                    : qMax(length(left + 1, right), length(left, right + 1));
            }
        }
    }

    /** How many lines the rests from these places on have in common. */
    int length(int left, int right) const
    {
        return m_lengths.isEmpty() ? 0 : m_lengths.at(index(left, right));
    }

private:
    int index(int left, int right) const
    {
        return (left - m_lines.begin) * m_width + right - m_lines.begin;
    }

    const Lines &m_lines;
    int m_width;
    QVector<int> m_lengths;
};

// Lines that are gone and lines that are new in the same place stand in one row each.
void appendChanges(QVector<Row> &rows, QPair<int, int> &left, QPair<int, int> &right)
{
    while (left.first < left.second || right.first < right.second) {
        Row row;
        row.left = left.first < left.second ? left.first++ : -1;
        row.right = right.first < right.second ? right.first++ : -1;
        rows.append(row);
    }
}

QVector<Row> rowsOf(const Lines &lines)
{
    QVector<Row> rows;
    for (int same = 0; same < lines.begin; ++same) {
        rows.append({same, same, true});
    }
    const CommonLines common(lines);
    // From the first line that is not in a row yet to the one that is looked at.
    QPair<int, int> left(lines.begin, lines.begin);
    QPair<int, int> right(lines.begin, lines.begin);
    while (left.second < lines.leftEnd && right.second < lines.rightEnd) {
        if (lines.left.at(left.second) == lines.right.at(right.second)) {
            appendChanges(rows, left, right);
            rows.append({left.second, right.second, true});
            left = {left.second + 1, left.second + 1};
            right = {right.second + 1, right.second + 1};
        } else if (common.length(left.second + 1, right.second) >= common.length(left.second, right.second + 1)) {
            ++left.second;
        } else {
            ++right.second;
        }
    }
    left.second = lines.leftEnd;
    right.second = lines.rightEnd;
    appendChanges(rows, left, right);
    for (int same = 0; lines.leftEnd + same < lines.left.size(); ++same) {
        rows.append({lines.leftEnd + same, lines.rightEnd + same, true});
    }
    return rows;
}

bool isShown(const QVector<Row> &rows, int index)
{
    const auto differs = [&rows](int one) {
        return one >= 0 && one < rows.size() && !rows.at(one).isSame;
    };
    return differs(index - 1) || differs(index) || differs(index + 1);
}

QString visible(QString line, bool isSame)
{
    for (int last = line.size() - 1; !isSame && last >= 0 && line.at(last) == QLatin1Char(' '); --last) {
        line[last] = QChar(0xB7);
    }
    for (QChar &character : line) {
        if (character.unicode() < 0x20) {
            character = QChar(0x2400 + character.unicode());
        } else if (!character.isPrint() && !character.isSurrogate()) {
            character = QChar(QChar::ReplacementCharacter);
        }
    }
    return line;
}

QStringList pieces(const QStringList &lines, int index, bool isSame, int width)
{
    const QString line = index < 0 ? QString() : visible(lines.at(index), isSame);
    QStringList result;
    for (int begin = 0; begin < line.size(); begin += width) {
        result.append(line.mid(begin, width));
    }
    return result;
}

QString mark(const Row &row)
{
    if (row.isSame) {
        return QStringLiteral("   ");
    }
    return row.left < 0 ? QStringLiteral(" > ") : row.right < 0 ? QStringLiteral(" < ") : QStringLiteral(" | ");
}

QString shown(const Row &row, const Lines &lines, int width)
{
    const QStringList left = pieces(lines.left, row.left, row.isSame, width);
    const QStringList right = pieces(lines.right, row.right, row.isSame, width);
    QString text;
    for (int piece = 0; piece < qMax(1, qMax(left.size(), right.size())); ++piece) {
        const QString number = piece == 0 && row.left >= 0 ? QString::number(row.left + 1) : QString();
        QString line = number.rightJustified(NumberWidth) + QStringLiteral("  ")
            + left.value(piece).leftJustified(width) + mark(row) + right.value(piece);
        while (line.endsWith(QLatin1Char(' '))) {
            line.chop(1);
        }
        text += line + QLatin1Char('\n');
    }
    return text;
}

// The longest line of the rows that are shown.
int neededWidth(const QVector<Row> &rows, const Lines &lines)
{
    int width = 0;
    for (int index = 0; index < rows.size(); ++index) {
        if (isShown(rows, index)) {
            const int left = rows.at(index).left;
            const int right = rows.at(index).right;
            width = qMax(width, left < 0 ? 0 : lines.left.at(left).size());
            width = qMax(width, right < 0 ? 0 : lines.right.at(right).size());
        }
    }
    return width;
}

bool isBlack(const QImage &picture, int x, int y)
{
    return x < picture.width() && y < picture.height() && qGray(picture.pixel(x, y)) < 128;
}

} // namespace

QString textDifference(const QString &expected, const QString &actual, int columns)
{
    if (expected == actual) {
        return {};
    }
    const Lines lines(expected, actual);
    const QVector<Row> rows = rowsOf(lines);
    const int room = qMax(SmallestColumn, (columns - NumberWidth - 5) / 2);
    const int width = qBound(SmallestColumn, neededWidth(rows, lines), room);
    QString text = QString(NumberWidth + 2, QLatin1Char(' ')) + QStringLiteral("expected").leftJustified(width + 3)
        + QStringLiteral("now\n");
    bool isGap = false;
    for (int index = 0; index < rows.size(); ++index) {
        const bool wasGap = isGap;
        isGap = !isShown(rows, index);
        if (!isGap) {
            text += shown(rows.at(index), lines, width);
        } else if (!wasGap) {
            text += QStringLiteral("...\n").rightJustified(NumberWidth + 1);
        }
    }
    return text;
}

qint64 differentDots(const QImage &expected, const QImage &actual)
{
    const QSize size = expected.size().expandedTo(actual.size());
    qint64 count = 0;
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x) {
            count += isBlack(expected, x, y) != isBlack(actual, x, y) ? 1 : 0;
        }
    }
    return count;
}

QImage pictureDifference(const QImage &expected, const QImage &actual)
{
    QImage result(expected.size().expandedTo(actual.size()), QImage::Format_RGB32);
    for (int y = 0; y < result.height(); ++y) {
        auto *dots = reinterpret_cast<QRgb *>(result.scanLine(y));
        for (int x = 0; x < result.width(); ++x) {
            const bool wasBlack = isBlack(expected, x, y);
            const bool isBlackNow = isBlack(actual, x, y);
            dots[x] = wasBlack ? (isBlackNow ? Black : OnlyExpected) : (isBlackNow ? OnlyActual : White);
        }
    }
    return result;
}

} // namespace printsrv
