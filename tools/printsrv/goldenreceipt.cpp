// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "goldenreceipt.h"

#include "inputfile.h"
#include "picture.h"
#include "receiptdata.h"
#include "receiptoptions.h"
#include "receiptrenderer.h"
#include "report.h"

#include <QDir>
#include <QDirIterator>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QUrl>

#include <algorithm>

namespace printsrv {

namespace {

const QLatin1String Template(".cpt");
const QLatin1String Data(".json");
const QLatin1String Shared("template");

struct Options
{
    ReceiptOptions receipt;
    PaperRenderer paper;
    QStringList expected;
};

QStringList namesIn(const QDir &folder, QLatin1String suffix)
{
    QStringList names = folder.entryList({QLatin1Char('*') + suffix}, QDir::Files);
    for (QString &name : names) {
        name.chop(suffix.size());
    }
    return names;
}

QVector<GoldenReceipt> receiptsIn(const QDir &folder)
{
    const QStringList templates = namesIn(folder, Template);
    if (templates.isEmpty()) {
        return {};
    }
    const QStringList data = namesIn(folder, Data);
    QStringList names = templates + data;
    names.removeAll(Shared);
    names.removeDuplicates();
    names += names.isEmpty() ? QStringList(Shared) : QStringList();
    const auto path = [&folder](const QStringList &known, const QString &name, QLatin1String suffix) {
        return folder.filePath((known.contains(name) ? name : QString(Shared)) + suffix);
    };
    QVector<GoldenReceipt> receipts;
    for (const QString &name : qAsConst(names)) {
        receipts.append({path(templates, name, Template), path(data, name, Data), folder.filePath(name)});
    }
    return receipts;
}

// The words of the file; a line that begins with "#" is a remark.
Outcome<QStringList> optionWords(const QString &path)
{
    if (!QFileInfo::exists(path)) {
        return QStringList();
    }
    const Outcome<QByteArray> bytes = readInput(path);
    if (!bytes) {
        return bytes.failure();
    }
    QStringList words;
    const QStringList lines = QString::fromUtf8(*bytes).split(QLatin1Char('\n'));
    for (const QString &line : lines) {
        words += line.startsWith(QLatin1Char('#')) ? QStringList() : QProcess::splitCommand(line);
    }
    return words;
}

void addExpectOption(CommandLine &line)
{
    line.addOption(
        {QStringLiteral("expect")},
        QStringLiteral("The files that each receipt of the folder has. Default: text,html,document,picture."),
        QStringLiteral("KINDS"), QStringLiteral("text,html,document,picture"));
}

/** The suffixes of the files to expect; nothing for a wrong word, and standard error says so. */
std::optional<QStringList> readExpected(const CommandLine &line)
{
    const QMap<QString, QString> suffixes = {{QStringLiteral("text"), QStringLiteral(".txt")},
                                             {QStringLiteral("html"), QStringLiteral(".html")},
                                             {QStringLiteral("document"), QStringLiteral(".document")},
                                             {QStringLiteral("picture"), QStringLiteral(".png")}};
    QStringList expected;
    const QStringList words = line.value(QStringLiteral("expect")).split(QLatin1Char(','));
    for (const QString &word : words) {
        if (!suffixes.contains(word)) {
            line.usageError(
                QStringLiteral("--expect takes text, html, document and picture with commas, not '%1'.").arg(word));
            return {};
        }
        expected.append(suffixes.value(word));
    }
    return expected;
}

std::optional<Options> readOptions(const QString &templatePath)
{
    const QDir folder = QFileInfo(templatePath).dir();
    const QString path = folder.filePath(QStringLiteral("render.options"));
    const Outcome<QStringList> words = optionWords(path);
    if (!words) {
        complainAt(words.failure(), path);
        return {};
    }
    CommandLine line(QStringLiteral("render"), {}, {});
    line.setPlace(path);
    addReceiptOptions(line);
    addPaperOptions(line);
    addExpectOption(line);
    if (line.parse(*words)) {
        return {};
    }
    const auto receipt = readReceiptOptions(line, line.value(QStringLiteral("template-codec")));
    const bool hasCodec = line.isSet(QStringLiteral("codec"));
    const auto paper = readPaperOptions(line, hasCodec ? line.value(QStringLiteral("codec")) : QString());
    const auto expected = readExpected(line);
    if (!receipt || !paper || !expected) {
        return {};
    }
    Options options{*receipt, *paper, *expected};
    TemplateSource &source = options.receipt.source;
    source.path = templatePath;
    source.symbolsFolder = source.symbolsFolder.isEmpty() ? QString() : folder.filePath(source.symbolsFolder);
    return options;
}

std::optional<PrinterDocument> readData(const QString &path)
{
    const Outcome<QByteArray> json = readInput(path);
    if (!json) {
        complainAt(json.failure(), path);
        return {};
    }
    const Outcome<PrinterDocument> receipt = readReceipt(*json);
    if (!receipt) {
        complainAt(receipt.failure(), path);
        return {};
    }
    return *receipt;
}

// Where the pictures of special symbols lie depends on the machine, how they are called there does not.
QByteArray withoutTemporaryFolder(QByteArray html)
{
    return html.replace(QUrl::fromLocalFile(QDir::tempPath()).toEncoded() + '/', QByteArray());
}

} // namespace

GoldenFolder goldenReceipts(const QString &folder)
{
    QStringList folders = {folder};
    QDirIterator inside(folder, QDir::Dirs | QDir::NoDotAndDotDot, QDirIterator::Subdirectories);
    while (inside.hasNext()) {
        folders.append(inside.next());
    }
    GoldenFolder found;
    for (const QString &one : qAsConst(folders)) {
        const QFileInfo place(one);
        found.receipts += receiptsIn(QDir(one));
        found.unread += place.isReadable() && place.isExecutable() ? QStringList() : QStringList(one);
    }
    std::sort(found.receipts.begin(), found.receipts.end(),
              [](const GoldenReceipt &left, const GoldenReceipt &right) { return left.stem < right.stem; });
    return found;
}

std::optional<MadeReceipt> makeReceipt(const GoldenReceipt &receipt)
{
    const auto options = readOptions(receipt.templatePath);
    const auto data = options ? readData(receipt.dataPath) : std::nullopt;
    if (!data) {
        return {};
    }
    const Outcome<Formatter> formatter = loadTemplate(options->receipt.source);
    if (!formatter) {
        complainAt(formatter.failure(), receipt.templatePath);
        return {};
    }
    useCharacterCase(options->receipt.letters);
    const auto renderer = [&](EFormat format) {
        return ReceiptRenderer(*formatter, format, options->receipt.width);
    };
    const ReceiptRenderer document = renderer(EFormat::Document);
    const Outcome<QImage> picture = drawPicture(options->paper, document.toDocument(*data));
    if (!picture) {
        complainAt(picture.failure(), receipt.templatePath);
        return {};
    }
    const QByteArray html = withoutTemporaryFolder(renderer(EFormat::Page).toBytes(*data));
    const QByteArray json = QJsonDocument(document.toJson(*data).toObject()).toJson();
    return MadeReceipt{{{QStringLiteral(".txt"), renderer(EFormat::Text).toBytes(*data)},
                        {QStringLiteral(".html"), html},
                        {QStringLiteral(".document"), json}},
                       *picture,
                       options->expected};
}

} // namespace printsrv
