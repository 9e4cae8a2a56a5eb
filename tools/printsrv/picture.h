// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_PICTURE_H
#define PRINTSRV_PICTURE_H

#include "commandline.h"
#include "outcome.h"

#include <paperrenderer.h>

namespace printsrv {

/** Adds what the paper of a picture depends on: --model, --paper and --end-lines. */
void addPaperOptions(CommandLine &line);

/** Adds --preview and --columns, for a picture in the terminal. */
void addPreviewOptions(CommandLine &line);

/** Whether the file's suffix is that of a picture: png, pdf or svg. */
bool isPictureName(const QString &path);

/** Whether the suffix is that of a picture which is not written: gif, jpg and the like. */
bool isOtherPictureName(const QString &path);

/** What the options make of a document. */
enum class EPicture {
    None, /**< No picture: the output is none of .png, .pdf and .svg, and no preview is asked for. */
    File, /**< A file in the format of its suffix. */
    Preview, /**< Half blocks for a terminal. */
};

/** Whether --preview or the suffix of @p outputPath asks for a picture. */
EPicture pictureKind(const CommandLine &line, const QString &outputPath);

/** A picture's settings. */
struct PictureOptions
{
    PaperRenderer renderer;
    int columns = 0;
};

/** A printer's model and the number of its paper type. */
struct ModelAndPaper
{
    PrinterInfo model;
    int paper = 0;
};

/** Reads --model and --paper; nothing when the model or its paper is not known, and standard error says so. */
std::optional<ModelAndPaper> readModelAndPaper(const CommandLine &line);

/** Reads the options; nothing when one is wrong, and standard error says so. @p codec is the printer's code page. */
std::optional<PaperRenderer> readPaperOptions(const CommandLine &line, const QString &codec);

/** As readPaperOptions(), with those of the preview. */
std::optional<PictureOptions> readPictureOptions(const CommandLine &line, const QString &codec);

/**
 * The picture of the paper; the reason when it cannot be made. @p symbols serve codes that the document has no image
 * of.
 */
[[nodiscard]] Outcome<QImage> drawPicture(const PaperRenderer &renderer, const TextPrinterDocument &document,
                                          const SpecialCharacters &symbols = {});

/**
 * Writes the picture to a file in the format of its suffix, or in half blocks when @p path has none of the suffixes.
 */
[[nodiscard]] ExitCode writePicture(const QImage &picture, const QString &path, int columns);

} // namespace printsrv

#endif
