// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "lintrules.h"
#include "paperline.h"

#include <QHash>
#include <QTextCodec>

#include <algorithm>

namespace printsrv {

using ESource = ReceiptTrace::ESource;

namespace {

constexpr int FontCount = 4;
constexpr int LongestAmount = 30;

/** Lines that are wider than the paper. */
class WidthCheck
{
public:
    WidthCheck(const LintContext &context, const PaperLine &paper, Findings &findings)
        : m_context(context)
        , m_paper(paper)
        , m_findings(findings)
    {
    }

    void check(const Trial &receipt)
    {
        for (const ReceiptTrace::Line &line : receipt.lines) {
            const LineWidth width = m_paper.measured(line);
            if (width.edge >= 0) {
                add(receipt, line, width);
            }
        }
    }

    /** With the samples all groups stay: what lines hold that no receipt has shown. */
    void checkSamples()
    {
        const QSet<int> known = m_lines;
        for (const ReceiptTrace::Line &line : m_context.samples.lines) {
            const LineWidth width = m_paper.measured(line);
            if (width.edge >= 0 && !known.contains(lineOf(m_context.samples, line.origins.at(width.edge)))) {
                add(m_context.samples, line, width);
            }
        }
    }

private:
    int lineOf(const Trial &receipt, ReceiptTrace::Origin origin) const
    {
        return receipt.trace.placeOf(origin).line;
    }

    void add(const Trial &receipt, const ReceiptTrace::Line &line, const LineWidth &width)
    {
        const bool isGap = width.text <= m_paper.width();
        const ReceiptTrace::Origin origin = line.origins.at(isGap ? line.text.indexOf(QLatin1Char('\t')) : width.edge);
        m_lines.insert(lineOf(receipt, origin));
        m_findings.addMade(isGap ? ELintCode::NoGap : ELintCode::LineTooWide, receipt.spotOf(origin), [&] {
            return isGap ? QStringLiteral("the sides of the line take %1; with the blank between them the end is cut%2")
                               .arg(m_paper.share(width.text), receipt.whence(origin))
                         : QStringLiteral("the line takes %1 of the paper; it is cut from here on%2")
                               .arg(m_paper.share(width.all()), receipt.whence(origin));
        });
    }

    const LintContext &m_context;
    const PaperLine &m_paper;
    Findings &m_findings;
    QSet<int> m_lines; // of the template, that were found
};

QString hostileValue(const ReceiptTrace::Source &source)
{
    if (source.kind == ESource::Entries) {
        return QStringLiteral("a long entry");
    }
    const bool isAmount = source.text.size() < LongestAmount;
    return QStringLiteral("%1 as %2").arg(isAmount ? source.text : QStringLiteral("a long text"), source.name);
}

void addHostile(const Trial &receipt, ReceiptTrace::Origin origin, const QString &share, Findings &findings)
{
    findings.addMade(ELintCode::HostileWidth, receipt.offsetOf(origin), [&] {
        return QStringLiteral("with %1 the line takes %2 of the paper")
            .arg(hostileValue(receipt.sources.at(origin.source)), share);
    });
}

/** Lines that unusual values make too wide. */
void checkHostileWidth(const Trial &receipt, const PaperLine &paper, Findings &findings)
{
    const auto isValue = [&receipt](ReceiptTrace::Origin origin) {
        const ESource kind = receipt.kindOf(origin);
        return kind == ESource::Attribute || kind == ESource::Entries;
    };
    for (const ReceiptTrace::Line &line : receipt.lines) {
        const LineWidth width = paper.measured(line);
        const auto value = std::find_if(line.origins.cbegin(), line.origins.cend(), isValue);
        if (width.edge >= 0 && value != line.origins.cend()) {
            addHostile(receipt, *value, paper.share(width.all()), findings);
        }
    }
}

/** Whether the printer's code page has a character; asked once for each. */
class CodePage
{
public:
    explicit CodePage(const QTextCodec &codec)
        : m_codec(codec)
    {
    }

    bool has(const QString &character)
    {
        const auto known = m_known.constFind(character);
        return known != m_known.constEnd() ? *known : *m_known.insert(character, m_codec.canEncode(character));
    }

private:
    const QTextCodec &m_codec;
    QHash<QString, bool> m_known;
};

/** Each character that an entry or a value brings is told by itself. */
void addCharacter(const Trial &receipt, const QTextCodec &codec, const QString &character, ReceiptTrace::Origin origin,
                  Findings &findings)
{
    constexpr int BitsOfCharacter = 21;
    const uint number = character.toUcs4().constFirst();
    const Spot spot = receipt.spotOf(origin);
    findings.addMade(ELintCode::CodecLacksCharacter, {spot.offset, spot.detail << BitsOfCharacter | number}, [&] {
        return QStringLiteral("%1 has no “%2” (U+%3)%4")
            .arg(QString::fromLatin1(codec.name()), character,
                 QString::number(number, 16).toUpper().rightJustified(4, QLatin1Char('0')), receipt.whence(origin));
    });
}

/** Characters of which @p isOurs; the others are looked at with another receipt. */
template<typename IsOurs>
void checkCharacters(const Trial &receipt, const QTextCodec &codec, IsOurs isOurs, Findings &findings)
{
    CodePage page(codec);
    for (const ReceiptTrace::Line &line : receipt.lines) {
        for (int i = 0; i < line.text.size(); ++i) {
            // A character placed by its number is a byte of the code page already, one below the blank a symbol.
            const bool isByte
                = (byteAt(line.format, i) & CharFormatPlacedByCode) != 0 || line.text.at(i) < QLatin1Char(' ');
            const ReceiptTrace::Origin origin = line.origins.at(i);
            const bool isPair = i + 1 < line.text.size() && isSecondOfPair(line.text, i + 1);
            const QString character = line.text.mid(i, isPair ? 2 : 1);
            i += isPair ? 1 : 0;
            if (!isByte && isOurs(origin) && !page.has(character)) {
                addCharacter(receipt, codec, character, origin, findings);
            }
        }
    }
}

void checkCodec(const LintContext &context, const QTextCodec &codec, Findings &findings)
{
    for (const Trial &receipt : context.receipts) {
        checkCharacters(
            receipt, codec, [](ReceiptTrace::Origin) { return true; }, findings);
    }
    // In the samples all groups of the template stay; their values are lint's own.
    checkCharacters(
        context.samples, codec, [](ReceiptTrace::Origin origin) { return origin.source == 0; }, findings);
}

struct Ability
{
    const char *letter;
    bool (PrinterInfo::*has)() const;
    const char *what;
};

constexpr Ability Abilities[] = {
    {"B", &PrinterInfo::bold, "bold"},
    {"N", &PrinterInfo::italic, "italic"},
    {"U", &PrinterInfo::underline, "underline"},
    {"Z", &PrinterInfo::inversion, "inversion"},
    {"W2", &PrinterInfo::doubleWidth, "double width"},
    {"H2", &PrinterInfo::doubleHeight, "double height"},
};

bool hasFont(const PrinterInfo &model, int number)
{
    const auto fonts = model.fontTypes();
    return std::any_of(fonts.cbegin(), fonts.cend(), [number](const FontInfo &font) { return font.id() == number; });
}

/** What @p name, from between the brackets of a tag, asks for that the model cannot; an empty text when it can. */
QString lackOf(const PrinterInfo &model, QStringView name)
{
    const QStringView letter = name.endsWith(QLatin1Char(':')) ? name.chopped(1) : name;
    for (const Ability &ability : Abilities) {
        if (letter == QLatin1String(ability.letter) && !(model.*ability.has)()) {
            return QLatin1String(ability.what);
        }
    }
    if (name.startsWith(QLatin1String("LS")) && name != QLatin1String("LS0") && !model.lineSpacing()) {
        return QStringLiteral("line spacing");
    }
    const int font = name.startsWith(QLatin1Char('F')) ? name.mid(1).toString().toInt() : 0;
    const int number = font > FontCount ? font % FontCount : font - 1;
    return font == 0 || hasFont(model, number) ? QString() : QStringLiteral("font %1").arg(number);
}

void checkAbilities(const Trial &receipt, const PrinterInfo &model, Findings &findings)
{
    for (const ReceiptTrace::Tag &tag : receipt.tags) {
        const QString missing = tag.isCode ? QString() : lackOf(model, insideOf(tag));
        if (!missing.isEmpty()) {
            findings.add(ELintCode::ModelLacksFormat, receipt.offsetOf(tag.first),
                         QStringLiteral("%1 has no %2, the tag does nothing").arg(model.id(), missing));
        }
    }
}

bool takesSymbols(const PrinterInfo &model, int number)
{
    const auto fonts = model.fontTypes();
    return std::any_of(fonts.cbegin(), fonts.cend(),
                       [number](const FontInfo &font) { return font.id() == number && font.customSymbols(); });
}

bool isSymbol(const ReceiptTrace::Line &line, int index)
{
    const ushort code = line.text.at(index).unicode();
    return code >= 1 && code <= 7 && (byteAt(line.format, index) & CharFormatPlacedByCode) == 0;
}

/** Special symbols in a font that takes none of the user's. */
void checkSymbolFonts(const Trial &receipt, const PrinterInfo &model, Findings &findings)
{
    const QString what = QStringLiteral("font %1 of %2 takes no special symbols");
    for (const ReceiptTrace::Line &line : receipt.lines) {
        for (int i = 0; i < line.text.size(); ++i) {
            const int font = byteAt(line.font, i);
            if (isSymbol(line, i) && !takesSymbols(model, font)) {
                findings.add(ELintCode::ModelLacksSymbols, receipt.offsetOf(line.origins.at(i)),
                             what.arg(font).arg(model.id()));
            }
        }
    }
}

} // namespace

void checkPaper(const LintContext &context, Findings &findings)
{
    const LintOptions &options = context.options;
    const PaperLine paper(options);
    if (options.codec != nullptr) {
        checkCodec(context, *options.codec, findings);
    }
    if (paper.width() > 0) {
        WidthCheck widths(context, paper, findings);
        for (const Trial &receipt : context.receipts) {
            widths.check(receipt);
        }
        widths.checkSamples();
        for (const Trial &receipt : context.hostile) {
            checkHostileWidth(receipt, paper, findings);
        }
    }
    if (options.model) {
        checkAbilities(context.samples, *options.model, findings);
        checkSymbolFonts(context.samples, *options.model, findings);
    }
}

} // namespace printsrv
