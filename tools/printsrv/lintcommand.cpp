// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "charactercase.h"
#include "commandline.h"
#include "inputfile.h"
#include "lintreport.h"
#include "outputwriter.h"
#include "picture.h"
#include "receiptdata.h"
#include "report.h"
#include "templatefile.h"

#include <templatelint.h>

#include <QTextCodec>

namespace printsrv {

namespace {

constexpr int LargestWidth = 1000;

void addOptions(CommandLine &line)
{
    line.addArgument(QLatin1String("TEMPLATE"), QLatin1String("The template file."), CommandLine::EPresence::Optional);
    line.addOption(
        {QLatin1String("data")},
        QLatin1String("A receipt's data that the template is tried with; may be given several times, then an "
                      "attribute is known when one of them has it."),
        QLatin1String("FILE"));
    line.addOption({QLatin1String("model")},
                   QLatin1String("The printer's model, of 'printsrv models': finds what it cannot print."),
                   QLatin1String("MODEL"));
    line.addOption({QLatin1String("paper")}, QLatin1String("Number of the model's paper type. Default: 0."),
                   QLatin1String("N"), QLatin1String("0"));
    line.addOption({QLatin1String("width")}, QLatin1String("Characters a line, where no model is given."),
                   QLatin1String("N"));
    line.addOption({QLatin1String("codec")},
                   QLatin1String("The printer's code page, cp866: finds the characters that it lacks."),
                   QLatin1String("NAME"));
    line.addOption({QLatin1String("template-codec")}, QLatin1String("The template's encoding. Default: UTF-8."),
                   QLatin1String("NAME"), QLatin1String("UTF-8"));
    line.addOption({QLatin1String("symbols")},
                   QLatin1String("Folder of the special-symbol files. Default: the template's folder."),
                   QLatin1String("DIR"));
    line.addOption({QLatin1String("hostile")},
                   QLatin1String("Tries the template with no values, long texts and large amounts, too."));
    line.addOption({QLatin1String("json")}, QLatin1String("Writes a JSON array of findings."));
    line.addOption({QLatin1String("code")},
                   QLatin1String("Shows the page of a finding's code instead; 'list' lists the codes."),
                   QLatin1String("CODE"));
}

ExitCode showCode(const CommandLine &line)
{
    const QString name = line.value(QLatin1String("code"));
    if (!line.arguments().isEmpty()) {
        return line.usageError(QStringLiteral("--code shows a page, it does not look at '%1'.").arg(line.argument(0)));
    }
    if (name == QLatin1String("list")) {
        return writeOutput({}, lintCodeNames().join(QLatin1Char('\n')).toUtf8() + '\n');
    }
    const auto code = lintCodeOf(name);
    return code ? writeOutput({}, lintPage(*code))
                : line.usageError(QStringLiteral("No code '%1': --code list lists those there are.").arg(name));
}

/** A codec by the value of an option, null when the option is empty; nothing for a name that is unknown. */
std::optional<const QTextCodec *> readCodec(const CommandLine &line, const QString &option)
{
    const QString name = line.value(option);
    const QTextCodec *codec = name.isEmpty() ? nullptr : QTextCodec::codecForName(name.toLatin1());
    if (codec == nullptr && !name.isEmpty()) {
        line.usageError(QStringLiteral("No encoding is called '%1'; try UTF-8, cp866 or windows-1251.").arg(name));
        return {};
    }
    return codec;
}

std::optional<LintOptions> readOptions(const CommandLine &line)
{
    if (line.argument(0).isEmpty()) {
        line.usageError(QStringLiteral("The template is missing."));
        return {};
    }
    const bool hasModel = line.isSet(QLatin1String("model"));
    if (!hasModel && line.isSet(QLatin1String("paper"))) {
        line.usageError(QStringLiteral("--paper is the number of a paper of --model, which is missing."));
        return {};
    }
    if (hasModel && line.isSet(QLatin1String("width"))) {
        line.usageError(QStringLiteral("--width is for a printer of no --model, whose paper has a width of its own."));
        return {};
    }
    const auto paper = hasModel ? readModelAndPaper(line) : ModelAndPaper();
    const bool hasWidth = line.isSet(QLatin1String("width"));
    const auto width = hasWidth ? line.number(QLatin1String("width"), 1, LargestWidth) : 0;
    const auto codec = readCodec(line, QStringLiteral("codec"));
    if (!paper || !width || !codec || !readCodec(line, QStringLiteral("template-codec"))) {
        return {};
    }
    LintOptions options;
    if (hasModel) {
        options.model = paper->model;
        options.paperId = paper->paper;
    }
    options.width = *width;
    options.codec = *codec;
    options.isHostile = line.isSet(QLatin1String("hostile"));
    return options;
}

/** Reads the receipts; the first failure is told, with its file, and gives nothing. */
std::optional<QVector<LintReceipt>> readReceipts(const QStringList &paths)
{
    QVector<LintReceipt> receipts;
    for (const QString &path : paths) {
        const Outcome<QByteArray> json = readInput(path);
        const Outcome<ReceiptData> receipt = json ? readReceiptData(*json) : json.failure();
        if (!receipt) {
            complainAt(receipt.failure(), path);
            return {};
        }
        LintReceipt tried(receipt->receipt);
        tried.entryList = receipt->entryList;
        receipts.append(tried);
    }
    return receipts;
}

ExitCode lint(const CommandLine &line, LintOptions options)
{
    const TemplateSource source{line.argument(0), line.value(QLatin1String("template-codec")),
                                line.value(QLatin1String("symbols")), EPart::All};
    const Outcome<Formatter> formatter = loadWholeTemplate(source);
    if (!formatter) {
        return complainAt(formatter.failure(), source.path);
    }
    const auto receipts = readReceipts(line.values(QLatin1String("data")));
    if (!receipts) {
        return ExitWrongInput;
    }
    options.receipts = *receipts;
    options.symbolsFolder = (*formatter)->specCharsPath();
    useCharacterCase(ECase::AsIs);
    const auto findings = findingsOf((*formatter)->getTemplate(), options);
    if (!findings) {
        return ExitWrongInput;
    }
    const bool isJson = line.isSet(QLatin1String("json"));
    const ExitCode written
        = writeOutput({}, isJson ? lintJson(*findings, source.path) : lintText(*findings, source.path));
    return written == ExitDone && hasError(*findings) ? ExitWrongInput : written;
}

} // namespace

ExitCode runLint(const QStringList &arguments)
{
    CommandLine line(
        QLatin1String("lint"),
        QLatin1String("Finds what is wrong with a receipt template, before the paper shows it: one finding a "
                      "line, 'file:line:column: code: text'.\n"
                      "The exit code is 1 when one of them is an error, 0 with warnings only."),
        {QLatin1String("printsrv lint payment.cpt"),
         QLatin1String("printsrv lint payment.cpt --data payment.json --data copy.json"),
         QLatin1String("printsrv lint payment.cpt --data payment.json --model CUSTOM_VKP_80 --codec cp866"),
         QLatin1String("printsrv lint payment.cpt --hostile --width 42 --json"),
         QLatin1String("printsrv lint --code unread-tag")});
    addOptions(line);
    if (const auto code = line.parse(arguments)) {
        return *code;
    }
    if (line.isSet(QLatin1String("code"))) {
        return showCode(line);
    }
    const auto options = readOptions(line);
    return options ? lint(line, *options) : ExitUsage;
}

} // namespace printsrv
