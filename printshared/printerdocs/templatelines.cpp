// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "templatelines.h"

#include "printerdocslog.h"
#include "templatemarks.h"
#include "tracerecorder.h"

#include <algorithm>
#include <numeric>

namespace printsrv {

int indexOfTag(QStringView line, QLatin1String tag, int from)
{
    const int last = int(line.size()) - tag.size();
    constexpr ushort LowerCaseBit = 0x20;
    const ushort initial = ushort(tag.data()[1]) | LowerCaseBit;
    for (int at = nextMark(line, from); at <= last; at = nextMark(line, at + 1)) {
        // A tag begins with an ASCII letter: most other tags differ there already.
        const bool mayBeTag = line[at] == QLatin1Char('<') && (line[at + 1].unicode() | LowerCaseBit) == initial;
        if (mayBeTag && line.mid(at, tag.size()).compare(tag, Qt::CaseInsensitive) == 0) {
            return at;
        }
    }
    return -1;
}

void putInFront(QString &source, int &next, const QString &text)
{
    if (text.size() > next) {
        const int rest = source.size() - next;
        const int room = qMax(text.size(), rest);
        QString moved(room, Qt::Uninitialized);
        moved.append(source.constData() + next, rest);
        source = moved;
        next = room;
    }
    next -= text.size();
    std::copy(text.cbegin(), text.cend(), source.begin() + next);
}

namespace {

// Entry text that holds the tag itself would never end.
constexpr int MaxExpansions = 1000;

// Room for the lines of most receipts in one piece.
constexpr int UsualLineCount = 128;
constexpr int MaxRepeatedEntryLength = 16777216;

const QLatin1String EntriesTag("<ENTRIES>");
constexpr QStringView SidesTag(u"<S>");
const QLatin1String SymbolsOpening("<SPECSYMBOLS=");
const QLatin1String XPartOpening("<X:>");
const QLatin1String XPartClosing("<:X>");
const QLatin1String XLineTag("<X>");
const QLatin1String ImageOpening("<I>");
const QLatin1String ImageClosing("</I>");

/** One entry line as a template line: "=" parts its sides. */
QString entryLine(QStringView entry)
{
    const auto sides = std::count(entry.begin(), entry.end(), QLatin1Char('='));
    QString line(int(entry.size() + sides * (SidesTag.size() - 1)), Qt::Uninitialized);
    QChar *out = line.data();
    for (const QChar c : entry) {
        if (c == QLatin1Char('=')) {
            out = std::copy(SidesTag.begin(), SidesTag.end(), out);
        } else {
            *out++ = c;
        }
    }
    return line;
}

QStringList entryLines(const QString &entries)
{
    QStringList lines;
    int begin = 0;
    for (;;) {
        const int end = entries.indexOf(QLatin1Char('\t'), begin);
        lines.append(entryLine(QStringView(entries).mid(begin, (end < 0 ? entries.size() : end) - begin)));
        if (end < 0) {
            return lines;
        }
        begin = end + 1;
    }
}

/** How often @p entryLines, of which there is one at least, may be inserted: the first time is free, the others are
 * limited in count and in length. */
int expansionLimit(const QStringList &entryLines)
{
    const auto addLength = [](qint64 length, const QString &line) {
        return length + line.size();
    };
    const qint64 length = std::accumulate(entryLines.cbegin(), entryLines.cend(), qint64(entryLines.size()), addLength);
    return int(qMin<qint64>(MaxExpansions, 1 + MaxRepeatedEntryLength / length));
}

/** Puts the entry lines in place of their tag, in one line after the other. */
class EntryExpansion
{
public:
    /** Continues the lines @p before. */
    EntryExpansion(const QString &entries, const QStringList &before, TraceRecorder *trace)
        : m_trace(trace)
        , m_expanded(before)
        , m_inserted(entryLines(entries))
        , m_expansionsLeft(expansionLimit(m_inserted))
        , m_mayInsertTag(entries.contains(QLatin1Char('<')))
    {
        m_expanded.reserve(UsualLineCount);
    }

    void add(const QString &line)
    {
        QString source = line;
        int next = 0; // where what is still to be read begins
        for (;;) {
            const int tag = indexOfTag(source, EntriesTag, next);
            if (tag < 0 || m_expansionsLeft == 0) {
                if (tag >= 0) {
                    warnOnce(tag - next);
                }
                append(next == 0 ? source : source.mid(next));
                return;
            }
            --m_expansionsLeft;
            tell(m_trace, &TraceRecorder::insertEntries, m_inserted, tag - next, EntriesTag.size());
            const QString before = source.mid(next, tag - next);
            next = tag + EntriesTag.size();
            if (m_inserted.size() == 1) {
                append(before + m_inserted.first() + source.midRef(next));
                return;
            }
            append(before + m_inserted.first());
            addInnerLines();
            // The last one goes on with the rest of the line, which may hold a further tag.
            putInFront(source, next, m_inserted.last());
        }
    }

    QStringList expanded() const
    {
        return m_expanded;
    }

private:
    void append(const QString &line)
    {
        m_expanded.append(line);
        tell(m_trace, &TraceRecorder::keepLine);
    }

    /** Adds the entry lines but the first and the last one. */
    void addInnerLines()
    {
        for (int i = 1; i + 1 < m_inserted.size(); ++i) {
            if (m_mayInsertTag) {
                add(m_inserted.at(i));
            } else {
                append(m_inserted.at(i));
            }
        }
    }

    /** Tells of the limit at the tag that is @p distance characters ahead. */
    void warnOnce(int distance)
    {
        if (m_hasWarned) {
            return;
        }
        m_hasWarned = true;
        if (m_trace != nullptr) {
            m_trace->stop(distance);
            return;
        }
        qCWarning(printerDocsLog, "Line %d asks for the entries too often, the tag stays as it is",
                  m_expanded.size() + 1);
    }

    TraceRecorder *m_trace;
    QStringList m_expanded;
    QStringList m_inserted;
    int m_expansionsLeft;
    bool m_mayInsertTag;
    bool m_hasWarned = false;
};

/** True for a line that holds an X part's marker, or a line break, at which the joined lines are parted anew. */
bool needsJoining(const QString &line)
{
    return line.contains(QLatin1Char('\n')) || line.contains(XPartOpening) || line.contains(XPartClosing);
}

/** As QString::remove(), which moves the rest of the text with each tag. */
void removeAll(QString &text, QLatin1String tag)
{
    int next = text.indexOf(tag);
    if (next < 0) {
        return;
    }
    QString kept = text.left(next);
    while (next >= 0) {
        const int begin = next + tag.size();
        next = text.indexOf(tag, begin);
        kept += text.midRef(begin, next < 0 ? -1 : next - begin);
    }
    text = kept;
}

/** True for a line that holds nothing but "<SPECSYMBOLS=name>". */
bool selectsSymbols(const QString &line)
{
    const QStringView tag = QStringView(line).trimmed();
    return tag.endsWith(QLatin1Char('>')) && tag.startsWith(SymbolsOpening);
}

/** Removes all that stands from an @p opening to the next @p closing, both included; true when there was any. */
bool cutSpans(QString &text, QLatin1String opening, QLatin1String closing, TraceRecorder *trace,
              ReceiptTrace::ELoss reason)
{
    int made = 0; // what stays, at the beginning of the text
    int next = 0; // what is still to be read
    for (;;) {
        const int open = text.indexOf(opening, next);
        const int close = open < 0 ? -1 : text.indexOf(closing, open);
        if (close < 0) {
            break;
        }
        QChar *characters = text.data();
        std::copy(characters + next, characters + open, characters + made);
        const int read = next;
        made += open - next;
        next = close + closing.size();
        // An opening may have come together over the gap: its first characters are read once more.
        const int again = qMin(made, opening.size() - 1);
        tell(trace, &TraceRecorder::cut, open - read, next - read, again, reason);
        made -= again;
        next -= again;
        std::copy(characters + made, characters + made + again, characters + next);
    }
    text.remove(made, next - made);
    return next > made;
}

} // namespace

void expandEntries(QStringList &lines, const QString &entries, TraceRecorder *trace)
{
    const auto holdsTag = [](const QString &line) {
        return indexOfTag(line, EntriesTag) >= 0;
    };
    const auto first = std::find_if(lines.cbegin(), lines.cend(), holdsTag);
    if (first == lines.cend()) {
        return;
    }
    const int passed = int(first - lines.cbegin());
    tell(trace, &TraceRecorder::startPass);
    for (int i = 0; i < passed && trace != nullptr; ++i) {
        trace->keepLine();
    }
    EntryExpansion expansion(entries, lines.mid(0, passed), trace);
    for (int i = passed; i < lines.size(); ++i) {
        expansion.add(lines.at(i));
    }
    lines = expansion.expanded();
}

QString takeSymbolsLines(QStringList &lines)
{
    const auto last = std::find_if(lines.crbegin(), lines.crend(), selectsSymbols);
    if (last == lines.crend()) {
        return {};
    }
    const QStringView tag = QStringView(*last).trimmed();
    const QString name = tag.mid(SymbolsOpening.size()).chopped(1).toString();
    lines.erase(std::remove_if(lines.begin(), lines.end(), selectsSymbols), lines.end());
    return name;
}

void cutXParts(QStringList &lines, bool remove, TraceRecorder *trace)
{
    if (std::none_of(lines.cbegin(), lines.cend(), needsJoining)) {
        return;
    }
    QString text = lines.join(QLatin1Char('\n'));
    tell(trace, &TraceRecorder::joinLines);
    if (remove) {
        cutSpans(text, XPartOpening, XPartClosing, trace, ReceiptTrace::ELoss::XPart);
    } else {
        removeAll(text, XPartClosing);
        removeAll(text, XPartOpening);
    }
    tell(trace, &TraceRecorder::splitLine, text);
    lines = text.split(QLatin1Char('\n'));
}

void cutXLine(QString &line, bool remove)
{
    if (!remove) {
        removeAll(line, XLineTag);
    } else if (line.contains(XLineTag)) {
        line.clear();
    }
}

void stripInlineImages(QStringList &lines, TraceRecorder *trace)
{
    QStringList kept;
    kept.reserve(lines.size());
    tell(trace, &TraceRecorder::startPass);
    for (QString &line : lines) {
        tell(trace, &TraceRecorder::openLine);
        const bool hadImage = cutSpans(line, ImageOpening, ImageClosing, trace, ReceiptTrace::ELoss::Image);
        tell(trace, &TraceRecorder::closeLine);
        if (hadImage && line.isEmpty()) {
            tell(trace, &TraceRecorder::dropLine, ReceiptTrace::ELoss::Image);
            continue;
        }
        const int tag = line.indexOf(XLineTag);
        if (tag >= 0) {
            line.clear();
            tell(trace, &TraceRecorder::clearLine, tag);
        }
        kept.append(line);
        tell(trace, &TraceRecorder::keepLine);
    }
    lines = std::move(kept);
}

} // namespace printsrv
