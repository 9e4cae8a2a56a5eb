// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "commandline.h"
#include "documentcopy.h"
#include "outputwriter.h"
#include "picture.h"
#include "report.h"

#include <textprinterdocument.h>

namespace printsrv {

namespace {

constexpr int LargestWidth = 1000;

/** What is asked for; without a picture it is text or HTML. */
struct ShowOptions
{
    bool isHtml = false;
    std::optional<int> width;
    std::optional<PictureOptions> picture;
};

QString laidOut(const TextPrinterDocument &document, int width)
{
    QStringList lines;
    const QList<DocumentBlock> blocks = document.blocks();
    for (DocumentBlock block : blocks) {
        lines += block.toStringList(width);
    }
    return lines.isEmpty() ? QString() : lines.join(QLatin1Char('\n')) + QLatin1Char('\n');
}

void addShowOptions(CommandLine &line)
{
    line.addArgument(QLatin1String("FILE"), QLatin1String("The document file."));
    line.addOption({QLatin1String("format")}, QLatin1String("text or html. Default: text."), QLatin1String("FORMAT"),
                   QLatin1String("text"));
    line.addOption({QLatin1String("width")},
                   QLatin1String("Characters a line of text, 1 to 1000. Default: the document's, or 40."),
                   QLatin1String("N"));
    line.addOption(
        {QLatin1String("symbols")},
        QLatin1String("Special-symbol file, for HTML and for symbols that the document does not bring along."),
        QLatin1String("FILE"));
    line.addOption({QLatin1String("codec")},
                   QLatin1String("Pictures: the printer's code page, cp866; characters that it lacks show as question "
                                 "marks."),
                   QLatin1String("NAME"));
    line.addOption(
        {QLatin1String("o"), QLatin1String("output")},
        QLatin1String("Writes to FILE, completely or not at all; - is standard output. A name that ends in .png, "
                      ".pdf or .svg makes a picture of the paper, unless --format is given."),
        QLatin1String("FILE"));
    addPaperOptions(line);
    addPreviewOptions(line);
}

std::optional<ShowOptions> readOptions(const CommandLine &line)
{
    const auto format = line.choice(QLatin1String("format"), {QLatin1String("text"), QLatin1String("html")});
    ShowOptions options;
    if (line.isSet(QLatin1String("width"))) {
        options.width = line.number(QLatin1String("width"), 1, LargestWidth);
    }
    if (!format || (line.isSet(QLatin1String("width")) && !options.width)) {
        return {};
    }
    options.isHtml = *format == 1;
    const bool hasFormat = line.isSet(QLatin1String("format"));
    const QString output = line.value(QLatin1String("output"));
    if (!hasFormat && isOtherPictureName(output)) {
        line.usageError(QStringLiteral("'%1': pictures are .png, .pdf or .svg.").arg(output));
        return {};
    }
    if (hasFormat && line.isSet(QLatin1String("preview"))) {
        line.usageError(QStringLiteral("--preview shows a picture: it does not go with --format."));
        return {};
    }
    if (!hasFormat && pictureKind(line, output) != EPicture::None) {
        options.picture = readPictureOptions(line, line.value(QLatin1String("codec")));
        return options.picture ? std::optional<ShowOptions>(options) : std::nullopt;
    }
    return options;
}

int widthOf(const ShowOptions &options, const TextPrinterDocument &document)
{
    const int own = document.symbolsPerLine();
    return options.width.value_or(own >= 1 && own <= LargestWidth ? own : 40);
}

ExitCode write(const CommandLine &line, const ShowOptions &options, const TextPrinterDocument &document,
               const SpecialCharacters &symbols)
{
    const QString output = line.value(QLatin1String("output"));
    if (!options.picture) {
        const QString text = options.isHtml ? document.toHtml(true, symbols) + QLatin1Char('\n')
                                            : laidOut(document, widthOf(options, document));
        return writeOutput(output, text.toUtf8());
    }
    const Outcome<QImage> picture = drawPicture(options.picture->renderer, document, symbols);
    return picture ? writePicture(*picture, output, options.picture->columns)
                   : complainAt(picture.failure(), line.argument(0));
}

} // namespace

ExitCode runDocumentShow(const QStringList &arguments)
{
    CommandLine line(
        QLatin1String("document show"),
        QLatin1String("Shows a document file as text, HTML or a picture of the paper, from its backup when the\n"
                      "file itself is damaged. Text and HTML leave out pictures, barcodes and QR codes."),
        {QLatin1String("printsrv document show last.doc --width 42"),
         QLatin1String("printsrv document show last.doc --format html --symbols symbols.ssi -o last.html"),
         QLatin1String("printsrv document show last.doc -o last.png --model CUSTOM_VKP_80")});
    addShowOptions(line);
    if (const auto code = line.parse(arguments)) {
        return *code;
    }
    const auto options = readOptions(line);
    if (!options) {
        return ExitUsage;
    }
    TextPrinterDocument document;
    if (!document.loadFromFile(line.argument(0))) {
        const DocumentCopy main = inspectCopy(line.argument(0));
        const DocumentCopy backup = inspectCopy(backupPath(line.argument(0)));
        return complainAt(
            {QStringLiteral("no copy is good: %1; %2: %3").arg(main.problem, backup.path, backup.problem)}, main.path);
    }
    const QString symbolsPath = line.value(QLatin1String("symbols"));
    SpecialCharacters symbols;
    if (!symbolsPath.isEmpty() && !symbols.load(symbolsPath)) {
        return complainAt({QStringLiteral("no special-symbol file")}, symbolsPath);
    }
    return write(line, *options, document, symbols);
}

} // namespace printsrv
