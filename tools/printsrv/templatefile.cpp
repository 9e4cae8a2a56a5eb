// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "templatefile.h"

#include "inputfile.h"
#include "report.h"

#include <checktemplatessettings.h>

#include <QFileInfo>
#include <QTemporaryFile>
#include <QTextCodec>

namespace printsrv {

namespace {

const QLatin1String FiscalTag("<FISCAL_INFO>");
const QLatin1String SymbolsTag("<SPECSYMBOLS=");

bool isText(const QTextCodec &codec, const QByteArray &bytes)
{
    QTextCodec::ConverterState state;
    (void)codec.toUnicode(bytes.constData(), bytes.size(), &state);
    return state.invalidChars == 0 && state.remainingChars == 0;
}

int firstWrongLine(const QTextCodec &codec, const QByteArray &bytes)
{
    const QList<QByteArray> lines = bytes.split('\n');
    int index = 0;
    while (index < lines.size() && isText(codec, lines.at(index))) {
        ++index;
    }
    return index + 1;
}

// The reason why the bytes are no template.
std::optional<Failure> refusal(const QByteArray &bytes, const QString &codecName)
{
    if (bytes.isEmpty()) {
        return Failure{QStringLiteral("is empty, a template has at least one line")};
    }
    QTextCodec *named = QTextCodec::codecForName(codecName.toLatin1());
    const QTextCodec *codec = QTextCodec::codecForUtfText(bytes, named);
    if (!isText(*codec, bytes)) {
        return Failure{QStringLiteral("is no text in %1; name its encoding, for instance "
                                      "--template-codec windows-1251")
                           .arg(QString::fromLatin1(codec->name())),
                       firstWrongLine(*codec, bytes)};
    }
    return {};
}

// A pipe can be read only once, so what it held goes through a file.
bool load(PrinterDocumentFormatter &formatter, const TemplateSource &source, const QByteArray &bytes)
{
    const QByteArray codec = source.codec.toLatin1();
    if (QFileInfo(source.path).isFile()) {
        return formatter.loadTemplate(source.path, codec.constData());
    }
    QTemporaryFile copy;
    return copy.open() && copy.write(bytes) == bytes.size() && copy.flush()
        && formatter.loadTemplate(copy.fileName(), codec.constData());
}

bool beginsWithMainPart(const QStringList &lines)
{
    const int tag = lines.first().indexOf(FiscalTag, 0, Qt::CaseInsensitive);
    return tag < 0 || !lines.first().leftRef(tag).trimmed().isEmpty();
}

Outcome<Formatter> choosePart(const Formatter &formatter, EPart part)
{
    const auto parts = formatter->splitByFiscalInfo();
    if (part == EPart::All) {
        QStringList lines;
        for (const Formatter &one : parts) {
            lines += one->getTemplate();
        }
        formatter->setTemplate(lines.join(QLatin1Char('\n')));
        return formatter;
    }
    const int fiscalIndex = beginsWithMainPart(formatter->getTemplate()) ? 1 : 0;
    const Formatter chosen = parts.value(part == EPart::Main ? fiscalIndex - 1 : fiscalIndex);
    if (chosen.isNull()) {
        return Failure{QStringLiteral("has no lines %1 the tag <FISCAL_INFO>")
                           .arg(part == EPart::Main ? QStringLiteral("before") : QStringLiteral("behind"))};
    }
    return chosen;
}

// Index of the line that selects the symbols, the last of its kind; -1 when there is none.
int symbolsLine(const QStringList &lines)
{
    int index = lines.size() - 1;
    while (index >= 0
           && !(lines.at(index).trimmed().startsWith(SymbolsTag)
                && lines.at(index).trimmed().endsWith(QLatin1Char('>')))) {
        --index;
    }
    return index;
}

QString symbolsFile(const QString &folder, const QString &line)
{
    const QString file = folder + QLatin1Char('/') + line.mid(SymbolsTag.size(), line.size() - SymbolsTag.size() - 1);
    const bool hasSuffix = file.contains(QLatin1String(".ssi")) || file.contains(QLatin1String(".SSI"));
    return hasSuffix ? file : file + QLatin1String(".ssi");
}

// The library passes over a missing symbol file in silence; a person who tries a template wants to know.
void warnOfMissingSymbols(const PrinterDocumentFormatter &formatter, const QString &path)
{
    const QStringList lines = formatter.getTemplate();
    const int index = symbolsLine(lines);
    if (index < 0) {
        return;
    }
    const QString file = symbolsFile(formatter.specCharsPath(), lines.at(index).trimmed());
    if (!QFileInfo::exists(file)) {
        const QString text = QStringLiteral("warning: no symbol file %1; name its folder with --symbols").arg(file);
        complain(Failure{text, index + 1}.at(path));
    }
}

} // namespace

Outcome<Formatter> loadWholeTemplate(const TemplateSource &source)
{
    const Outcome<QByteArray> bytes = readInput(source.path);
    if (!bytes) {
        return bytes.failure();
    }
    if (const auto failure = refusal(*bytes, source.codec)) {
        return *failure;
    }
    const QString folder
        = source.symbolsFolder.isEmpty() ? QFileInfo(source.path).absolutePath() : source.symbolsFolder;
    // Given before the first formatter is made, so that no formatter asks the terminal's configuration.
    CheckTemplatesSettings().setCheckTemplatesPath(folder);
    const Formatter formatter(new PrinterDocumentFormatter);
    if (!load(*formatter, source, *bytes)) {
        return Failure{QStringLiteral("is no template")};
    }
    return formatter;
}

Outcome<Formatter> partOf(const Formatter &whole, const TemplateSource &source)
{
    warnOfMissingSymbols(*whole, source.path);
    return choosePart(whole, source.part);
}

Outcome<Formatter> loadTemplate(const TemplateSource &source)
{
    const Outcome<Formatter> whole = loadWholeTemplate(source);
    return whole ? partOf(*whole, source) : whole;
}

} // namespace printsrv
