// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "receiptoptions.h"

#include <QTextCodec>

namespace printsrv {

namespace {

constexpr int LargestWidth = 1000;

} // namespace

void addReceiptOptions(CommandLine &line)
{
    line.addOption({QLatin1String("width")}, QLatin1String("Characters a line of the printer, 1 to 1000. Default: 40."),
                   QLatin1String("N"), QLatin1String("40"));
    line.addOption(
        {QLatin1String("codec")},
        QLatin1String(
            "The template's encoding, default UTF-8. Pictures, --model, --strict: the printer's code page, cp866; "
            "characters that it lacks show as question marks."),
        QLatin1String("NAME"), QLatin1String("UTF-8"));
    line.addOption({QLatin1String("template-codec")},
                   QLatin1String("The template's encoding, where --codec is the printer's. Default: UTF-8."),
                   QLatin1String("NAME"), QLatin1String("UTF-8"));
    line.addOption({QLatin1String("symbols")},
                   QLatin1String("Folder of the special-symbol files. Default: the template's folder."),
                   QLatin1String("DIR"));
    line.addOption({QLatin1String("case")}, QLatin1String("asis, upper or lower case. Default: asis."),
                   QLatin1String("CASE"), QLatin1String("asis"));
    line.addOption({QLatin1String("part")},
                   QLatin1String("main, fiscal or all: the part before or behind <FISCAL_INFO>. Default: all."),
                   QLatin1String("PART"), QLatin1String("all"));
}

std::optional<ReceiptOptions> readReceiptOptions(const CommandLine &line, const QString &codec)
{
    if (QTextCodec::codecForName(codec.toLatin1()) == nullptr) {
        line.usageError(
            QStringLiteral("No encoding is called '%1'; try UTF-8, windows-1251, KOI8-R or IBM866.").arg(codec));
        return {};
    }
    const auto width = line.number(QLatin1String("width"), 1, LargestWidth);
    const auto letters
        = line.choice(QLatin1String("case"), {QLatin1String("asis"), QLatin1String("upper"), QLatin1String("lower")});
    const auto part
        = line.choice(QLatin1String("part"), {QLatin1String("all"), QLatin1String("main"), QLatin1String("fiscal")});
    if (!width || !letters || !part) {
        return {};
    }
    ReceiptOptions options;
    options.source = {line.argument(0), codec, line.value(QLatin1String("symbols")), static_cast<EPart>(*part)};
    options.width = *width;
    options.letters = static_cast<ECase>(*letters);
    return options;
}

} // namespace printsrv
