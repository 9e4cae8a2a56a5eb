// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_FUZZTARGETS_H
#define PRINTSRV_FUZZTARGETS_H

#include <QByteArray>

/**
 * One function for each reader of input from outside. It reads any bytes, uses what it read, and ends the process when
 * a law is broken that holds for every input; a fuzzer looks for such bytes, and a test runs those that were found.
 */
namespace fuzz {

/** A template, the entries and attributes of a receipt, parted by the byte 0x1E; compared with the reference. */
void receipt(const QByteArray &input);

/** The same parts of a receipt, whose template lint looks at. */
void lint(const QByteArray &input);

/** A text from outside, which has to print as it is. */
void escapedValue(const QByteArray &input);

/** The data of a receipt as the command reads it. */
void receiptData(const QByteArray &input);

/** A file of special symbols. */
void symbols(const QByteArray &input);

/** The JSON of a document. */
void document(const QByteArray &input);

/** The main file of a document, its checksum, the backup and its checksum, parted by the byte 0x1E. */
void documentFiles(const QByteArray &input);

/** A catalogue of printer models. */
void catalogue(const QByteArray &input);

/** A descriptor list in JSON, for every settings class. */
void settings(const QByteArray &input);

/** The state text of the print service on the message bus. */
void state(const QByteArray &input);

/** A recorded conversation with a printer. */
void transcript(const QByteArray &input);

} // namespace fuzz

#endif
