// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_PRINTERDOCUMENTFORMATTER_H
#define PRINTSRV_PRINTERDOCUMENTFORMATTER_H

#include "documentblock.h"
#include "specialcharacters.h"

#include <QDateTime>
#include <QList>
#include <QObject>
#include <QSharedPointer>
#include <QStringList>

class PrinterDocument;
class TextPrinterDocument;

/**
 * Fills a receipt template from a PrinterDocument and turns the result into plain text, HTML or a TextPrinterDocument.
 *
 * A template is plain text, one receipt line per line, with tags: "<TOTAL,0.00>" is replaced by an attribute's value,
 * "[…]" is a group that vanishes with a zero or empty value in it, "<ENTRIES>" becomes the entry lines, "<C>", "<B>"
 * and the like format the line. No conversion fails: what a template asks for in vain prints nothing.
 *
 * Substituted values are read again, so that a value may hold formatting tags. Text that comes from outside goes
 * through escapeValue() first. As values can name themselves, one line takes at most 10,000 substitutions and 1,048,576
 * characters, and one document at most 1,000 expansions of "<ENTRIES>" that add at most 16,777,216 characters after the
 * first; past a limit the rest of the line stays as it is and one warning names the line. The values that one document
 * puts in have at most 16,777,216 characters; past that limit the rest of the document stays as it is, with one
 * warning.
 *
 * No event loop and no display are needed. Reentrant: a formatter belongs to one thread at a time, since its const
 * operations may load the special symbols that the template names.
 */
class Q_DECL_EXPORT PrinterDocumentFormatter : public QObject
{
    Q_OBJECT

public:
    /** Where a text of escapeValue() will stand. */
    enum class EValuePlace {
        Attribute, /**< The value of an attribute of a PrinterDocument. */
        Entry, /**< A part of PrinterDocument::entries(), where "=" and TAB have a meaning of their own. */
    };
    Q_ENUM(EValuePlace)

    /**
     * Makes a formatter without a template.
     *
     * @param number belongs to the caller: it is kept and handed on by splitByFiscalInfo(), nothing else reads it
     * @param parent owner, or none
     *
     * The folder of special symbols starts as CheckTemplatesSettings::checkTemplatesPath().
     */
    explicit PrinterDocumentFormatter(int number = 0, QObject *parent = nullptr);
    ~PrinterDocumentFormatter() override;

    /** True when the template holds at least one line. */
    bool isValid() const;

    /** Replaces the template by @p text, split at "\n"; empty lines are kept. An empty text gives one empty line. */
    void setTemplate(const QString &text);

    /** The lines of the template; none until a template is set. */
    QStringList getTemplate() const;

    /**
     * Reads the template from a file, in the encoding that @p codec names ("UTF-8", "cp866", …).
     *
     * A byte order mark wins over the name, and an unknown name leaves the encoding of the locale, as QTextStream has
     * it.
     *
     * @return true when the template now has at least one line; an empty file leaves the formatter without a template.
     * A file that cannot be opened or read, or that is longer than 33,554,432 characters, gives false, one warning with
     * its name and the reason, and leaves the template as it was.
     */
    bool loadTemplate(const QString &fileName, const char *codec);

    /** Folder in which "<SPECSYMBOLS=name>" finds the special-symbol files. */
    QString specCharsPath() const;
    void setSpecCharsPath(const QString &path);

    /**
     * Cuts the template at "<FISCAL_INFO>" (in upper or lower case) and returns a formatter for the main part and one
     * for the fiscal part, in this order; a part without lines is left out, so that the list has none, one or two
     * formatters.
     *
     * The new formatters have no parent, this formatter's number and its folder of special symbols.
     */
    QList<QSharedPointer<PrinterDocumentFormatter>> splitByFiscalInfo();

    /**
     * Returns @p document as lines of text for a printer of @p width characters a line, laid out as
     * DocumentBlock::toStringList() does; an empty line is all blanks.
     */
    QString toPlainText(const PrinterDocument &document, int width) const;
    /** The same as toPlainText() for a text whose lines are already prepared; no template is needed. */
    QString plainTextToFormattedPlainText(const QString &text, int width) const;

    /** Returns @p document as an HTML fragment, a table with one row a line. @p flag is accepted without effect. */
    QString toHtml(const PrinterDocument &document, bool flag) const;
    /** The same as toHtml() for a text whose lines are already prepared; no template is needed. */
    QString plainTextToHtml(const QString &text, bool flag) const;

    /** Returns @p document as a whole HTML page. @p flag is accepted without effect. */
    QString toHtmlDocument(const PrinterDocument &document, bool flag) const;
    /** The same as toHtmlDocument() for a text whose lines are already prepared; no template is needed. */
    QString plainTextToHtmlDocument(const QString &text, bool flag) const;

    /**
     * Returns @p document ready for a printer driver: the formatted lines as blocks, with the images of the special
     * symbols.
     *
     * A document made from at least one line begins with one empty, left-aligned line; one made from no lines has no
     * blocks. The current ticket action is no action at all: the caller sets it.
     */
    TextPrinterDocument toTextPrinterDocument(const PrinterDocument &document) const;
    /** The same as toTextPrinterDocument() for a text whose lines are already prepared; no template is needed. */
    TextPrinterDocument plainTextToTextPrinterDocument(const QString &text) const;

    /**
     * Formats one prepared line: takes its formatting tags out and returns its text with a font and a format byte for
     * every character.
     *
     * @param line one line; an empty one gives a block of one empty line
     * @param format the character format carried from line to line, changed by span markers such as "<B:>"; bit 0x40 is
     * cleared
     * @param font the font carried from line to line, changed by font tags such as "<F2>"
     * @param alignment receives the alignment of the line; an empty line keeps it
     * @param lineSpacing the spacing of a line without a line-spacing tag, "<LS0>" to "<LS7>"
     */
    DocumentBlock formatPrintStr(const QString &line, unsigned char &format, unsigned char &font,
                                 ETextAlignment &alignment, int lineSpacing) const;

    /** Returns the template's lines filled from @p document; what is left in them are the tags of line formatting. */
    QStringList prepareDocument(const PrinterDocument &document) const;

    /** Inserts the copy mark after the first line with "<DOCNO>" (in upper or lower case) when @p document is a copy.
     */
    void addCopyInfo(QStringList &lines, const PrinterDocument &document) const;

    /** Replaces "<ENTRIES>" (in upper or lower case) by the entry lines of @p document. */
    void unpackEntries(QStringList &lines, const PrinterDocument &document) const;

    /**
     * Takes the lines "<SPECSYMBOLS=name>" out and loads the special symbols that the last of them names, from
     * specCharsPath(); ".ssi" is appended to a name without it. A missing file is no error: the symbols loaded before
     * stay.
     */
    void loadSpecSymbols(QStringList &lines) const;

    /** Removes the X parts, from "<X:>" to "<:X>", or only their markers when @p remove is false. No lines stay none.
     */
    void removeXParts(QStringList &lines, bool remove) const;
    /** Empties a line that holds "<X>", or only deletes the tag when @p remove is false. */
    void removeXParts(QString &line, bool remove) const;

    /** Returns @p line with every attribute tag replaced by its value, and without the groups that a zero or empty
     * value removes. */
    QString processDocAttributes(const QString &line, const PrinterDocument &document) const;

    /** Returns the text of the attribute @p name in @p format; a missing attribute gives an empty text. */
    QString nameToVal(const QString &name, const PrinterDocument &document, QString &format) const;

    /**
     * Replaces a sum "A+B+…" of attributes by its text in @p format.
     *
     * @return false when @p expression holds no "+"; it is then left as it is. Values that are no numbers add 0.
     */
    bool summAttributes(QString &expression, const PrinterDocument &document, QString &format) const;

    /**
     * Cuts the next attribute tag out of @p line and returns what stood between its brackets.
     *
     * @param line the line, which loses the tag
     * @param pos where to look from; moved to the place of the tag, behind a formatting tag (at most three characters
     * between the brackets; the result is empty), or to the end of a line without a further tag (likewise)
     */
    QString extractAttr(QString &line, int &pos) const;

    /** Parts "name,format" into @p name and @p format; the format is empty without a comma. */
    void extractFormat(QString &name, QString &format) const;

    /** Removes the group "[…]" around @p pos from @p line when @p value is empty or a number of at most 1e-12. */
    void removeGroupIfZero(int pos, QString &line, const QString &value) const;

    /** Index of the "[" that is open at @p from, looking left from there; -1 when there is none. */
    int scanL(const QString &line, int from) const;
    /** Index of the "]" that closes the group around @p from, looking right from there; -1 when there is none. */
    int scanR(const QString &line, int from) const;

    /** Returns @p value padded with zeros to the length of @p format from its first "0" on; a longer number is not cut.
     */
    QString intToString(const QString &format, qint64 value) const;

    /**
     * Returns @p value with as many fraction digits as @p format has behind its point, rounded half away from zero, and
     * the integer part as intToString() pads it; an empty format is "0.00".
     *
     * A format without a point gives a whole number; one that ends in its point six decimals, one with an "E" behind
     * the point six significant digits. Contract: a value between -1 and 0 loses its sign, unless it rounds to -1.
     */
    QString floatToString(const QString &format, double value) const;

    /** Returns @p date in @p format, in which "m" is the month; "dd.MM.yy" when empty. An invalid date is no text. */
    QString dateToString(const QString &format, const QDate &date) const;
    /** Returns @p time in @p format, in which "n" is the minute; "hh:mm" when empty. An invalid time is no text. */
    QString timeToString(const QString &format, const QTime &time) const;
    /** Returns @p dateTime in @p format, as the two above; "dd.MM.yy hh:mm" when empty. */
    QString dtToString(const QString &format, const QDateTime &dateTime) const;

    /**
     * Returns @p text, which comes from outside (a name, a note), in a form that prints as it was, at @p place.
     *
     * "<", "[" and "]", in entries "=" too, become character codes such as "<#60>", and control characters, TAB and
     * line ends among them, go. An attribute's text that would be read as a number ("007", "inf") gets the empty tag
     * "<:>" in front, so that it prints unchanged and is never taken for a zero.
     */
    static QString escapeValue(const QString &text, EValuePlace place = EValuePlace::Attribute);

private:
    QStringList m_template;
    QString m_specCharsPath;
    int m_number;
    mutable SpecialCharacters m_specialCharacters;
};

#endif
