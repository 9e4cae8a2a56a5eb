// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_PAPERFILE_H
#define PRINTSRV_PAPERFILE_H

#include <printsrvsettings.h>

#include <QByteArray>
#include <QImage>
#include <QString>

/**
 * A picture of paper as a file: PNG, a PDF page of the paper's real size, or SVG.
 *
 * Pictures of any format are taken; a dot is black when it is darker than middle grey. All functions may be called from
 * any thread; a null picture gives empty bytes.
 */
class Q_DECL_EXPORT PaperFile
{
public:
    /** PNG of 1 bit a dot, with the picture's resolution. */
    static QByteArray toPng(const QImage &picture);

    /**
     * One PDF page as large as the paper: dots become millimetres by the picture's resolution. The same dots give the
     * same bytes on one machine; there is no date in it.
     */
    static QByteArray toPdf(const QImage &picture);

    /** SVG of the paper's size in millimetres, with one path of rectangles. The same dots give the same bytes. */
    static QByteArray toSvg(const QImage &picture);

    /** The picture in the format that the suffix of @p path names (png, pdf, svg); empty for any other suffix. */
    static QByteArray toBytes(const QImage &picture, const QString &path);

    /**
     * Writes the picture to @p path in the format of its suffix, completely or not at all.
     *
     * False with one warning that names the path and the reason when the suffix is none of the three, the picture is
     * null or the system does not write; the file is as it was.
     */
    [[nodiscard]] static bool save(const QImage &picture, const QString &path);

    /**
     * Writes the picture of document number @p number of the pseudo-printer TextPrinterModels::MODEL_PNG: to
     * PrintSrvSettings::pngOutputFile(), whose folder is made when it is missing; otherwise as save().
     */
    [[nodiscard]] static bool saveOutput(const QImage &picture, PrintSrvSettings &settings, int number);
};

#endif
