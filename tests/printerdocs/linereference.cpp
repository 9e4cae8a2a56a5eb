// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "receiptreference.h"

#include <QRegularExpression>

namespace {

using namespace reference;

constexpr char SpecialCode = 0x40;

void cut(FormattedLine &line, int from, int count)
{
    line.text.remove(from, count);
    line.font.remove(from, count);
    line.format.remove(from, count);
}

bool takeAll(FormattedLine &line, const QString &tag)
{
    bool isFound = false;
    for (int at = line.text.indexOf(tag); at >= 0; at = line.text.indexOf(tag)) {
        cut(line, at, tag.size());
        isFound = true;
    }
    return isFound;
}

bool putTabs(FormattedLine &line)
{
    bool isFound = false;
    for (int at = line.text.indexOf(QStringLiteral("<S>")); at >= 0; at = line.text.indexOf(QStringLiteral("<S>"))) {
        cut(line, at, 2);
        line.text[at] = QLatin1Char('\t');
        isFound = true;
    }
    return isFound;
}

struct Letter
{
    QString letter;
    char bit;
};

QList<Letter> letters()
{
    return {{QStringLiteral("B"), 0x01}, {QStringLiteral("N"), 0x02},  {QStringLiteral("Z"), 0x04},
            {QStringLiteral("U"), 0x08}, {QStringLiteral("W2"), 0x10}, {QStringLiteral("H2"), 0x20}};
}

char takeWholeLineTags(FormattedLine &line)
{
    char bits = 0;
    const QStringList tags{QStringLiteral("L1"), QStringLiteral("Z"), QStringLiteral("B"), QStringLiteral("H2"),
                           QStringLiteral("W2"), QStringLiteral("N"), QStringLiteral("U")};
    for (const QString &tag : tags) {
        const bool isFound = takeAll(line, QStringLiteral("<%1>").arg(tag));
        for (const Letter &letter : letters()) {
            if (isFound && letter.letter == tag) {
                bits = static_cast<char>(bits | letter.bit);
            }
        }
    }
    return bits;
}

void takeLineSpacing(FormattedLine &line)
{
    static const QRegularExpression tag(QStringLiteral("<LS([0-7])>"));
    for (auto match = tag.match(line.text); match.hasMatch(); match = tag.match(line.text)) {
        line.lineSpacing = match.captured(1).toInt();
        cut(line, match.capturedStart(), match.capturedLength());
    }
}

int takeAlignment(FormattedLine &line, bool hasTab)
{
    const bool isCentred = takeAll(line, QStringLiteral("<C>"));
    const bool isRight = takeAll(line, QStringLiteral("<R>"));
    if (hasTab) {
        return 3;
    }
    if (isCentred) {
        return 2;
    }
    return isRight ? 1 : 0;
}

void takeSpans(FormattedLine &line, const Letter &letter, unsigned char &carried)
{
    const QString start = QStringLiteral("<%1:>").arg(letter.letter);
    const QString end = QStringLiteral("<:%1>").arg(letter.letter);
    for (;;) {
        const int startAt = line.text.indexOf(start);
        const int endAt = line.text.indexOf(end);
        if (startAt < 0 && endAt < 0) {
            return;
        }
        const bool isStart = endAt < 0 || (startAt >= 0 && startAt < endAt);
        const int at = isStart ? startAt : endAt;
        const auto set = [&](int byte) {
            return isStart ? byte | letter.bit : byte & ~letter.bit;
        };
        cut(line, at, start.size());
        carried = static_cast<unsigned char>(set(carried));
        for (int i = at; i < line.format.size(); ++i) {
            line.format[i] = static_cast<char>(set(line.format.at(i)));
        }
    }
}

/** The font of "<F" number ">"; the number has any count of digits. */
int fontOfNumber(QString number)
{
    number.remove(QRegularExpression(QStringLiteral("\\A0+")));
    const bool isSmall = number.size() == 1 && number.toInt() <= 4;
    return isSmall ? number.toInt() - 1 : number.right(2).toInt() % 4; // 100 is a multiple of 4
}

void takeFonts(FormattedLine &line, unsigned char &carried)
{
    static const QRegularExpression tag(QStringLiteral("<F(0*[1-9][0-9]*)>"));
    for (auto match = tag.match(line.text); match.hasMatch(); match = tag.match(line.text)) {
        carried = static_cast<unsigned char>(fontOfNumber(match.captured(1)));
        cut(line, match.capturedStart(), match.capturedLength());
        for (int i = match.capturedStart(); i < line.font.size(); ++i) {
            line.font[i] = static_cast<char>(carried);
        }
    }
}

ushort codeOf(const QString &number)
{
    static const QRegularExpression decimal(QStringLiteral("\\A[0-9]{1,9}\\z"));
    return decimal.match(number).hasMatch() ? static_cast<ushort>(number.toInt() % 256) : ushort(0);
}

void putCharacterCodes(FormattedLine &line)
{
    int start = line.text.indexOf(QLatin1Char('<'));
    int end = line.text.indexOf(QLatin1Char('>'), start);
    while (start >= 0 && end >= 0) {
        const QString code = line.text.mid(start + 1, end - start - 1);
        const bool isPlain = code.startsWith(QLatin1Char('#'));
        cut(line, start + 1, end - start);
        line.text[start] = QChar(codeOf(isPlain ? code.mid(1) : code));
        if (!isPlain) {
            line.format[start] = static_cast<char>(line.format.at(start) | SpecialCode);
        }
        start = line.text.indexOf(QLatin1Char('<'), start + 1);
        end = line.text.indexOf(QLatin1Char('>'), start);
    }
}

QString inCase(const QString &text, LetterCase letterCase)
{
    if (letterCase == LetterCase::Upper) {
        return text.toUpper();
    }
    return letterCase == LetterCase::Lower ? text.toLower() : text;
}

QString laidOut(const FormattedLine &line, int width)
{
    const QChar blank = QLatin1Char(' ');
    const int missing = width - line.text.size();
    if (missing <= 0) {
        return QString(line.text).replace(QLatin1Char('\t'), blank);
    }
    switch (line.alignment) {
    case 1:
        return QString(missing, blank) + line.text;
    case 2:
        return QString(missing / 2, blank) + line.text;
    case 3:
        return QString(line.text).replace(QLatin1Char('\t'), QString(missing + 1, blank));
    default:
        return line.text;
    }
}

// HTML

char byteAt(const QByteArray &bytes, int i)
{
    return i < bytes.size() ? bytes.at(i) : '\0';
}

QString runHtml(const QString &text, char font, char format)
{
    const bool isDoubled = (format & 0x30) == 0x30;
    const int factor = (font + 1) * (isDoubled ? 2 : 1);
    QString html = QStringLiteral("<font size = %1>%2</font>").arg(QString::number(factor), text.toHtmlEscaped());
    if ((format & 0x08) != 0) {
        html = QStringLiteral("<u>") + html + QStringLiteral("</u>");
    }
    if ((format & 0x02) != 0) {
        html = QStringLiteral("<i>") + html + QStringLiteral("</i>");
    }
    if ((format & 0x01) != 0) {
        html = QStringLiteral("<b>") + html + QStringLiteral("</b>");
    }
    return html;
}

QString runsHtml(const FormattedLine &line, int from, int to)
{
    QString html;
    for (int start = from; start < to;) {
        const char font = byteAt(line.font, start);
        const char format = byteAt(line.format, start);
        int end = start;
        while (end < to && byteAt(line.font, end) == font && byteAt(line.format, end) == format) {
            ++end;
        }
        html += runHtml(line.text.mid(start, end - start), font, format);
        start = end;
    }
    return html;
}

QString cellHtml(const QString &attributes, const QString &content)
{
    return QStringLiteral("<td ") + attributes + QStringLiteral("> ") + content + QStringLiteral(" </td>");
}

QString rowHtml(const FormattedLine &line)
{
    const int tab = line.text.indexOf(QLatin1Char('\t'));
    const int size = line.text.size();
    if (line.alignment == 3 && tab >= 0) {
        return cellHtml(QStringLiteral("align = \"left\""), runsHtml(line, 0, tab))
            + cellHtml(QStringLiteral("align = \"right\""), runsHtml(line, tab + 1, size));
    }
    const char *const names[] = {"left", "right", "center", "left"};
    const QString name = QString::fromLatin1(names[line.alignment]);
    return cellHtml(QStringLiteral("colspan=\"2\" align = \"%1\"").arg(name), runsHtml(line, 0, size));
}

} // namespace

namespace reference {

FormattedLine formatLine(const QString &text, LineState &state, int lineSpacing)
{
    state.format = static_cast<unsigned char>(state.format & ~SpecialCode);
    FormattedLine line{text, QByteArray(text.size(), static_cast<char>(state.font)),
                       QByteArray(text.size(), static_cast<char>(state.format)), state.alignment, lineSpacing};
    if (text.isEmpty()) {
        return line;
    }
    const bool hasTab = putTabs(line);
    const char wholeLine = takeWholeLineTags(line);
    takeLineSpacing(line);
    state.alignment = line.alignment = takeAlignment(line, hasTab);
    for (const Letter &letter : letters()) {
        takeSpans(line, letter, state.format);
    }
    takeAll(line, QStringLiteral("["));
    takeAll(line, QStringLiteral("]"));
    takeAll(line, QStringLiteral("<:>"));
    takeFonts(line, state.font);
    for (char &byte : line.format) {
        byte = static_cast<char>(byte | wholeLine);
    }
    putCharacterCodes(line);
    return line;
}

QList<FormattedLine> formatLines(const QStringList &lines, LetterCase letterCase)
{
    LineState state;
    QList<FormattedLine> formatted;
    for (const QString &line : lines) {
        formatted.append(formatLine(line, state, 0));
        formatted.last().text = inCase(formatted.last().text, letterCase);
    }
    return formatted;
}

QString plainText(const QStringList &lines, int width, LetterCase letterCase)
{
    const QList<FormattedLine> formatted = formatLines(lines, letterCase);
    QStringList result;
    for (int i = 0; i < lines.size(); ++i) {
        const bool isBlank = lines.at(i).isEmpty();
        result.append(isBlank ? QString(width, QLatin1Char(' ')) : laidOut(formatted.at(i), width));
    }
    return result.join(QLatin1Char('\n'));
}

QString htmlRows(const QStringList &lines, LetterCase letterCase)
{
    QStringList rows;
    const QList<FormattedLine> formatted = formatLines(lines, letterCase);
    for (const FormattedLine &line : formatted) {
        const bool isBlank = line.text.trimmed().isEmpty();
        rows.append(isBlank ? QStringLiteral("<br>")
                            : QStringLiteral("<tr>") + rowHtml(line) + QStringLiteral("</tr>"));
    }
    return rows.join(QLatin1Char('\n'));
}

QStringList documentBlocks(const QStringList &lines, LetterCase letterCase)
{
    if (lines.isEmpty()) {
        return {};
    }
    QStringList description{describeHead(0), describeLine(QString(), QByteArray(), QByteArray(), 0)};
    int alignment = 0;
    const QList<FormattedLine> formatted = formatLines(lines, letterCase);
    for (const FormattedLine &line : formatted) {
        if (line.alignment != alignment) {
            alignment = line.alignment;
            description.append(describeHead(alignment));
        }
        description.append(describeLine(line.text, line.font, line.format, line.lineSpacing));
    }
    return description;
}

QString describeHead(int alignment)
{
    return QStringLiteral("block, alignment %1").arg(alignment);
}

QString describeLine(const QString &text, const QByteArray &font, const QByteArray &format, int lineSpacing)
{
    return QStringLiteral("\"%4\" spacing %1 font %2 format %3")
        .arg(QString::number(lineSpacing), QString::fromLatin1(font.toHex()), QString::fromLatin1(format.toHex()),
             text);
}

} // namespace reference
