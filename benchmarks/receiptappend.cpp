// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "receiptappend.h"

#include <QDateTime>

namespace workload {

namespace {

constexpr char Bold = 0x01;
constexpr char DoubleWidth = 0x10;

/** Lines of plain text, padded to the width. */
class TextWriter
{
public:
    void left(const QString &text, char)
    {
        line(text);
    }

    void center(const QString &text, char)
    {
        line(QString((Width - text.size()) / 2, QLatin1Char(' ')) + text);
    }

    void sides(const QString &left, const QString &right, char)
    {
        line(left);
        m_out += QString(Width - left.size() - right.size(), QLatin1Char(' '));
        m_out += right;
    }

    void blank()
    {
        line(QString(Width, QLatin1Char(' ')));
    }

    QString result() const
    {
        return m_out;
    }

private:
    void line(const QString &text)
    {
        if (!m_out.isEmpty()) {
            m_out += QLatin1Char('\n');
        }
        m_out += text;
    }

    QString m_out;
};

/** Rows of an HTML table. */
class HtmlWriter
{
public:
    void left(const QString &text, char format)
    {
        row(QLatin1String("<tr><td colspan=\"2\" align = \"left\"> "), text, format);
    }

    void center(const QString &text, char format)
    {
        row(QLatin1String("<tr><td colspan=\"2\" align = \"center\"> "), text, format);
    }

    void sides(const QString &left, const QString &right, char format)
    {
        lineBreak();
        m_out += QLatin1String("<tr><td align = \"left\"> ");
        run(left, format);
        m_out += QLatin1String(" </td><td align = \"right\"> ");
        run(right, format);
        m_out += QLatin1String(" </td></tr>");
    }

    void blank()
    {
        lineBreak();
        m_out += QLatin1String("<br>");
    }

    QString result() const
    {
        return m_out + QLatin1String("</table></p>");
    }

private:
    void row(QLatin1String opening, const QString &text, char format)
    {
        lineBreak();
        m_out += opening;
        run(text, format);
        m_out += QLatin1String(" </td></tr>");
    }

    void run(const QString &text, char format)
    {
        if ((format & Bold) != 0) {
            m_out += QLatin1String("<b>");
        }
        m_out += QLatin1String("<font size = 1>");
        m_out += text.toHtmlEscaped();
        m_out += QLatin1String("</font>");
        if ((format & Bold) != 0) {
            m_out += QLatin1String("</b>");
        }
    }

    void lineBreak()
    {
        if (!m_isFirst) {
            m_out += QLatin1Char('\n');
        }
        m_isFirst = false;
    }

    QString m_out = QStringLiteral("<p><table width=\"100%\"cellspacing=0 cellpadding=0>");
    bool m_isFirst = true;
};

/** Lists of lines with a font and a format byte for each character. */
class LinesWriter
{
public:
    LinesWriter()
    {
        add(QString(), TextAlignLeft, 0);
    }

    void left(const QString &text, char format)
    {
        add(text, TextAlignLeft, format);
    }

    void center(const QString &text, char format)
    {
        add(text, TextAlignCenter, format);
    }

    void sides(const QString &left, const QString &right, char format)
    {
        add(left + QLatin1Char('\t') + right, TextAlignFullWidth, format);
    }

    void blank()
    {
        add(QString(), m_runs.last().alignment, 0);
    }

    QList<AppendedLines> result() const
    {
        return m_runs;
    }

private:
    void add(const QString &text, ETextAlignment alignment, char format)
    {
        if (m_runs.isEmpty() || m_runs.last().alignment != alignment) {
            m_runs.append(AppendedLines{alignment, {}, {}, {}, {}});
        }
        AppendedLines &run = m_runs.last();
        run.text.append(text);
        run.font.append(QByteArray(text.size(), 0));
        run.format.append(QByteArray(text.size(), format));
        run.lineSpacing.append(0);
    }

    QList<AppendedLines> m_runs;
};

QString amountText(const QVariantMap &attributes, const QString &name)
{
    return QString::number(attributes.value(name).toDouble(), 'f', 2);
}

QString numberText(const QVariantMap &attributes, const QString &name, int digits)
{
    return QString::number(attributes.value(name).toInt()).rightJustified(digits, QLatin1Char('0'));
}

template<typename Writer>
void writeHead(Writer &out, const Texts &texts, const QVariantMap &data)
{
    out.center(texts.shop, Bold | DoubleWidth);
    out.center(texts.address, 0);
    out.center(texts.phone, 0);
    out.blank();
    out.sides(texts.receipt + numberText(data, QStringLiteral("NUMBER"), 6),
              data.value(QStringLiteral("DATE_TIME")).toDateTime().toString(QStringLiteral("dd.MM.yyyy hh:mm")), 0);
    out.sides(texts.cashier, data.value(QStringLiteral("CASHIER")).toString(), 0);
    out.sides(texts.terminal + numberText(data, QStringLiteral("TERMINAL"), 4),
              texts.shift + numberText(data, QStringLiteral("SHIFT"), 3), 0);
    out.left(texts.ruler, 0);
}

template<typename Writer>
void writeSums(Writer &out, const Texts &texts, const QVariantMap &data)
{
    static const QString conditional[6] = {QLatin1String(ConditionalAmounts[0]), QLatin1String(ConditionalAmounts[1]),
                                           QLatin1String(ConditionalAmounts[2]), QLatin1String(ConditionalAmounts[3]),
                                           QLatin1String(ConditionalAmounts[4]), QLatin1String(ConditionalAmounts[5])};
    out.left(texts.ruler, 0);
    out.sides(texts.subtotal, amountText(data, QStringLiteral("SUBTOTAL")), 0);
    for (int i = 0; i < 6; ++i) {
        const double amount = data.value(conditional[i]).toDouble();
        if (amount != 0.0) {
            out.sides(texts.conditional[i], QString::number(amount, 'f', 2), 0);
        }
    }
    out.sides(texts.total, amountText(data, QStringLiteral("TOTAL")), Bold);
    out.sides(texts.cash, amountText(data, QStringLiteral("CASH")), 0);
    out.sides(texts.change, amountText(data, QStringLiteral("CHANGE")), 0);
    out.sides(texts.vat, amountText(data, QStringLiteral("VAT_INCLUDED")), 0);
    out.left(texts.ruler, 0);
}

template<typename Writer>
void writeReceipt(Writer &out, const Texts &texts, const Receipt &receipt)
{
    const QVariantMap &data = receipt.attributes;
    const QString dateFormat = QStringLiteral("dd.MM.yyyy");
    writeHead(out, texts, data);
    for (const Entry &entry : receipt.entries) {
        out.sides(entry.name, entry.price, 0);
    }
    writeSums(out, texts, data);
    out.sides(texts.shiftOpened, data.value(QStringLiteral("SHIFT_OPENED")).toDate().toString(dateFormat), 0);
    out.sides(texts.returnUntil, data.value(QStringLiteral("RETURN_UNTIL")).toDate().toString(dateFormat), 0);
    out.blank();
    for (const QString &text : texts.farewell) {
        out.center(text, 0);
        out.blank();
    }
}

} // namespace

QString appendedText(const Texts &texts, const Receipt &receipt)
{
    TextWriter out;
    writeReceipt(out, texts, receipt);
    return out.result();
}

QString appendedHtml(const Texts &texts, const Receipt &receipt)
{
    HtmlWriter out;
    writeReceipt(out, texts, receipt);
    return out.result();
}

QList<AppendedLines> appendedLines(const Texts &texts, const Receipt &receipt)
{
    LinesWriter out;
    writeReceipt(out, texts, receipt);
    return out.result();
}

} // namespace workload
