// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "actions.h"
#include "commandline.h"
#include "inputfile.h"
#include "outputwriter.h"
#include "picture.h"
#include "preview.h"
#include "report.h"
#include "symbolfile.h"

#include <specialcharacters.h>

namespace printsrv {

namespace {

constexpr int LargestCell = 255;

ExitCode show(const QStringList &arguments)
{
    CommandLine line(
        QStringLiteral("symbols show"),
        QStringLiteral(
            "Shows the symbols of a \".ssi\" file as a picture: a row for each size, a column for each code\n"
            "in rising order. Without -o the picture is shown in the terminal."),
        {QStringLiteral("printsrv symbols show currency.ssi"),
         QStringLiteral("printsrv symbols show currency.ssi -o currency.png")});
    line.addArgument(QStringLiteral("FILE"), QStringLiteral("The symbol file."));
    line.addOption({QStringLiteral("columns")},
                   QStringLiteral("Largest width in the terminal, 10 to 1000. Default: the terminal's."),
                   QStringLiteral("N"), QString::number(qBound(10, terminalColumns(), 1000)));
    line.addOption({QStringLiteral("o"), QStringLiteral("output")},
                   QStringLiteral("Writes the picture to FILE, a .png, .pdf or .svg, completely or not at all."),
                   QStringLiteral("FILE"));
    if (const auto code = line.parse(arguments)) {
        return *code;
    }
    const auto columns = line.number(QStringLiteral("columns"), 10, 1000);
    const QString output = line.value(QStringLiteral("output"));
    if (!columns) {
        return ExitUsage;
    }
    if (!output.isEmpty() && output != QLatin1String("-") && !isPictureName(output)) {
        return line.usageError(
            QStringLiteral("'%1' is no name of a picture: end it with .png, .pdf or .svg.").arg(output));
    }
    SpecialCharacters symbols;
    if (!symbols.load(line.argument(0))) {
        complain(QStringLiteral("%1: is no symbol file").arg(line.argument(0)));
        return ExitWrongInput;
    }
    const QImage picture = symbolPicture(symbols);
    if (picture.isNull()) {
        complain(QStringLiteral("%1: has no symbols to show").arg(line.argument(0)));
        return ExitWrongInput;
    }
    return writePicture(picture, output, *columns);
}

std::optional<QVector<QSize>> readSizes(const CommandLine &line)
{
    QVector<QSize> sizes;
    const QStringList texts = line.values(QStringLiteral("size"));
    for (const QString &text : texts) {
        const QStringList sides = text.split(QLatin1Char('x'));
        const QSize size(sides.value(0).toInt(), sides.value(1).toInt());
        const bool isSize = sides.size() == 2 && qMin(size.width(), size.height()) >= 1
            && qMax(size.width(), size.height()) <= LargestCell;
        if (!isSize) {
            line.usageError(QStringLiteral("'%1' is no size in dots, such as 12x24, up to 255x255.").arg(text));
            return {};
        }
        sizes.append(size);
    }
    return sizes.isEmpty() ? catalogueSizes() : sizes;
}

// A picture is given as CODE=FILE.
Outcome<QVector<SymbolImage>> readPicture(const QString &argument)
{
    const int equals = argument.indexOf(QLatin1Char('='));
    bool isNumber = false;
    const int code = argument.leftRef(equals).toInt(&isNumber);
    if (equals < 0 || !isNumber || code < 1 || code > LastSymbolCode) {
        return Failure{QStringLiteral("is not CODE=FILE with a code of 1 to 7")};
    }
    const Outcome<QByteArray> bytes = readInput(argument.mid(equals + 1));
    if (!bytes) {
        return bytes.failure();
    }
    const QImage picture = QImage::fromData(*bytes, "PNG");
    if (picture.isNull() || qMax(picture.width(), picture.height()) > LargestCell) {
        return Failure{QStringLiteral("is no PNG picture of at most 255 x 255 dots")};
    }
    return QVector<SymbolImage>{symbolOfPicture(code, picture)};
}

std::optional<QVector<SymbolImage>> readPictures(const QStringList &arguments)
{
    QVector<SymbolImage> symbols;
    for (const QString &argument : arguments) {
        const Outcome<QVector<SymbolImage>> one = readPicture(argument);
        if (!one) {
            complain(one.failure().at(argument));
            return {};
        }
        symbols += *one;
    }
    return symbols;
}

std::optional<QVector<SymbolImage>> readSymbols(const CommandLine &line, const QVector<QSize> &sizes)
{
    if (!line.isSet(QStringLiteral("text"))) {
        return readPictures(line.arguments());
    }
    const Outcome<QVector<SymbolImage>> symbols = symbolsOfText(line.value(QStringLiteral("text")), sizes);
    if (!symbols) {
        complain(symbols.failure().at(QStringLiteral("--text")));
        return {};
    }
    return *symbols;
}

ExitCode make(const QStringList &arguments)
{
    CommandLine line(
        QStringLiteral("symbols make"),
        QStringLiteral(
            "Makes a \".ssi\" file: of characters of the bundled font, or of PNG pictures, whose dots darker\n"
            "than middle grey are black and whose size is the symbol's. A code may have several sizes."),
        {QStringLiteral("printsrv symbols make --text '₽₴₸₼₾€' -o currency.ssi"),
         QStringLiteral("printsrv symbols make 1=logo-12x24.png 1=logo-16x24.png -o logo.ssi")});
    line.addArgument(QStringLiteral("CODE=FILE"), QStringLiteral("A code of 1 to 7 and its picture."),
                     CommandLine::EPresence::Repeated);
    line.addOption(
        {QStringLiteral("text")},
        QStringLiteral("Up to seven characters, which get the codes 1, 2, 3 and so on; in place of pictures."),
        QStringLiteral("TEXT"));
    line.addOption({QStringLiteral("size")},
                   QStringLiteral("With --text: a size in dots, 12x24; may be given several times. Default: every cell "
                                  "of own symbols that a model of the catalogue has."),
                   QStringLiteral("WxH"));
    line.addOption({QStringLiteral("o"), QStringLiteral("output")},
                   QStringLiteral("Writes to FILE, completely or not at all; - is standard output."),
                   QStringLiteral("FILE"));
    if (const auto code = line.parse(arguments)) {
        return *code;
    }
    const bool isText = line.isSet(QStringLiteral("text"));
    if (isText == !line.arguments().isEmpty() || (!isText && line.isSet(QStringLiteral("size")))) {
        return line.usageError(QStringLiteral("Give either --text, with sizes or not, or pictures as CODE=FILE."));
    }
    const auto sizes = readSizes(line);
    if (!sizes) {
        return ExitUsage;
    }
    const auto symbols = readSymbols(line, *sizes);
    return symbols ? writeOutput(line.value(QStringLiteral("output")), symbolFile(*symbols)) : ExitWrongInput;
}

} // namespace

ExitCode runSymbols(const QStringList &arguments)
{
    return runAction({"symbols",
                      "Shows and makes the special-symbol files of templates, see printsrv-symbols(5).",
                      {{"show", "shows the symbols as a picture", show},
                       {"make", "makes a file of characters or PNG pictures", make}},
                      {QStringLiteral("printsrv symbols show currency.ssi"),
                       QStringLiteral("printsrv symbols make --text '₽₴₸₼₾€' -o currency.ssi")}},
                     arguments);
}

} // namespace printsrv
