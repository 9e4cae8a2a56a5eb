// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "picture.h"

#include "outputwriter.h"
#include "preview.h"
#include "report.h"

#include <paperfile.h>
#include <textprintermodels.h>

#include <QFileInfo>

namespace printsrv {

namespace {

constexpr int LargestEndLines = 1000;
constexpr int LargestColumns = 1000;

std::optional<PrinterInfo> findModel(const CommandLine &line)
{
    const QString id = line.value(QStringLiteral("model"));
    if (id.compare(TextPrinterModels::MODEL_PNG, Qt::CaseInsensitive) == 0) {
        return PaperRenderer::pictureModel();
    }
    const QList<PrinterInfo> models = PrinterInfo::fromResources();
    for (const PrinterInfo &model : models) {
        if (model.id().compare(id, Qt::CaseInsensitive) == 0) {
            return model;
        }
    }
    line.usageError(QStringLiteral("No model '%1': 'printsrv models' lists those there are.").arg(id));
    return {};
}

// The library takes the nearest paper; a person who mistypes a number wants to know.
bool hasPaper(const CommandLine &line, const PrinterInfo &model, int paper)
{
    const auto papers = model.paperTypes();
    if (papers.contains(paper)) {
        return true;
    }
    QStringList known;
    for (auto one = papers.begin(); one != papers.end(); ++one) {
        known.append(QStringLiteral("%1 (%2)").arg(one.key()).arg(one->caption()));
    }
    line.usageError(QStringLiteral("%1 has no paper %2, only %3.")
                        .arg(model.id())
                        .arg(paper)
                        .arg(known.join(QStringLiteral(", "))));
    return false;
}

QString errorText(EPaperError error)
{
    switch (error) {
    case PaperTooLong:
        return QStringLiteral("the receipt is longer than %1 dots").arg(PaperRenderer::LargestHeight);
    case PaperNoMemory:
        return QStringLiteral("the memory does not hold the picture");
    default:
        return QStringLiteral("the model has no such paper");
    }
}

} // namespace

void addPaperOptions(CommandLine &line)
{
    line.addOption({QStringLiteral("model")},
                   QStringLiteral("Pictures: the printer's model, of 'printsrv models', or PNG. Default: PNG."),
                   QStringLiteral("MODEL"), QStringLiteral("PNG"));
    line.addOption({QStringLiteral("paper")}, QStringLiteral("Pictures: number of the paper type. Default: 0."),
                   QStringLiteral("N"), QStringLiteral("0"));
    line.addOption({QStringLiteral("end-lines")},
                   QStringLiteral("Pictures: empty lines at the receipt's end, 0 to 1000. Default: 5."),
                   QStringLiteral("N"), QStringLiteral("5"));
}

void addPreviewOptions(CommandLine &line)
{
    line.addOption({QStringLiteral("preview")},
                   QStringLiteral("Shows the picture in the terminal, with half blocks; greys where it has them."));
    line.addOption({QStringLiteral("columns")},
                   QStringLiteral("Largest width of the preview, 10 to 1000. Default: the terminal's."),
                   QStringLiteral("N"), QString());
}

bool isPictureName(const QString &path)
{
    const QStringList suffixes = {QStringLiteral("png"), QStringLiteral("pdf"), QStringLiteral("svg")};
    return suffixes.contains(QFileInfo(path).suffix().toLower());
}

bool isOtherPictureName(const QString &path)
{
    const QStringList suffixes
        = {QStringLiteral("bmp"), QStringLiteral("gif"),  QStringLiteral("jpg"), QStringLiteral("jpeg"),
           QStringLiteral("tif"), QStringLiteral("tiff"), QStringLiteral("webp")};
    return suffixes.contains(QFileInfo(path).suffix().toLower());
}

EPicture pictureKind(const CommandLine &line, const QString &outputPath)
{
    if (line.isSet(QStringLiteral("preview"))) {
        return EPicture::Preview;
    }
    return isPictureName(outputPath) ? EPicture::File : EPicture::None;
}

std::optional<ModelAndPaper> readModelAndPaper(const CommandLine &line)
{
    const auto model = findModel(line);
    const auto paper = line.number(QStringLiteral("paper"), 0, 127);
    if (!model || !paper || !hasPaper(line, *model, *paper)) {
        return {};
    }
    return ModelAndPaper{*model, *paper};
}

std::optional<PaperRenderer> readPaperOptions(const CommandLine &line, const QString &codec)
{
    const auto paper = readModelAndPaper(line);
    const auto endLines = line.number(QStringLiteral("end-lines"), 0, LargestEndLines);
    if (!paper || !endLines) {
        return {};
    }
    PaperRenderer renderer(paper->model, paper->paper);
    renderer.setEmptyLinesAtEnd(*endLines);
    if (!renderer.setCodec(codec)) {
        line.usageError(QStringLiteral("No code page is called '%1'; try cp866 or windows-1251.").arg(codec));
        return {};
    }
    return renderer;
}

std::optional<PictureOptions> readPictureOptions(const CommandLine &line, const QString &codec)
{
    const auto renderer = readPaperOptions(line, codec);
    const auto columns = line.isSet(QStringLiteral("columns"))
        ? line.number(QStringLiteral("columns"), 10, LargestColumns)
        : std::optional<int>(terminalColumns());
    if (!renderer || !columns) {
        return {};
    }
    return PictureOptions{*renderer, *columns};
}

Outcome<QImage> drawPicture(const PaperRenderer &renderer, const TextPrinterDocument &document,
                            const SpecialCharacters &symbols)
{
    EPaperError error = PaperNoError;
    const QImage picture = renderer.render(document, symbols, &error);
    if (error != PaperNoError) {
        return Failure{errorText(error)};
    }
    return picture;
}

ExitCode writePicture(const QImage &picture, const QString &path, int columns)
{
    if (!isPictureName(path)) {
        return writeOutput(path, previewText(picture, columns, terminalShades()));
    }
    const QByteArray bytes = PaperFile::toBytes(picture, path);
    if (bytes.isEmpty()) {
        complain(QStringLiteral("%1: not written: the memory does not hold the picture").arg(path));
        return ExitWrongInput;
    }
    return writeOutput(path, bytes);
}

} // namespace printsrv
