// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "textprinterdocument.h"

#include "documentblockhtml.h"
#include "memoryguard.h"
#include "symbolpictures.h"

#include <limits>

namespace {

constexpr int PreviewWidth = 80;

QString documentHtml(const QList<DocumentBlock> &blocks, bool table, const SpecialCharacters &symbols)
{
    using printsrv::EHtmlForm;
    printsrv::SymbolPictures pictures(symbols);
    const printsrv::HtmlStyle style{table ? EHtmlForm::TableRow : EHtmlForm::Preformatted, 0, &pictures};
    QString html = QStringLiteral("<html><head>\n"
                                  "<meta http-equiv=\"Content-Type\" content=\"text/html; charset=UTF-8\">\n"
                                  "</head><body>\n");
    // Contract: no blank before cellspacing.
    html += table ? QLatin1String("<p><table width=\"100%\"cellspacing=0 cellpadding=0>\n") : QLatin1String();
    for (const DocumentBlock &block : blocks) {
        printsrv::appendBlockHtml(html, block, style);
        html += QLatin1Char('\n');
    }
    html += table ? QLatin1String("</table></p>\n") : QLatin1String();
    return html + QLatin1String("</body></html>");
}

} // namespace

QList<DocumentBlock> TextPrinterDocument::blocks() const
{
    return m_blocks;
}

void TextPrinterDocument::setBlocks(const QList<DocumentBlock> &blocks)
{
    m_blocks = blocks;
}

void TextPrinterDocument::appendBlock(const DocumentBlock &block)
{
    m_blocks.append(block);
}

void TextPrinterDocument::prependBlock(const DocumentBlock &block)
{
    m_blocks.prepend(block);
}

QMultiMap<signed char, MonochromeImage> TextPrinterDocument::charImages() const
{
    return m_charImages;
}

void TextPrinterDocument::setCharImages(const QMultiMap<signed char, MonochromeImage> &charImages)
{
    m_charImages = charImages;
}

QFlags<EPrinterTicketAction> TextPrinterDocument::prevTicketAction() const
{
    return m_prevTicketAction;
}

void TextPrinterDocument::setPrevTicketAction(const QFlags<EPrinterTicketAction> &prevTicketAction)
{
    m_prevTicketAction = prevTicketAction;
}

QFlags<EPrinterTicketAction> TextPrinterDocument::currentTicketAction() const
{
    return m_currentTicketAction;
}

void TextPrinterDocument::setCurrentTicketAction(const QFlags<EPrinterTicketAction> &currentTicketAction)
{
    m_currentTicketAction = currentTicketAction;
}

int TextPrinterDocument::retractionTimeout() const
{
    return m_retractionTimeout;
}

void TextPrinterDocument::setRetractionTimeout(const int &retractionTimeout)
{
    m_retractionTimeout = retractionTimeout;
}

QFlags<EPaperLoopFlag> TextPrinterDocument::loopPolicy() const
{
    return m_loopPolicy;
}

void TextPrinterDocument::setLoopPolicy(const QFlags<EPaperLoopFlag> &loopPolicy)
{
    m_loopPolicy = loopPolicy;
}

bool TextPrinterDocument::doInit() const
{
    return m_doInit;
}

void TextPrinterDocument::setDoInit(bool doInit)
{
    m_doInit = doInit;
}

int TextPrinterDocument::symbolsPerLine() const
{
    return m_symbolsPerLine;
}

void TextPrinterDocument::setSymbolsPerLine(const int &symbolsPerLine)
{
    m_symbolsPerLine = symbolsPerLine;
}

int TextPrinterDocument::symbolsCount() const
{
    qint64 count = 0;
    for (const DocumentBlock &block : m_blocks) {
        count += block.symbolsCount();
    }
    return static_cast<int>(qMin<qint64>(count * 6 / 5, std::numeric_limits<int>::max()));
}

QStringList TextPrinterDocument::toStringList() const
{
    return printsrv::madeOrEmpty("lines of a document", [&] {
        QStringList result;
        for (DocumentBlock block : m_blocks) {
            result += block.toStringList(PreviewWidth); // Contract: not symbolsPerLine
        }
        return result;
    });
}

void TextPrinterDocument::toUpper()
{
    for (DocumentBlock &block : m_blocks) {
        block.toUpper();
    }
}

void TextPrinterDocument::toLower()
{
    for (DocumentBlock &block : m_blocks) {
        block.toLower();
    }
}

QString TextPrinterDocument::toHtml(bool table, const SpecialCharacters &symbols) const
{
    return printsrv::madeOrEmpty("HTML of a document", [&] { return documentHtml(m_blocks, table, symbols); });
}

bool TextPrinterDocument::operator==(const TextPrinterDocument &other) const
{
    return m_blocks == other.m_blocks && m_charImages == other.m_charImages
        && m_prevTicketAction == other.m_prevTicketAction && m_currentTicketAction == other.m_currentTicketAction
        && m_retractionTimeout == other.m_retractionTimeout && m_loopPolicy == other.m_loopPolicy
        && m_doInit == other.m_doInit && m_symbolsPerLine == other.m_symbolsPerLine;
}

bool TextPrinterDocument::operator!=(const TextPrinterDocument &other) const
{
    return !(*this == other);
}

QDebug operator<<(QDebug debug, const TextPrinterDocument &document)
{
    const QDebugStateSaver saver(debug);
    debug.nospace() << "TextPrinterDocument(" << document.blocks().size() << " blocks, " << document.charImages().size()
                    << " images, ticket actions " << int(document.prevTicketAction()) << ' '
                    << int(document.currentTicketAction()) << ", retraction " << document.retractionTimeout()
                    << ", loop " << int(document.loopPolicy()) << ", init " << document.doInit() << ", "
                    << document.symbolsPerLine() << " symbols a line)";
    return debug;
}
