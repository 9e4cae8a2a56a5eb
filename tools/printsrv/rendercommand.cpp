// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "commandline.h"
#include "explanation.h"
#include "inputfile.h"
#include "lintreport.h"
#include "picture.h"
#include "receiptdata.h"
#include "receiptoptions.h"
#include "receiptrenderer.h"
#include "receiptstream.h"
#include "report.h"

#include <templatelint.h>

#include <QTextCodec>

namespace printsrv {

namespace {

struct RenderOptions
{
    ReceiptOptions receipt;
    EFormat format = EFormat::Text;
    bool isStream = false;
    bool isStrict = false;
    bool isExplained = false;
    QString dataPath;
    QString outputPath;
    std::optional<PictureOptions> picture;
    /** The paper that the receipt is checked for. */
    std::optional<PaperRenderer> paper;
    bool hasPaper = false; /**< It is one of --model and --paper; otherwise its codec counts alone. */
    int strictWidth = 0; /**< Characters a line where it is not; 0 for any number. */
};

EPicture pictureOf(const CommandLine &line)
{
    const EPicture kind = pictureKind(line, line.value(QStringLiteral("output")));
    return line.isSet(QStringLiteral("format")) || line.isSet(QStringLiteral("stream")) ? EPicture::None : kind;
}

bool namesPaper(const CommandLine &line)
{
    return line.isSet(QStringLiteral("model")) || line.isSet(QStringLiteral("paper"))
        || pictureOf(line) != EPicture::None;
}

// A picture and a check need two encodings; --codec names the printer's there, as it does for lint.
bool isPrintersCodec(const CommandLine &line)
{
    return namesPaper(line) || line.isSet(QStringLiteral("strict"));
}

QString templateCodec(const CommandLine &line)
{
    const bool isNamed = line.isSet(QStringLiteral("template-codec")) || isPrintersCodec(line);
    return line.value(isNamed ? QStringLiteral("template-codec") : QStringLiteral("codec"));
}

void addOptions(CommandLine &line)
{
    line.addArgument(QLatin1String("TEMPLATE"), QLatin1String("The template file."));
    line.addOption({QLatin1String("data")}, QLatin1String("The receipt's data; - reads standard input."),
                   QLatin1String("FILE"));
    line.addOption({QLatin1String("stream")},
                   QLatin1String("Reads one receipt's data a line from standard input and answers each with one line "
                                 "of JSON; in place of --data and -o."));
    line.addOption({QLatin1String("format")},
                   QLatin1String("text, html (a fragment), page (a whole HTML page) or document (for a printer driver; "
                                 "with -o a guarded document file). Default: text."),
                   QLatin1String("FORMAT"), QLatin1String("text"));
    addReceiptOptions(line);
    line.addOption({QLatin1String("strict")},
                   QLatin1String("Writes nothing and fails when 'printsrv lint' finds an error with this data."));
    line.addOption({QLatin1String("explain")},
                   QLatin1String("Writes where each character of the receipt came from and which values made lines and "
                                 "groups vanish, in place of the receipt."));
    line.addOption({QLatin1String("o"), QLatin1String("output")},
                   QLatin1String("Writes the receipt to FILE, completely or not at all; - is standard output. A name "
                                 "that ends in .png, .pdf or .svg makes a picture of the paper, unless --format is "
                                 "given."),
                   QLatin1String("FILE"));
    addPaperOptions(line);
    addPreviewOptions(line);
}

// What is wrong with the name of the output beside the other options; empty when nothing is.
QString outputContradiction(const CommandLine &line)
{
    const QString output = line.value(QLatin1String("output"));
    for (const char *option : {"preview", "explain"}) {
        if (isPictureName(output) && line.isSet(QLatin1String(option))) {
            return QStringLiteral("--%1 writes text, '%2' is a picture's name: give one of them.")
                .arg(QLatin1String(option), output);
        }
    }
    if (isOtherPictureName(output) && !line.isSet(QLatin1String("format"))) {
        return QStringLiteral("'%1': pictures are .png, .pdf or .svg; a text of that name needs --format.").arg(output);
    }
    return {};
}

// What is wrong with the options taken together; empty when nothing is.
QString contradiction(const CommandLine &line)
{
    const bool isStream = line.isSet(QLatin1String("stream"));
    if (isStream && (line.isSet(QLatin1String("data")) || line.isSet(QLatin1String("output")))) {
        return QLatin1String("--stream reads standard input and writes standard output, without --data and -o.");
    }
    if (!isStream && line.value(QLatin1String("data")).isEmpty()) {
        return QLatin1String("The receipt's data is missing: --data FILE, --data - or --stream.");
    }
    if (line.argument(0) == QLatin1String("-")
        && (isStream || line.value(QLatin1String("data")) == QLatin1String("-"))) {
        return QLatin1String("Standard input cannot be both the template and the data.");
    }
    const bool isExplained = line.isSet(QLatin1String("explain"));
    if (isStream && (isExplained || line.isSet(QLatin1String("strict")))) {
        return QLatin1String("--strict and --explain look at one receipt: they need --data, not --stream.");
    }
    if (isExplained && (line.isSet(QLatin1String("preview")) || line.isSet(QLatin1String("format")))) {
        return QLatin1String("--explain writes text in place of the receipt: it goes neither with --format nor with "
                             "--preview.");
    }
    if (line.isSet(QLatin1String("preview")) && (isStream || line.isSet(QLatin1String("format")))) {
        return QLatin1String("--preview shows a picture: it goes neither with --format nor with --stream.");
    }
    return outputContradiction(line);
}

/** False when an option of the paper is wrong, and standard error says so. */
bool readPaper(const CommandLine &line, RenderOptions &options)
{
    if (!isPrintersCodec(line)) {
        return true;
    }
    const bool hasCodec = line.isSet(QLatin1String("codec"));
    const QString codec = hasCodec ? line.value(QLatin1String("codec")) : QString();
    options.hasPaper = namesPaper(line);
    options.paper = readPaperOptions(line, codec);
    if (options.paper && pictureOf(line) != EPicture::None) {
        options.picture = readPictureOptions(line, codec);
        return options.picture.has_value();
    }
    return options.paper.has_value();
}

std::optional<RenderOptions> readOptions(const CommandLine &line)
{
    const QString wrong = contradiction(line);
    if (!wrong.isEmpty()) {
        line.usageError(wrong);
        return {};
    }
    const auto format = line.choice(QLatin1String("format"), formatNames());
    const auto receipt = readReceiptOptions(line, templateCodec(line));
    if (!format || !receipt) {
        return {};
    }
    RenderOptions options;
    options.receipt = *receipt;
    options.format = static_cast<EFormat>(*format);
    options.isStream = line.isSet(QLatin1String("stream"));
    options.isStrict = line.isSet(QLatin1String("strict"));
    options.isExplained = line.isSet(QLatin1String("explain"));
    options.dataPath = line.value(QLatin1String("data"));
    options.outputPath = line.value(QLatin1String("output"));
    const bool isTextOnly = options.format == EFormat::Text && pictureOf(line) == EPicture::None;
    options.strictWidth = isTextOnly || line.isSet(QLatin1String("width")) ? options.receipt.width : 0;
    return readPaper(line, options) ? std::optional<RenderOptions>(options) : std::nullopt;
}

ExitCode renderPicture(const TextPrinterDocument &document, const RenderOptions &options)
{
    const Outcome<QImage> picture = drawPicture(options.picture->renderer, document);
    if (!picture) {
        return complainAt(picture.failure(), options.receipt.source.path);
    }
    return writePicture(*picture, options.outputPath, options.picture->columns);
}

/** What lint calls an error, with this receipt on the paper that the options name. */
std::optional<QVector<Finding>> errorsWith(const PrinterDocument &receipt, const QStringList &lines,
                                           const RenderOptions &options, const QString &symbolsFolder)
{
    LintOptions lint;
    lint.part = options.receipt.source.part;
    lint.receipts = {receipt};
    lint.width = options.strictWidth;
    lint.symbolsFolder = symbolsFolder;
    lint.codec = QTextCodec::codecForName(options.paper->codec().toLatin1());
    if (options.hasPaper) {
        lint.model = options.paper->model();
        lint.paperId = options.paper->paperId();
    }
    const auto findings = findingsOf(lines, lint);
    return findings ? errorsOf(*findings) : findings;
}

ExitCode write(const PrinterDocument &receipt, const ReceiptRenderer &renderer, const RenderOptions &options)
{
    if (options.picture) {
        const TextPrinterDocument document = renderer.toDocument(receipt);
        return hasMemoryFailed() ? ExitWrongInput : renderPicture(document, options);
    }
    const bool isToFile = !options.outputPath.isEmpty() && options.outputPath != QLatin1String("-");
    if (options.format == EFormat::Document && isToFile) {
        return renderer.saveDocument(receipt, options.outputPath)
            ? ExitDone
            : complainAt({QStringLiteral("the document and its backup are not both written")}, options.outputPath);
    }
    const QByteArray bytes = renderer.toBytes(receipt);
    return hasMemoryFailed() ? ExitWrongInput : writeOutput(options.outputPath, bytes);
}

ExitCode renderOne(const Formatter &formatter, const QStringList &lines, const RenderOptions &options)
{
    const Outcome<QByteArray> json = readInput(options.dataPath);
    if (!json) {
        return complainAt(json.failure(), options.dataPath);
    }
    const Outcome<PrinterDocument> receipt = readReceipt(*json);
    if (!receipt) {
        return complainAt(receipt.failure(), options.dataPath);
    }
    if (options.isStrict) {
        const auto errors = errorsWith(*receipt, lines, options, formatter->specCharsPath());
        complainOf(errors.value_or(QVector<Finding>()), options.receipt.source.path);
        if (!errors || !errors->isEmpty()) {
            return ExitWrongInput;
        }
    }
    if (options.isExplained) {
        const auto explanation = explanationOf(TemplateText(lines, options.receipt.source.part), *receipt);
        return explanation ? writeOutput(options.outputPath, *explanation) : ExitWrongInput;
    }
    return write(*receipt, ReceiptRenderer(formatter, options.format, options.receipt.width), options);
}

} // namespace

ExitCode runRender(const QStringList &arguments)
{
    CommandLine line(
        QLatin1String("render"),
        QLatin1String("Fills a receipt template from the data of a receipt (JSON) and writes the receipt.\n"
                      "The languages are described in printsrv-template(5) and printsrv-data(5)."),
        {QLatin1String("printsrv render payment.cpt --data payment.json --width 42"),
         QLatin1String("printsrv render payment.cpt --data payment.json --format page -o payment.html"),
         QLatin1String("printsrv render payment.cpt --data payment.json -o payment.png --model CUSTOM_VKP_80"),
         QLatin1String("printsrv render old.cpt --codec windows-1251 --data - < payment.json"),
         QLatin1String("printsrv render payment.cpt --stream < receipts.jsonl > answers.jsonl")});
    addOptions(line);
    if (const auto code = line.parse(arguments)) {
        return *code;
    }
    const auto options = readOptions(line);
    if (!options) {
        return ExitUsage;
    }
    const TemplateSource &source = options->receipt.source;
    const Outcome<Formatter> whole = loadWholeTemplate(source);
    const QStringList lines = whole ? (*whole)->getTemplate() : QStringList();
    const Outcome<Formatter> formatter = whole ? partOf(*whole, source) : whole;
    if (!formatter) {
        return complainAt(formatter.failure(), source.path);
    }
    useCharacterCase(options->receipt.letters);
    return options->isStream ? ReceiptStream(ReceiptRenderer(*formatter, options->format, options->receipt.width)).run()
                             : renderOne(*formatter, lines, *options);
}

} // namespace printsrv
