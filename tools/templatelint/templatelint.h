// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_TEMPLATELINT_H
#define PRINTSRV_TEMPLATELINT_H

#include "finding.h"
#include "templatetext.h"

#include <printerdocument.h>
#include <printerinfo.h>

#include <QStringList>

#include <optional>

class QTextCodec;

namespace printsrv {

/** A receipt that a template is tried with. */
struct LintReceipt
{
    LintReceipt(const PrinterDocument &receipt = {})
        : document(receipt)
    {
    }

    PrinterDocument document;
    /** The entries that a TAB was put between; nothing when they came as one text. */
    std::optional<QStringList> entryList;
};

/** What a template is to print, and on what. */
struct LintOptions
{
    /** All are its two parts, each by itself, as a print service prints them. */
    EPart part = EPart::All;
    /** Receipts that it prints; without any, lint makes up values of its own. */
    QVector<LintReceipt> receipts;
    /** The printer's model and number of its paper; nothing asks for no model. */
    std::optional<PrinterInfo> model;
    int paperId = 0;
    /** Without a model: characters a line; 0 for any number. */
    int width = 0;
    /** The printer's code page; null for all characters. */
    const QTextCodec *codec = nullptr;
    /** Folder of the special-symbol files; empty for none. */
    QString symbolsFolder;
    /** Tries it with values of unusual length and with none, too. */
    bool isHostile = false;
};

/**
 * What is wrong with a template, sorted by the places in it.
 *
 * The template is tried with each receipt and looked at through ReceiptTrace, so that what is found is what prints. No
 * template and no data make it fail; the limits of the formatter hold. Time grows as the template and its receipts do.
 * Nothing when the memory does not suffice, which the library's log tells.
 */
[[nodiscard]] std::optional<QVector<Finding>> lintTemplate(const QStringList &lines, const LintOptions &options);

} // namespace printsrv

#endif
