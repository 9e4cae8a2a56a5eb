// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "commandline.h"
#include "goldencommand.h"
#include "porttext.h"
#include "report.h"
#include "searchrun.h"

#include <textprintermodels.h>

#include <QHash>

#include <algorithm>
#include <iterator>

namespace printsrv {

namespace {

constexpr char Description[]
    = "Tests the receipts of a folder: makes each of its template and data and compares it with what\n"
      "is expected. NAME.cpt and NAME.json, or where one is missing template.cpt or template.json,\n"
      "give NAME.txt, NAME.html, NAME.document and NAME.png, each of which has to be there\n"
      "unless --expect in render.options says otherwise.\n"
      "The file render.options of the folder holds options of 'printsrv render'.\n\n"
      "With --port, in place of a folder, verifies a configured printer: asks at the port, with the\n"
      "settings given, whether the model answers. Takes a few seconds at most.";
constexpr int HighestBaudRate = 4'000'000;
constexpr unsigned int TextPrinter = 1;

QStringList verifiableModels()
{
    return {TextPrinterModels::MODEL_CUSTOM_VKP_80,
            TextPrinterModels::MODEL_CUSTOM_TG_2480_H,
            TextPrinterModels::MODEL_CUSTOM_TG_2480_SE,
            TextPrinterModels::MODEL_CITIZEN_PPU_700,
            TextPrinterModels::MODEL_CITIZEN_CBM_1000,
            TextPrinterModels::MODEL_CITIZEN_CTS_2000,
            TextPrinterModels::MODEL_EPSON_EU_4XX,
            TextPrinterModels::MODEL_TSP_TUP,
            TextPrinterModels::MODEL_AV_268,
            TextPrinterModels::MODEL_CITIZEN_PPU_231,
            TextPrinterModels::MODEL_SWECOIN_TM_20XX};
}

template<typename Value, std::size_t Count>
QStringList names(const NamedValue<Value> (&values)[Count])
{
    QStringList result;
    std::transform(std::begin(values), std::end(values), std::back_inserter(result),
                   [](const NamedValue<Value> &value) { return QString::fromLatin1(value.name); });
    return result;
}

void addFolderOptions(CommandLine *line)
{
    line->addArgument(QStringLiteral("DIR"), QStringLiteral("The folder, with all folders in it."),
                      CommandLine::EPresence::Optional);
    line->addOption({QStringLiteral("update")},
                    QStringLiteral("Folder: takes over what the receipts give now, and says which files changed. A "
                                   "receipt of which nothing is expected yet gets all four files."));
}

void addPrinterOptions(CommandLine *line)
{
    line->addOption({QStringLiteral("port")}, QStringLiteral("Port of the printer."), QStringLiteral("P"));
    line->addOption({QStringLiteral("model")},
                    QStringLiteral("Its model: ") + verifiableModels().join(QStringLiteral(", ")), QStringLiteral("M"));
    line->addOption({QStringLiteral("baud")}, QStringLiteral("Speed."), QStringLiteral("N"), QStringLiteral("9600"));
    line->addOption({QStringLiteral("parity")}, QStringLiteral("none, even or odd."), QStringLiteral("KIND"),
                    QStringLiteral("none"));
    line->addOption({QStringLiteral("flow")}, QStringLiteral("Flow control: none, hardware or software."),
                    QStringLiteral("KIND"), QStringLiteral("none"));
    line->addOption({QStringLiteral("record")}, QStringLiteral("Writes every setting, byte and time to FILE."),
                    QStringLiteral("FILE"));
    line->addOption({QStringLiteral("json")}, QStringLiteral("Writes a JSON array with one object."));
}

// The first option given that is the printer's; empty when there is none.
QString printerOption(const CommandLine &line)
{
    for (const char *option : {"port", "model", "baud", "parity", "flow", "record", "json"}) {
        if (line.isSet(QLatin1String(option))) {
            return QStringLiteral("--") + QLatin1String(option);
        }
    }
    return {};
}

ExitCode testFolder(const CommandLine &line)
{
    const QString option = printerOption(line);
    if (!option.isEmpty()) {
        return line.usageError(QStringLiteral("%1 is for testing a printer, the folder '%2' for testing receipts.")
                                   .arg(option, line.argument(0)));
    }
    const bool isUpdate = line.isSet(QStringLiteral("update"));
    return testReceipts(line.argument(0), isUpdate ? EExpectation::Update : EExpectation::Compare);
}

/** The device to verify; nothing when an option is wrong, which standard error was told. */
std::optional<PrintDeviceInfo> device(const CommandLine &line)
{
    for (const char *needed : {"port", "model"}) {
        if (line.value(QLatin1String(needed)).isEmpty()) {
            line.usageError(QStringLiteral("--%1 is missing.").arg(QLatin1String(needed)));
            return {};
        }
    }
    const QStringList models = verifiableModels();
    const auto model = line.choice(QStringLiteral("model"), models, Qt::CaseInsensitive);
    const auto baudRate = model ? line.number(QStringLiteral("baud"), 1, HighestBaudRate) : std::nullopt;
    const auto parity = baudRate ? line.choice(QStringLiteral("parity"), names(Parities)) : std::nullopt;
    const auto flow = parity ? line.choice(QStringLiteral("flow"), names(FlowControls)) : std::nullopt;
    if (!flow) {
        return {};
    }
    PortSettings settings;
    settings.setPortName(line.value(QStringLiteral("port")));
    settings.setBaudRate(*baudRate);
    settings.setParity(Parities[*parity].value);
    settings.setFlowControl(FlowControls[*flow].value);
    PrintDeviceInfo result;
    result.setDeviceType(TextPrinter);
    result.setDeviceId(models.at(*model));
    result.setSettings(settings);
    return result;
}

// Some models have settings of their own, whatever they are asked with.
bool isAsAsked(const CommandLine &line, const PortSettings &wanted, const PortSettings &found)
{
    const auto isOther = [&](const char *option, int asked, int answered) {
        return line.isSet(QLatin1String(option)) && asked != answered;
    };
    return !isOther("baud", wanted.baudRate(), found.baudRate()) && !isOther("parity", wanted.parity(), found.parity())
        && !isOther("flow", wanted.flowControl(), found.flowControl());
}

ExitCode verify(const CommandLine &line, const PrintDeviceInfo &wanted)
{
    const QString recording = line.value(QStringLiteral("record"));
    const EReportForm form = line.isSet(QStringLiteral("json")) ? EReportForm::Json : EReportForm::Text;
    const PortFacts port = portFacts(wanted.settings().portName());
    WireListener listener;
    if (!recording.isEmpty() && !listener.record(recording)) {
        complain(QStringLiteral("'%1' cannot be written: %2").arg(recording, listener.errorString()));
        return ExitWrongInput;
    }
    const QVector<Verdict> verdicts = runSearch(listener, {port}, [&](Search &run) { run.verify(port, wanted); });
    const ExitCode code = writeReport(verdicts, form);
    const Verdict &verdict = verdicts.first();
    const QString found = verdict.device.deviceId();
    if (found.isEmpty()) {
        const bool mayBeSettings = verdict.kind == EVerdict::Silent || verdict.kind == EVerdict::Foreign;
        if (mayBeSettings) {
            complain(
                QStringLiteral("no answer with these settings; 'printsrv find %1' tries the others").arg(port.name));
        }
        return ExitWrongInput;
    }
    if (found != wanted.deviceId()) {
        complain(QStringLiteral("a %1 answers at '%2', not a %3").arg(found, port.name, wanted.deviceId()));
        return ExitWrongInput;
    }
    const PortSettings answered = verdict.device.settings();
    if (!isAsAsked(line, wanted.settings(), answered)) {
        complain(QStringLiteral("the %1 at '%2' answers only with %3").arg(found, port.name, settingsText(answered)));
        return ExitWrongInput;
    }
    return code;
}

} // namespace

ExitCode runTest(const QStringList &arguments)
{
    CommandLine line(QStringLiteral("test"), QLatin1String(Description),
                     {QStringLiteral("printsrv test receipts"), QStringLiteral("printsrv test receipts --update"),
                      QStringLiteral("printsrv test --port ttyS0 --model CUSTOM_VKP_80 --baud 19200")});
    addFolderOptions(&line);
    addPrinterOptions(&line);
    if (const auto code = line.parse(arguments)) {
        return *code;
    }
    if (!line.arguments().isEmpty()) {
        return testFolder(line);
    }
    if (line.isSet(QStringLiteral("update")) || printerOption(line).isEmpty()) {
        return line.usageError(
            QStringLiteral("Give the folder of the receipts to test, or --port and --model of a printer."));
    }
    const auto wanted = device(line);
    if (!wanted) {
        return ExitUsage;
    }
    return verify(line, *wanted);
}

} // namespace printsrv
