// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "actions.h"
#include "commandline.h"
#include "descriptorlist.h"
#include "inputfile.h"
#include "outputwriter.h"
#include "report.h"
#include "settingschange.h"
#include "settingsstore.h"

#include <printsrvsettings.h>
#include <systemprintersettings.h>
#include <textprintermodels.h>
#include <textprintersettings.h>

#include <QFileInfo>

#include <memory>

namespace printsrv {

namespace {

// The settings of one kind with the values of their file.
class StoredSettings
{
public:
    /** What it means that a file is not there which was asked for. */
    enum class EMissingFile {
        IsMade,
        IsTold,
    };

    static void addOptions(CommandLine &line)
    {
        line.addOption({QStringLiteral("kind")},
                       QStringLiteral("Settings of a text printer or of a printer of the system."),
                       QStringLiteral("text|system"), QStringLiteral("text"));
        line.addOption({QStringLiteral("file")},
                       QStringLiteral("INI file with the values, or a JSON descriptor list when it ends in .json; "
                                      "settings.ini in the service's data folder unless given."),
                       QStringLiteral("FILE"));
    }

    // Reads the command line and then the file; what it returns ends the command.
    [[nodiscard]] std::optional<ExitCode> open(CommandLine &line, const QStringList &arguments,
                                               EMissingFile missingFile = EMissingFile::IsMade)
    {
        if (const auto code = line.parse(arguments)) {
            return code;
        }
        const auto kind = line.choice(QStringLiteral("kind"), {QStringLiteral("text"), QStringLiteral("system")});
        if (!kind) {
            return ExitUsage;
        }
        m_path = line.isSet(QStringLiteral("file"))
            ? line.value(QStringLiteral("file"))
            : PrintSrvSettings().serviceDataPath() + QLatin1String("/settings.ini");
        const Outcome<QVariantList> loaded = SettingsStore(m_path).load();
        if (!loaded) {
            return complainAt(loaded.failure(), m_path);
        }
        if (missingFile == EMissingFile::IsTold && line.isSet(QStringLiteral("file")) && !QFileInfo::exists(m_path)) {
            complain(QStringLiteral("warning: there is no %1; these are the values without it").arg(m_path));
        }
        m_settings.reset(*kind == 0 ? static_cast<PrinterSettings *>(new TextPrinterSettings)
                                    : new SystemPrinterSettings);
        m_settings->setList(*loaded);
        return {};
    }

    // Stores what was accepted and complains of the rest, by its number when it is an element of the list.
    [[nodiscard]] ExitCode change(const QVariantList &descriptors, const QString &listName = {})
    {
        QVariantList stored;
        bool isAsAsked = true;
        for (int i = 0; i < descriptors.size(); ++i) {
            const QVariantMap descriptor = descriptors.at(i).toMap();
            const ChangeResult result = applyChange(*m_settings, descriptor);
            isAsAsked = isAsAsked && result.note.isEmpty();
            complainOf(result, descriptor, listName.isEmpty() ? listName : elementName(listName, i));
            if (result.isStored) {
                stored.append(result.stored);
                warnOfUnknownPrinter(result.stored);
                warnOfUnknownPaper(result.stored);
            }
        }
        const ExitCode code = stored.isEmpty() ? ExitDone : SettingsStore(m_path).save(stored);
        return code == ExitDone && !isAsAsked ? ExitWrongInput : code;
    }

    QVariantList list() const
    {
        return m_settings->toList();
    }

    // The group under which the key is shown; that of the current printer for a key that is not.
    QString groupFor(const QString &key) const
    {
        const QVariantList shown = list();
        const auto found = std::find_if(shown.begin(), shown.end(),
                                        [&](const QVariant &element) { return keyOf(element.toMap()) == key; });
        return found == shown.end() ? m_settings->printerId() : groupOf(found->toMap());
    }

private:
    static QString elementName(const QString &listName, int index)
    {
        const QString name = listName == QLatin1String("-") ? QStringLiteral("standard input") : listName;
        return QStringLiteral("%1: element %2").arg(name).arg(index + 1);
    }

    static void complainOf(const ChangeResult &result, const QVariantMap &descriptor, const QString &place)
    {
        QStringList parts{place, QString(groupOf(descriptor) + QLatin1Char(' ') + keyOf(descriptor)).trimmed(),
                          result.note};
        parts.removeAll(QString());
        if (!result.note.isEmpty()) {
            complain(parts.join(QStringLiteral(": ")));
        }
    }

    // The pseudo-printer PNG and printers to come are no models of the catalogue, but most often it is a slip.
    void warnOfUnknownPrinter(const QVariantMap &descriptor) const
    {
        const auto *settings = dynamic_cast<const TextPrinterSettings *>(m_settings.get());
        const QString id = valueOf(descriptor).toString();
        if (settings == nullptr || keyOf(descriptor) != PrinterSettings::PRINTER_ID || id.isEmpty()) {
            return;
        }
        if (id != TextPrinterModels::MODEL_PNG && settings->printerInfo(id).id() != id) {
            complain(QStringLiteral("warning: no model '%1'; 'printsrv models' lists those there are").arg(id));
        }
    }

    // Nor does the paper of a model that the catalogue does not have.
    void warnOfUnknownPaper(const QVariantMap &descriptor) const
    {
        const auto *settings = dynamic_cast<const TextPrinterSettings *>(m_settings.get());
        if (settings == nullptr || keyOf(descriptor) != TextPrinterSettings::PAPER_TYPR_ID) {
            return;
        }
        const auto papers = settings->printerInfo().paperTypes();
        QStringList known;
        const QList<int> numbers = papers.keys();
        for (const int number : numbers) {
            known.append(QString::number(number));
        }
        if (!papers.isEmpty() && !papers.contains(valueOf(descriptor).toInt())) {
            complain(QStringLiteral("warning: %1 has the papers %2")
                         .arg(settings->printerId(), known.join(QStringLiteral(", "))));
        }
    }

    QString m_path;
    std::unique_ptr<PrinterSettings> m_settings;
};

QString row(const QString &group, const QString &key, const QString &value)
{
    constexpr int groupWidth = 22;
    constexpr int keyWidth = 20;
    return group.leftJustified(groupWidth) + QStringLiteral("  ") + key.leftJustified(keyWidth) + QStringLiteral("  ")
        + value + QLatin1Char('\n');
}

QByteArray table(const QVariantList &list)
{
    QString text = row(QStringLiteral("GROUP"), QStringLiteral("KEY"), QStringLiteral("VALUE"));
    for (const QVariant &element : list) {
        const QVariantMap descriptor = element.toMap();
        text += row(groupOf(descriptor), keyOf(descriptor), valueOf(descriptor).toString());
    }
    return text.toUtf8();
}

ExitCode list(const QStringList &arguments)
{
    CommandLine line(QStringLiteral("settings list"), QStringLiteral("Shows the settings as the editor sees them."),
                     {QStringLiteral("printsrv settings list"),
                      QStringLiteral("printsrv settings list --kind system --file terminal.ini --json")});
    StoredSettings::addOptions(line);
    line.addOption({QStringLiteral("json")}, QStringLiteral("Writes a JSON array of descriptors."));
    StoredSettings settings;
    if (const auto code = settings.open(line, arguments, StoredSettings::EMissingFile::IsTold)) {
        return *code;
    }
    const bool isJson = line.isSet(QStringLiteral("json"));
    return writeOutput({}, isJson ? descriptorsToJson(settings.list()) : table(settings.list()));
}

ExitCode get(const QStringList &arguments)
{
    CommandLine line(QStringLiteral("settings get"), QStringLiteral("Shows the value of one setting."),
                     {QStringLiteral("printsrv settings get printerName")});
    StoredSettings::addOptions(line);
    line.addArgument(QStringLiteral("KEY"), QStringLiteral("Its key in the list."));
    StoredSettings settings;
    if (const auto code = settings.open(line, arguments, StoredSettings::EMissingFile::IsTold)) {
        return *code;
    }
    const QString key = line.argument(0);
    const QVariantList shown = settings.list();
    const int index = indexOf(shown, settings.groupFor(key), key);
    if (index < 0) {
        complain(QStringLiteral("no setting '%1': 'printsrv settings list' shows those there are").arg(key));
        return ExitWrongInput;
    }
    return writeOutput({}, valueOf(shown.at(index).toMap()).toString().toUtf8() + '\n');
}

void addSetOptions(CommandLine &line)
{
    StoredSettings::addOptions(line);
    line.addOption({QStringLiteral("group")},
                   QStringLiteral("The setting's group; the one in which the list shows it unless given."),
                   QStringLiteral("GROUP"));
    line.addArgument(QStringLiteral("KEY"), QStringLiteral("Its key in the list."));
    line.addArgument(QStringLiteral("VALUE"), QStringLiteral("The new value; after '--' when it begins with '-'."),
                     CommandLine::EPresence::MayBeEmpty);
}

ExitCode set(const QStringList &arguments)
{
    CommandLine line(
        QStringLiteral("settings set"),
        QStringLiteral("Changes one setting in the file. What is refused is named with the reason and the exit\n"
                       "code 1; a timeout out of range is stored as the nearest one, also with the exit code 1."),
        {QStringLiteral("printsrv settings set printerName CUSTOM_VKP_80"),
         QStringLiteral("printsrv settings set baudRate 115200 --file terminal.ini"),
         QStringLiteral("printsrv settings set moveCheckTo -- -7")});
    addSetOptions(line);
    StoredSettings settings;
    if (const auto code = settings.open(line, arguments)) {
        return *code;
    }
    const QString key = line.argument(0);
    const QString group
        = line.isSet(QStringLiteral("group")) ? line.value(QStringLiteral("group")) : settings.groupFor(key);
    return settings.change({makeDescriptor(group, key, line.argument(1))});
}

ExitCode exportList(const QStringList &arguments)
{
    CommandLine line(QStringLiteral("settings export"),
                     QStringLiteral("Writes the settings as a JSON descriptor list, for an editor or for 'import'."),
                     {QStringLiteral("printsrv settings export -o settings.json")});
    StoredSettings::addOptions(line);
    line.addOption({QStringLiteral("o"), QStringLiteral("output")},
                   QStringLiteral("Writes to a file, completely or not at all."), QStringLiteral("FILE"));
    StoredSettings settings;
    if (const auto code = settings.open(line, arguments, StoredSettings::EMissingFile::IsTold)) {
        return *code;
    }
    return writeOutput(line.value(QStringLiteral("output")), descriptorsToJson(settings.list()));
}

ExitCode importList(const QStringList &arguments)
{
    CommandLine line(QStringLiteral("settings import"),
                     QStringLiteral("Applies the descriptors of a JSON list in their order and keeps those that are\n"
                                    "accepted. Each one that is refused is named; the exit code is then 1."),
                     {QStringLiteral("printsrv settings import settings.json"),
                      QStringLiteral("printsrv settings export | ssh other printsrv settings import -")});
    StoredSettings::addOptions(line);
    line.addArgument(QStringLiteral("LIST"), QStringLiteral("The list, or - for standard input."));
    StoredSettings settings;
    if (const auto code = settings.open(line, arguments)) {
        return *code;
    }
    const QString path = line.argument(0);
    const Outcome<QByteArray> json = readInput(path);
    const Outcome<QVariantList> descriptors = json ? descriptorsFromJson(*json) : json.failure();
    if (!descriptors) {
        return complainAt(descriptors.failure(), path);
    }
    return settings.change(*descriptors, path);
}

} // namespace

ExitCode runSettings(const QStringList &arguments)
{
    const ActionGroup group{"settings",
                            "Shows and changes the printing settings of a terminal.",
                            {{"list", "shows all settings", list},
                             {"get", "shows one setting", get},
                             {"set", "changes one setting", set},
                             {"export", "writes a descriptor list", exportList},
                             {"import", "applies a descriptor list", importList}},
                            {QStringLiteral("printsrv settings list --file terminal.ini"),
                             QStringLiteral("printsrv settings set printerName CUSTOM_VKP_80 --file terminal.ini"),
                             QStringLiteral("printsrv settings export --file terminal.ini -o settings.json")}};
    return runAction(group, arguments);
}

} // namespace printsrv
