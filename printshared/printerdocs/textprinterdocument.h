// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_TEXTPRINTERDOCUMENT_H
#define PRINTSRV_TEXTPRINTERDOCUMENT_H

#include "documentblock.h"
#include "paperloopflag.h"

#include <QDebug>
#include <QFlags>
#include <QList>
#include <QMap>
#include <QMetaType>
#include <QMultiMap>
#include <QString>
#include <QStringList>

/**
 * What is done with a ticket once it is printed, as a set of flags.
 *
 * The library stores and hands on any bits unchanged; what a printer can do of it is its driver's business.
 */
enum EPrinterTicketAction : int {
    TicketNoAction = 0, /**< The paper stays where it is; the default. */
    TicketCut = 0x01, /**< The paper is cut behind the ticket. */
    TicketPresent = 0x02, /**< The ticket is held out to the customer. */
    TicketEject = 0x04, /**< The ticket is thrown out. */
    TicketRetract = 0x08, /**< A ticket that nobody took is drawn back when the retraction time is over. */
};

Q_DECLARE_OPERATORS_FOR_FLAGS(QFlags<EPrinterTicketAction>)

/**
 * What a text printer is handed: blocks in the order of printing, the character images that they need, what to do with
 * this ticket and the one before it, and the width of a line.
 *
 * A document can be kept in a file: compact JSON, guarded by a file with its SHA-1 sum and by a copy of both, so that
 * it survives power cuts and a damaged file is noticed. A value; reentrant, and one document belongs to one thread at a
 * time.
 */
class Q_DECL_EXPORT TextPrinterDocument
{
public:
    /** Makes a document without blocks and images that initialises the printer; all numbers are 0. */
    TextPrinterDocument() = default;

    /** Makes a document and fills it as setMap() does. */
    explicit TextPrinterDocument(const QMap<QString, QVariant> &map);

    /** The blocks in the order of printing; empty by default. */
    QList<DocumentBlock> blocks() const;
    void setBlocks(const QList<DocumentBlock> &blocks);

    /** Adds a block at the end, whatever it holds. */
    void appendBlock(const DocumentBlock &block);
    /** Adds a block at the front, whatever it holds. */
    void prependBlock(const DocumentBlock &block);

    /** The images that the printer downloads, by character code; empty by default. */
    QMultiMap<signed char, MonochromeImage> charImages() const;
    void setCharImages(const QMultiMap<signed char, MonochromeImage> &charImages);

    /** The action that ends the ticket before this one; none by default. */
    QFlags<EPrinterTicketAction> prevTicketAction() const;
    void setPrevTicketAction(const QFlags<EPrinterTicketAction> &prevTicketAction);

    /** The action for this ticket; none by default. */
    QFlags<EPrinterTicketAction> currentTicketAction() const;
    void setCurrentTicketAction(const QFlags<EPrinterTicketAction> &currentTicketAction);

    /** How long the printer waits for the ticket to be taken, in the unit of its driver; 0 by default, any value. */
    int retractionTimeout() const;
    void setRetractionTimeout(const int &retractionTimeout);

    /** How the printer forms its paper loop; as configured by default. */
    QFlags<EPaperLoopFlag> loopPolicy() const;
    void setLoopPolicy(const QFlags<EPaperLoopFlag> &loopPolicy);

    /** Whether the printer is initialised before it prints; true by default. */
    bool doInit() const;
    void setDoInit(bool doInit);

    /** The printer's line width in characters; 0, the default, when it is not known. */
    int symbolsPerLine() const;
    void setSymbolsPerLine(const int &symbolsPerLine);

    /** An estimate of the characters sent: those of all text blocks and a fifth more, rounded down. */
    int symbolsCount() const;

    /**
     * The lines of all text blocks, each laid out for 80 characters as DocumentBlock::toStringList() does.
     *
     * Contract: 80, whatever symbolsPerLine() says.
     */
    QStringList toStringList() const;

    /** Makes every block upper case; see DocumentBlock::toUpper(). */
    void toUpper();
    /** Makes every block lower case; see DocumentBlock::toLower(). */
    void toLower();

    /**
     * The document as a HTML page for a preview, its blocks as DocumentBlock::toHtml() renders them; a block that is no
     * text leaves an empty line in the source.
     */
    QString toHtml(bool table, const SpecialCharacters &symbols) const;

    /**
     * Saves the document as @p path, with its sum in @p path + ".sha1", and the same again as @p path + ".bak".
     *
     * A save that is cut short at any moment leaves a file set from which loadFromFile() reads the version before or
     * the new one: each file is written under another name and renamed, and the file that is the only good one is never
     * touched. A path that is a link is followed; a file that is replaced keeps its owner, group and permissions. The
     * sums are made by the program "sha1sum"; where it is missing, takes longer than 30 s or prints anything else there
     * is one warning for each file and the library writes the same line.
     *
     * Savers of one path, threads and processes, wait for each other. While one is at work, and after it was killed,
     * hidden files whose names begin with ".printsrv-" stand beside the document; the next save or removeFile() of the
     * path removes them.
     *
     * True when both files and their sums were written and read back as good. False with one critical line for each
     * file that could not be written. An empty path is false and touches nothing. So does, with one critical line, a
     * path that the system's encoding cannot express and a name of more than 246 bytes, which leaves no room for
     * ".bak.sha1". Blocks its caller until the disk is synced and the programs have ended, which takes half a
     * minute for each file when "sha1sum" hangs, and before that two minutes at most while another saver is at work.
     */
    bool saveToFile(const QString &path) const;

    /**
     * Loads the document from @p path, or from @p path + ".bak" when the first does not fit its sum.
     *
     * False, and the document as it was, when neither fits (or the path is empty); one warning for each of the two
     * files that is there and cannot be used. A file of more than 64 MiB is not used. Files that are not there are no
     * warning.
     *
     * Contract: a file that fits its sum and is no JSON is false with one warning and resets the document as
     * setMap() of an empty map does; the backup is not tried.
     */
    bool loadFromFile(const QString &path);

    /**
     * Removes @p path, its copy and both sums, those that are there, and what a killed save left, and syncs the disk.
     *
     * Waits for a saver of the path as saveToFile() does. An empty path does nothing.
     */
    static void removeFile(const QString &path);

    /**
     * Reads the map that toMap() writes; a missing key reads as 0, empty or false.
     *
     * Contract: so a map without "init" turns doInit() off, and the image of a negative character code gets the code 0.
     */
    void setMap(const QMap<QString, QVariant> &map);

    /**
     * "blocks", "cis" (character images, keys "ci_" and the code), "pta", "cta", "rtout", "loop", "spl" and "init".
     *
     * Contract: of several images under one code only the one that was inserted first is written.
     */
    QMap<QString, QVariant> toMap() const;

    /** True when all eight fields are equal. */
    bool operator==(const TextPrinterDocument &other) const;
    bool operator!=(const TextPrinterDocument &other) const;

private:
    QList<DocumentBlock> m_blocks;
    QMultiMap<signed char, MonochromeImage> m_charImages;
    QFlags<EPrinterTicketAction> m_prevTicketAction;
    QFlags<EPrinterTicketAction> m_currentTicketAction;
    int m_retractionTimeout = 0;
    QFlags<EPaperLoopFlag> m_loopPolicy;
    bool m_doInit = true;
    int m_symbolsPerLine = 0;
};

/** Writes the number of blocks and images and the instructions to the printer, never the text. */
Q_DECL_EXPORT QDebug operator<<(QDebug debug, const TextPrinterDocument &document);

Q_DECLARE_METATYPE(EPrinterTicketAction)
Q_DECLARE_METATYPE(TextPrinterDocument)

#endif
