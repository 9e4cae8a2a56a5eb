// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "commandline.h"
#include "outputwriter.h"
#include "report.h"

#include <printerinfo.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace printsrv {

namespace {

constexpr char Description[]
    = "Shows the printer models that the library knows: all of them as a table, or one in detail.";

struct Ability
{
    const char *text;
    bool (PrinterInfo::*has)() const;
};

constexpr Ability Abilities[] = {
    {"double width", &PrinterInfo::doubleWidth},
    {"double height", &PrinterInfo::doubleHeight},
    {"bold", &PrinterInfo::bold},
    {"italic", &PrinterInfo::italic},
    {"underline", &PrinterInfo::underline},
    {"white on black", &PrinterInfo::inversion},
    {"left alignment", &PrinterInfo::alignLeft},
    {"centred alignment", &PrinterInfo::alignCenter},
    {"right alignment", &PrinterInfo::alignRight},
    {"full width", &PrinterInfo::alignJustify},
    {"symbols of one's own", &PrinterInfo::customSymbols},
    {"stored pictures", &PrinterInfo::customImages},
    {"line spacing", &PrinterInfo::lineSpacing},
    {"retraction", &PrinterInfo::retraction},
    {"ejection", &PrinterInfo::ejection},
    {"timed retraction", &PrinterInfo::retractTimeout},
    {"paper loop", &PrinterInfo::paperLoopSupported},
    {"choice of where receipts go", &PrinterInfo::checkMoveSettingsSupported},
};

QStringList captions(const PrinterInfo &model)
{
    QStringList texts;
    const auto papers = model.paperTypes();
    for (const PaperInfo &paper : papers) {
        texts.append(paper.caption());
    }
    return texts;
}

QString table(const QList<PrinterInfo> &models)
{
    const QString row = QStringLiteral("%1  %2  %3\n");
    QString text = row.arg(QStringLiteral("MODEL"), -22).arg(QStringLiteral("NAME"), -30).arg(QStringLiteral("PAPER"));
    for (const PrinterInfo &model : models) {
        text += row.arg(model.id(), -22).arg(model.name(), -30).arg(captions(model).join(QStringLiteral(", ")));
    }
    return text;
}

QString abilities(const PrinterInfo &model)
{
    QStringList texts;
    for (const Ability &ability : Abilities) {
        if ((model.*ability.has)()) {
            texts.append(QLatin1String(ability.text));
        }
    }
    return texts.join(QStringLiteral(", "));
}

QString paperRow(const PaperInfo &paper)
{
    const QString length = paper.height() < 0 ? QStringLiteral("roll") : QStringLiteral("%1 mm").arg(paper.height());
    return QStringLiteral("  paper %1: %2, %3 mm wide, %4, %5 dots a line\n")
        .arg(paper.idAsString(), paper.caption())
        .arg(paper.width())
        .arg(length)
        .arg(paper.pointsToLine());
}

QString fontRow(const FontInfo &font)
{
    const QString symbols = font.customSymbols()
        ? QStringLiteral(", own symbols %1 x %2 dots").arg(font.customWidth()).arg(font.customHeight())
        : QString();
    return QStringLiteral("  font %1: %2 x %3 dots, %4 x %5 mm%6\n")
        .arg(font.idAsString())
        .arg(font.width())
        .arg(font.height())
        .arg(font.mwidth())
        .arg(font.mheight())
        .arg(symbols);
}

QString details(const PrinterInfo &model)
{
    QString text = QStringLiteral("%1: %2\n  interface %3, %4 dots per inch\n  can: %5\n")
                       .arg(model.id(), model.name(), model.interface())
                       .arg(model.resolution())
                       .arg(abilities(model));
    const auto papers = model.paperTypes();
    for (const PaperInfo &paper : papers) {
        text += paperRow(paper);
    }
    const auto fonts = model.fontTypes();
    for (const FontInfo &font : fonts) {
        text += fontRow(font);
    }
    return text;
}

QByteArray json(const QList<PrinterInfo> &models)
{
    QJsonArray array;
    for (const PrinterInfo &model : models) {
        array.append(QJsonObject::fromVariantMap(model.toMap()));
    }
    return QJsonDocument(array).toJson();
}

QList<PrinterInfo> named(const QList<PrinterInfo> &models, const QString &id)
{
    QList<PrinterInfo> found;
    for (const PrinterInfo &model : models) {
        if (model.id().compare(id, Qt::CaseInsensitive) == 0) {
            found.append(model);
        }
    }
    return found;
}

} // namespace

ExitCode runModels(const QStringList &arguments)
{
    CommandLine line(QLatin1String("models"), QLatin1String(Description),
                     {QLatin1String("printsrv models"), QLatin1String("printsrv models CUSTOM_VKP_80"),
                      QLatin1String("printsrv models --json | jq -r '.[].id'")});
    line.addArgument(QLatin1String("MODEL"), QLatin1String("Identifier of one model, in any case of letters."),
                     CommandLine::EPresence::Optional);
    line.addOption({QLatin1String("json")}, QLatin1String("Writes a JSON array of model records."));
    if (const auto code = line.parse(arguments)) {
        return *code;
    }

    QList<PrinterInfo> models = PrinterInfo::fromResources();
    const QString id = line.argument(0);
    if (!id.isEmpty()) {
        models = named(models, id);
    }
    if (models.isEmpty() && id.isEmpty()) {
        return ExitWrongInput; // the loader has said why
    }
    if (models.isEmpty()) {
        complain(QStringLiteral("no model '%1': 'printsrv models' lists those there are").arg(id));
        return ExitWrongInput;
    }
    if (line.isSet(QLatin1String("json"))) {
        return writeOutput({}, json(models));
    }
    return writeOutput({}, (id.isEmpty() ? table(models) : details(models.first())).toUtf8());
}

} // namespace printsrv
