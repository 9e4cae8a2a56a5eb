// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "randomreceipt.h"

#include <QDateTime>
#include <QDebug>

#include <limits>

namespace {

QStringList words(const char *all)
{
    return QString::fromUtf8(all).split(QLatin1Char(' '));
}

const QStringList &tags()
{
    static const QStringList all = words(
        "<C> <R> <S> <B> <N> <Z> <U> <W2> <H2> <L1> <LS0> <LS3> <LS7> <LS8> <B:> <:B> <N:> <:N> <Z:> <:Z> <U:> <:U> "
        "<W2:> <:W2> <H2:> <:H2> <F1> <F2> <F3> <F4> <F5> <F0> <F12> <:> <X> <X:> <:X> <I> </I> <65> <#65> <#60> <#62> "
        "<#91> <#9> <200> <0> <> <#> <##> <-1> <abc> <b> <I>8</I> <s>");
    return all;
}

const QStringList &longTags()
{
    static const QStringList all = words("<ENTRIES> <entries> <DOCNO> <docno> <FISCAL_INFO> <SPECSYMBOLS=none> <#123> "
                                         "<1234> <AAAA+BBBB> <CCCC+DDDD,0.0> "
                                         "<EEEE+,000> <NONE> <aaaa> <,0.00>");
    return all;
}

/** The attributes' names. The value of one names only those behind it, unless the receipt is a cyclic one. */
const QStringList &names()
{
    static const QStringList all = words("AAAA BBBB CCCC DDDD EEEE FFFF GGGG");
    return all;
}

const QStringList &formats()
{
    static const QStringList all
        = words("0.00 0 000 0.0 000.000 0. 0.E . .0 # 0,0 dd.mm.yyyy hh:nn:ss mm.nn yy-M-d 0.0000000000");
    return all;
}

const QStringList &plainTexts()
{
    static const QStringList all = words("Milk a Чек ß İ € = & \" ' 1.00 0 : # , + B X")
        + QStringList{QStringLiteral(" "), QStringLiteral("   "), QStringLiteral("\t"), QString()};
    return all;
}

const QStringList &valueTexts()
{
    static const QStringList all
        = words("0 0.00 00 7 -7 007 12.50 12,50 -0.4 1e-13 1e-12 1e3 inf nan 1234567890123456789 "
                "0000000000000000000 12345678901234.5 Milk Чек [ ] < > <C <B>Milk a]b[c =")
        + QStringList{QString(), QStringLiteral("a\nb"), QStringLiteral(" "), QStringLiteral(" 7 ")};
    return all;
}

} // namespace

PrinterDocument Receipt::document() const
{
    PrinterDocument document;
    document.setIsCopy(isCopy);
    document.setEntries(entries);
    document.setAttributes(attributes);
    return document;
}

QString Receipt::toString() const
{
    QString text;
    QDebug(&text) << "template" << lines << "\nentries" << entries << "\nattributes" << attributes << "\ncopy" << isCopy
                  << "width" << width << "characters mode" << charactersMode;
    return text;
}

ReceiptMaker::ReceiptMaker(quint32 seed)
    : m_random(seed)
{
}

bool ReceiptMaker::oneIn(int count)
{
    return m_random.bounded(count) == 0;
}

QString ReceiptMaker::oneOf(const QStringList &all)
{
    return all.at(m_random.bounded(all.size()));
}

/** Up to @p most pieces: words, tags, and some of them put inside others. */
QString ReceiptMaker::text(int most)
{
    QString text;
    for (int left = m_random.bounded(most + 1); left > 0; --left) {
        const int at = oneIn(5) ? m_random.bounded(text.size() + 1) : text.size();
        text.insert(at, oneIn(2) ? oneOf(tags()) : oneOf(plainTexts()));
        if (oneIn(6)) {
            text.insert(at, QLatin1Char("[]<>:"[m_random.bounded(5)]));
        }
    }
    if (oneIn(12) && !text.isEmpty()) {
        text.remove(m_random.bounded(text.size()), 1);
    }
    return text;
}

QString ReceiptMaker::line(int most)
{
    QString line = text(most);
    for (int left = m_random.bounded(4); left > 0; --left) {
        const QString format = oneIn(2) ? QLatin1Char(',') + oneOf(formats()) : QString();
        QString piece = oneIn(4) ? oneOf(longTags()) : QStringLiteral("<%1%2>").arg(oneOf(names()), format);
        if (oneIn(3)) {
            piece = QLatin1Char('[') + text(2) + piece + text(2) + QLatin1Char(']');
        }
        line.insert(oneIn(2) ? line.size() : m_random.bounded(line.size() + 1), piece);
    }
    return line;
}

QString ReceiptMaker::textValue(int index)
{
    QString value = oneIn(3) ? text(3) : oneOf(valueTexts());
    const int first = m_isCyclic ? 0 : index + 1;
    for (int left = oneIn(4) ? m_random.bounded(3) : 0; left > 0 && first < names().size(); --left) {
        const QString name = names().at(m_random.bounded(first, names().size()));
        value.insert(m_random.bounded(value.size() + 1), QStringLiteral("<%1>").arg(name));
    }
    return value;
}

QVariant ReceiptMaker::value(int index)
{
    static const double doubles[] = {0, -0.5, 1.005, 1e-13, -1234.5, 1e300, std::numeric_limits<double>::quiet_NaN()};
    switch (m_random.bounded(20)) {
    case 0:
        return m_random.bounded(-20, 20);
    case 1:
        return m_random.generate();
    case 2:
        return static_cast<qint64>(m_random.generate64());
    case 3:
        return m_random.generate64();
    case 4:
        return doubles[m_random.bounded(7)];
    case 5:
        return m_random.bounded(1000.0);
    case 6:
        return oneIn(2);
    case 7:
        return QDate(2024, 3, 5);
    case 8:
        return QTime(14, 7, 9);
    case 9:
        return oneIn(2) ? QVariant(QDateTime(QDate(2024, 3, 5), QTime(14, 7, 9))) : QVariant(QDateTime());
    case 10:
        return oneIn(2) ? QVariant() : QVariant(QByteArray("<B>"));
    default:
        return textValue(index);
    }
}

Receipt ReceiptMaker::receipt()
{
    Receipt receipt;
    m_isCyclic = oneIn(400);
    for (int left = m_random.bounded(1, 6); left > 0; --left) {
        receipt.lines.append(oneIn(8) ? QString() : line(5));
    }
    for (int left = m_random.bounded(4); left > 0; --left) {
        receipt.entries += line(2) + (oneIn(2) ? QStringLiteral("=\t") : QStringLiteral("\t"));
    }
    if (!m_isCyclic && !oneIn(200)) {
        receipt.entries.replace(QStringLiteral("<ENTRIES>"), QStringLiteral("E"), Qt::CaseInsensitive);
    }
    for (int i = 0; i < names().size(); ++i) {
        if (!oneIn(6)) {
            receipt.attributes.insert(names().at(i), value(i));
        }
    }
    if (m_isCyclic) {
        receipt.attributes.insert(names().constFirst(), text(2) + QStringLiteral("<AAAA>") + text(2));
        receipt.lines.append(QStringLiteral("<AAAA>"));
    }
    receipt.isCopy = oneIn(3);
    receipt.width = m_random.bounded(-1, 50);
    receipt.charactersMode = oneIn(2) ? 0 : m_random.bounded(4);
    return receipt;
}
