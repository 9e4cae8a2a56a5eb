// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "lintrules.h"
#include "nearmiss.h"

#include <algorithm>

namespace printsrv {

using ESource = ReceiptTrace::ESource;

namespace {

// Hints are comfort, and each costs a look at all names.
constexpr int MostHints = 200;

bool isDigit(QChar c)
{
    return c >= QLatin1Char('0') && c <= QLatin1Char('9');
}

/** True for a number, with "#" in front or without. */
bool isCodeNumber(QStringView text)
{
    const QStringView digits = text.mid(text.startsWith(QLatin1Char('#')) ? 1 : 0);
    return !digits.isEmpty() && std::all_of(digits.begin(), digits.end(), isDigit);
}

/** Looks for the names of a template in the receipts. */
class NameCheck
{
public:
    NameCheck(const LintContext &context, Findings &findings)
        : m_context(context)
        , m_findings(findings)
    {
        for (const LintReceipt &receipt : context.options.receipts) {
            const QVariantMap attributes = receipt.document.attributes();
            for (auto attribute = attributes.cbegin(); attribute != attributes.cend(); ++attribute) {
                m_known.insert(attribute.key());
            }
        }
        m_knownList = m_known.values();
        m_knownList.sort();
        std::copy_if(m_knownList.cbegin(), m_knownList.cend(), std::back_inserter(m_unusedList),
                     [&context](const QString &name) { return !context.usedNames.contains(name); });
    }

    bool isKnown(const QString &name) const
    {
        return m_known.contains(name);
    }

    /** An attribute of the template at @p offset; inside a group it may be missing, but hardly be misspelt. */
    void check(const QString &name, int offset, bool isInGroup)
    {
        if (m_context.options.receipts.isEmpty() || m_known.contains(name)) {
            return;
        }
        if (isInGroup) {
            checkInGroup(name, offset);
            return;
        }
        QString hint = hintOf(name, m_unusedList, ELikeness::Alike);
        if (hint.isEmpty()) {
            hint = hintOf(name, m_knownList, ELikeness::Alike);
        }
        addUnknown(name, offset, hint);
    }

private:
    QString hintOf(const QString &name, const QStringList &others, ELikeness likeness)
    {
        return m_hintsLeft-- > 0 ? nearMiss(name, others, likeness) : QString();
    }

    void checkInGroup(const QString &name, int offset)
    {
        const QString typo = hintOf(name, m_unusedList, ELikeness::Typo);
        if (!typo.isEmpty()) {
            addUnknown(name, offset, typo);
            return;
        }
        const QString alike = hintOf(name, m_unusedList, ELikeness::Alike);
        if (!alike.isEmpty()) {
            m_findings.add(ELintCode::SimilarAttribute, offset,
                           QStringLiteral("the data has no “%1”, its group vanishes; did you mean %2, which the "
                                          "template does not use?")
                               .arg(name, alike));
        }
    }

    void addUnknown(const QString &name, int offset, const QString &hint)
    {
        const QString question = hint.isEmpty() ? QString() : QStringLiteral("; did you mean %1?").arg(hint);
        m_findings.add(ELintCode::UnknownAttribute, offset,
                       QStringLiteral("the data has no “%1”, it prints nothing%2").arg(name, question));
    }

    const LintContext &m_context;
    Findings &m_findings;
    QSet<QString> m_known;
    QStringList m_knownList;
    QStringList m_unusedList;
    int m_hintsLeft = MostHints;
};

/** The findings about a name that is no attribute's; false when it may be one. */
bool isNoName(const QString &name, int offset, Findings &findings)
{
    if (name.contains(QLatin1Char('<'))) {
        findings.add(ELintCode::UnclosedTag, offset,
                     QStringLiteral("this “<” has no “>” before the next “<”; write <#60> for a “<” that prints"));
        return true;
    }
    if (name.startsWith(QLatin1String("SPECSYMBOLS="), Qt::CaseInsensitive)) {
        const bool isUpper = name.startsWith(QLatin1String("SPECSYMBOLS="));
        findings.add(ELintCode::SymbolsInLine, offset,
                     QStringLiteral("<%1> selects symbols only %2; here it is an attribute")
                         .arg(name, isUpper ? QStringLiteral("on a line of its own") : QStringLiteral("in capitals")));
        return true;
    }
    return name.compare(QLatin1String("FISCAL_INFO"), Qt::CaseInsensitive) == 0;
}

bool isBlank(QChar c)
{
    return c == QLatin1Char(' ') || c == QLatin1Char('\t');
}

/** True for a "<DOCNO>" that has its line to itself: in a template for data without that name it is the place of the
 * copy mark only. */
bool isPlaceOfMark(const QString &text, const QString &name, int offset)
{
    if (name.compare(QLatin1String("DOCNO"), Qt::CaseInsensitive) != 0) {
        return false;
    }
    int before = offset - 1;
    while (before >= 0 && isBlank(text.at(before))) {
        --before;
    }
    int behind = offset + name.size() + 2;
    while (behind < text.size() && isBlank(text.at(behind))) {
        ++behind;
    }
    const QLatin1Char lineEnd('\n');
    return (before < 0 || text.at(before) == lineEnd) && (behind >= text.size() || text.at(behind) == lineEnd);
}

void checkName(const QString &name, int offset, bool isInGroup, NameCheck &names, Findings &findings)
{
    if (isCodeNumber(name) && !names.isKnown(name)) {
        findings.add(
            ELintCode::LongCode, offset,
            QStringLiteral("<%1> is too long for a character code and prints the attribute of that name; a code "
                           "has at most three characters, as <255> or <#99>")
                .arg(name));
        return;
    }
    int begin = 0;
    const QStringList parts = name.split(QLatin1Char('+'));
    for (const QString &part : parts) {
        const bool isSum = part.size() < name.size();
        names.check(part, isSum ? offset + 1 + begin : offset, isInGroup);
        begin += part.size() + 1;
    }
}

/** For each offset in question whether a group is around it; both are sorted. */
class GroupDepth
{
public:
    explicit GroupDepth(const QVector<Group> &groups)
    {
        for (const Group &group : groups) {
            m_opens.append(group.open);
            m_closes.append(group.close);
        }
        std::sort(m_closes.begin(), m_closes.end());
    }

    bool isInGroup(int offset) const
    {
        const auto begun = std::upper_bound(m_opens.cbegin(), m_opens.cend(), offset) - m_opens.cbegin();
        const auto ended = std::upper_bound(m_closes.cbegin(), m_closes.cend(), offset) - m_closes.cbegin();
        return begun > ended;
    }

private:
    QVector<int> m_opens;
    QVector<int> m_closes;
};

/** What to write in place of a tag of at most three characters that nobody knows. */
QString mendedTag(const QString &name, bool isAttribute)
{
    if (name.isEmpty() || name.startsWith(QLatin1Char(','))) {
        return QStringLiteral("a name is missing between the brackets");
    }
    if (name.size() == 3 && name.startsWith(QLatin1String("LS")) && isDigit(name.at(2))) {
        return QStringLiteral("line spacing is <LS0> to <LS7>");
    }
    if (name.size() == 2 && name != QLatin1String("L1") && name.startsWith(QLatin1Char('L')) && isDigit(name.at(1))) {
        return QStringLiteral("the only tag like it is <L1>");
    }
    if (name.startsWith(QLatin1Char('F')) && isCodeNumber(QStringView(name).mid(1))) {
        return QStringLiteral("fonts are <F1> to <F4>");
    }
    return isAttribute || name == name.toUpper()
        ? QStringLiteral("the name of an attribute needs four characters or a comma, as <%1,>").arg(name)
        : QStringLiteral("tags are written in capitals");
}

/** A code of which the printer gets another one than stands there. */
void checkCodeNumber(const QString &name, int offset, Findings &findings)
{
    constexpr int LargestCode = 255;
    const int code = name.midRef(name.startsWith(QLatin1Char('#')) ? 1 : 0).toInt();
    if (code < 1 || code > LargestCode) {
        findings.add(ELintCode::CodeOutOfRange, offset,
                     QStringLiteral("<%1> prints the character of code %2; codes are 1 to %3")
                         .arg(name)
                         .arg(code % (LargestCode + 1))
                         .arg(LargestCode));
    }
}

void checkShortTags(const LintContext &context, const NameCheck &names, Findings &findings)
{
    for (const ReceiptTrace::Tag &tag : context.samples.tags) {
        const QString name = insideOf(tag).toString();
        const bool isPart = name == QLatin1String("X:") || name == QLatin1String(":X") || name == QLatin1String("I")
            || name == QLatin1String("/I");
        if (!tag.isCode || isPart || name.size() > 3) {
            continue;
        }
        const int offset = context.samples.offsetOf(tag.first);
        if (isCodeNumber(name)) {
            checkCodeNumber(name, offset, findings);
            continue;
        }
        findings.add(
            ELintCode::ShortAttribute, offset,
            QStringLiteral("<%1> prints as a character of code 0; %2").arg(name, mendedTag(name, names.isKnown(name))));
    }
}

/** True for a "<" that a name follows. */
bool beginsTag(const QString &text, int index)
{
    const QChar next = index + 1 < text.size() ? text.at(index + 1) : QChar();
    return text.at(index) == QLatin1Char('<')
        && (next.isLetter() || next == QLatin1Char('#') || next == QLatin1Char(':'));
}

/** A "<" that is left in a line as text although a name follows it. */
void checkOpenTags(const LintContext &context, Findings &findings)
{
    QSet<int> codes; // in place of such a tag may print a "<"
    for (const ReceiptTrace::Tag &tag : context.samples.tags) {
        codes.insert(tag.isCode ? context.samples.offsetOf(tag.first) : -1);
    }
    const QString what = QStringLiteral("this tag has no “>” in its line, it prints as it stands");
    for (const ReceiptTrace::Line &line : context.samples.lines) {
        for (int i = 0; i < line.text.size(); ++i) {
            const ReceiptTrace::Origin origin = line.origins.at(i);
            if (origin.source == 0 && !codes.contains(origin.offset) && beginsTag(line.text, i)) {
                findings.add(ELintCode::UnclosedTag, origin.offset, what);
            }
        }
    }
}

bool isWholeNumber(const QVariant &value)
{
    const int type = value.userType();
    return type == QMetaType::Int || type == QMetaType::UInt || type == QMetaType::LongLong
        || type == QMetaType::ULongLong;
}

/** A decimal point makes nothing but leading zeros of a whole number; a zero that removes its group prints none. */
void checkFormats(const Trial &receipt, Findings &findings)
{
    QSet<int> removers;
    for (const ReceiptTrace::Loss &loss : receipt.losses) {
        removers.insert(loss.reason == ReceiptTrace::ELoss::Group ? loss.cause : 0);
    }
    for (int i = 0; i < receipt.sources.size(); ++i) {
        const ReceiptTrace::Source &source = receipt.sources.at(i);
        if (source.kind == ESource::Attribute && source.format.contains(QLatin1Char('.')) && !removers.contains(i)
            && !source.name.contains(QLatin1Char('+')) && isWholeNumber(receipt.document.attributeValue(source.name))) {
            findings.add(ELintCode::WholeNumberFormat, source.place,
                         QStringLiteral("%1 is a whole number and prints as “%2”; give it as a decimal, or a format "
                                        "without a point")
                             .arg(source.name, source.text));
        }
    }
}

} // namespace

void checkAttributes(const LintContext &context, Findings &findings)
{
    NameCheck names(context, findings);
    const GroupDepth depth(context.groups);
    for (const int attribute : context.attributes) {
        const int offset = context.names.sources.at(attribute).place;
        const QString name = context.nameOf(attribute);
        const bool isMark = isPlaceOfMark(context.text, name, offset) && !names.isKnown(QStringLiteral("DOCNO"));
        if (!isMark && !isNoName(name, offset, findings)) {
            checkName(name, offset, depth.isInGroup(offset), names, findings);
        }
    }
    checkShortTags(context, names, findings);
    checkOpenTags(context, findings);
    if (context.options.receipts.isEmpty()) {
        return; // values of lint's own have the type that their format is for
    }
    for (const Trial &receipt : context.receipts) {
        checkFormats(receipt, findings);
    }
}

} // namespace printsrv
