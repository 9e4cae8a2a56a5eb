// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_GOLDENRECEIPT_H
#define PRINTSRV_GOLDENRECEIPT_H

#include <QByteArray>
#include <QImage>
#include <QMap>
#include <QStringList>
#include <QVector>

#include <optional>

namespace printsrv {

/** A receipt of a folder, beside whose files stands what is expected of it. */
struct GoldenReceipt
{
    QString templatePath;
    QString dataPath;
    /** Folder and name; with a suffix the name of a file that holds what is expected. */
    QString stem;
};

/** What a receipt gives now, by the suffix of the file that holds what is expected. */
struct MadeReceipt
{
    /** ".txt", ".html" and ".document", the last as indented JSON. */
    QMap<QString, QByteArray> texts;
    /** ".png". */
    QImage picture;
    /** The suffixes of the files that have to be there: those of --expect in "render.options", or all four. */
    QStringList expected;
};

/** What a folder holds. */
struct GoldenFolder
{
    QVector<GoldenReceipt> receipts;
    /** Folders in it that cannot be read. */
    QStringList unread;
};

/**
 * The receipts of a folder and of the folders in it, by their paths.
 *
 * In a folder that has templates, NAME.cpt and NAME.json are the receipt NAME; where one of the two is missing
 * "template" with the same suffix takes its place.
 */
GoldenFolder goldenReceipts(const QString &folder);

/**
 * Makes the receipt with the options of "printsrv render" that the file "render.options" of its folder holds, when
 * there is one. Nothing when it cannot be made; standard error says why.
 */
std::optional<MadeReceipt> makeReceipt(const GoldenReceipt &receipt);

} // namespace printsrv

#endif
