// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "printersettings.h"

#include "descriptor.h"
#include "settingslocker.h"

using namespace printsrv;

namespace {

constexpr int ShortestTimeoutMs = 1000;
constexpr int LongestTimeoutMs = 30000;

QString textFrom(const QString &value)
{
    return value;
}

quint32 unsignedFrom(const QString &value)
{
    return value.toUInt();
}

template<typename Number>
Number numberFrom(const QString &value)
{
    return static_cast<Number>(value.toInt());
}

bool flagFrom(const QString &value)
{
    return value.toInt() != 0;
}

int timeoutFrom(const QString &value)
{
    return qBound(ShortestTimeoutMs, value.toInt(), LongestTimeoutMs);
}

// Of the enumerations with the values 0, 1 and 2.
template<typename Enum>
Enum choiceFrom(const QString &value)
{
    const int number = value.toInt();
    return number == 1 || number == 2 ? static_cast<Enum>(number) : static_cast<Enum>(0);
}

template<auto Target, auto Convert>
void store(const QString &text)
{
    *Target = Convert(text);
}

} // namespace

const QString PrinterSettings::SECTION = QStringLiteral("PRINTER");
const QString PrinterSettings::PRINTER_TYPE = QStringLiteral("printerType");
const QString PrinterSettings::PRINTER_ID = QStringLiteral("printerName");
const QString PrinterSettings::EMPTY_STRINGS_AT_END = QStringLiteral("emptyStringsAtEnd");
const QString PrinterSettings::SPACES_BEFORE_STRING = QStringLiteral("spacesBeforeString");
const QString PrinterSettings::PAPER_LOOP_FLAG = QStringLiteral("paperLoopFlag");
const QString PrinterSettings::MOVE_CHECK_TO = QStringLiteral("moveCheckTo");
const QString PrinterSettings::CHARACTER_MODE = QStringLiteral("characterMode");
const QString PrinterSettings::ENABLE_PORT_LOGGING = QStringLiteral("enablePortLogging");
const QString PrinterSettings::REMOTE_FR_PRINT_TIMEOUT = QStringLiteral("frPrintTout");
const QString PrinterSettings::REMOTE_FR_TEST_TIMEOUT = QStringLiteral("frSrvTestTout");
const QString PrinterSettings::MAPPED_EMPTY_STRINGS_AT_END = QStringLiteral("PRINT_EMPTY_STRINGS_AT_END");
const QString PrinterSettings::MAPPED_SPACES_BEFORE_STRING = QStringLiteral("PRINT_SPACES_BEFORE_STRING");
const QString PrinterSettings::MAPPED_PAPER_LOOP_FLAG = QStringLiteral("PAPER_LOOP_FLAG");
const QString PrinterSettings::MAPPED_MOVE_CHECK_TO = QStringLiteral("MOVE_TICKET_TO");
const QString PrinterSettings::MAPPED_PRINTER_CHARACTER_MODE = QStringLiteral("PRINTER_CHARACTER_MODE");

QMutex PrinterSettings::_settingsMutex;
QString PrinterSettings::_printerId;
quint32 PrinterSettings::_printerType = 0;
qint32 PrinterSettings::_emptyStringsAtEnd = 5;
qint32 PrinterSettings::_spacessBeforeString = 0;
EPaperLoopFlag PrinterSettings::_paperLoopFlag = PaperLoopAsConfigured;
qint8 PrinterSettings::_moveCheckTo = 50;
IPrintDeviceSettings::ECharactersMode PrinterSettings::_charactersMode = CharactersAsWritten;
bool PrinterSettings::_enablePortLogging = false;
qint32 PrinterSettings::_frPrintTout = 10000;
qint32 PrinterSettings::_frSrvTestTout = 5000;
QSharedPointer<RS232Settings> PrinterSettings::_port(new RS232Settings(QString()));

PrinterSettings::PrinterSettings()
{
    PrinterSettings::port();
}

PrinterSettings::~PrinterSettings() = default;

// The caller holds the mutex.
const QSharedPointer<RS232Settings> &PrinterSettings::pointPortAt(const QString &section)
{
    if (_port.isNull()) {
        _port.reset(new RS232Settings(section));
    }
    if (_port->section() != section) {
        _port->setSection(section);
    }
    return _port;
}

QSharedPointer<RS232Settings> PrinterSettings::port(const QString &printer) const
{
    const SettingsLocker locker(_settingsMutex);
    return pointPortAt(printer);
}

QSharedPointer<RS232Settings> PrinterSettings::port() const
{
    return PrinterSettings::port(printerId());
}

unsigned int PrinterSettings::printerType() const
{
    return lockedRead(_settingsMutex, _printerType);
}

void PrinterSettings::setPrinterType(unsigned int printerType)
{
    lockedWrite(_settingsMutex, _printerType, printerType);
}

QString PrinterSettings::printerId() const
{
    return lockedRead(_settingsMutex, _printerId);
}

void PrinterSettings::setPrinterId(const QString &printerId)
{
    const SettingsLocker locker(_settingsMutex);
    _printerId = printerId;
    pointPortAt(printerId);
}

bool PrinterSettings::portLoggingEnabled() const
{
    return lockedRead(_settingsMutex, _enablePortLogging);
}

void PrinterSettings::setPortLoggingEnabled(bool isEnabled)
{
    lockedWrite(_settingsMutex, _enablePortLogging, isEnabled);
}

int PrinterSettings::emptyStringsAtEnd() const
{
    return lockedRead(_settingsMutex, _emptyStringsAtEnd);
}

void PrinterSettings::setEmptyStringsAtEnd(int count)
{
    lockedWrite(_settingsMutex, _emptyStringsAtEnd, count);
}

int PrinterSettings::spacessBeforeString() const
{
    return lockedRead(_settingsMutex, _spacessBeforeString);
}

void PrinterSettings::setSpacesBeforeString(int count)
{
    lockedWrite(_settingsMutex, _spacessBeforeString, count);
}

IPrintDeviceSettings::ECharactersMode PrinterSettings::charactersMode() const
{
    return lockedRead(_settingsMutex, _charactersMode);
}

void PrinterSettings::setCharactersMode(const IPrintDeviceSettings::ECharactersMode &mode)
{
    lockedWrite(_settingsMutex, _charactersMode, mode);
}

bool PrinterSettings::paperLoopSupported() const
{
    return false;
}

bool PrinterSettings::paperLoopSupported(const QString &) const
{
    return false;
}

EPaperLoopFlag PrinterSettings::paperLoopFlag() const
{
    return paperLoopSupported() ? lockedRead(_settingsMutex, _paperLoopFlag) : PaperLoopAsConfigured;
}

void PrinterSettings::setPaperLoopFlag(EPaperLoopFlag flag)
{
    lockedWrite(_settingsMutex, _paperLoopFlag, flag);
}

EPaperLoopFlag PrinterSettings::paperLoopFlag(const QString &printer)
{
    return paperLoopSupported(printer) ? lockedRead(_settingsMutex, _paperLoopFlag) : PaperLoopAsConfigured;
}

void PrinterSettings::setPaperLoopFlag(EPaperLoopFlag flag, const QString &printer)
{
    const EPaperLoopFlag supported = paperLoopSupported(printer) ? flag : PaperLoopAsConfigured;
    lockedWrite(_settingsMutex, _paperLoopFlag, supported);
}

bool PrinterSettings::checkMoveSettingsSupported() const
{
    return false;
}

bool PrinterSettings::checkMoveSettingsSupported(const QString &) const
{
    return false;
}

QVariantList PrinterSettings::toList() const
{
    const SettingsLocker locker(_settingsMutex);
    const auto entry = [](const QString &key, const QVariant &value) {
        return Descriptor{SECTION, key, value}.toMap();
    };
    return QVariantList{entry(PRINTER_TYPE, static_cast<int>(_printerType)),
                        entry(PRINTER_ID, _printerId),
                        entry(EMPTY_STRINGS_AT_END, _emptyStringsAtEnd),
                        entry(SPACES_BEFORE_STRING, _spacessBeforeString),
                        entry(PAPER_LOOP_FLAG, static_cast<int>(_paperLoopFlag)),
                        entry(MOVE_CHECK_TO, static_cast<int>(_moveCheckTo)),
                        entry(CHARACTER_MODE, static_cast<int>(_charactersMode)),
                        entry(ENABLE_PORT_LOGGING, _enablePortLogging ? 1 : 0),
                        entry(REMOTE_FR_PRINT_TIMEOUT, _frPrintTout),
                        entry(REMOTE_FR_TEST_TIMEOUT, _frSrvTestTout)}
    + pointPortAt(_printerId)->toList();
}

void PrinterSettings::setList(const QVariantList &list)
{
    const SettingsLocker locker(_settingsMutex);
    for (const QVariant &element : list) {
        storeDescriptor(element.toMap());
    }
}

bool PrinterSettings::setValue(const QVariantMap &descriptor)
{
    const SettingsLocker locker(_settingsMutex);
    return storeDescriptor(descriptor);
}

// The caller holds the mutex.
bool PrinterSettings::storeDescriptor(const QVariantMap &map)
{
    const Descriptor descriptor = Descriptor::fromMap(map);
    if (!descriptor.hasGroup) {
        return false;
    }
    if (descriptor.group == SECTION) {
        return storeValue(descriptor.key, descriptor.value.toString());
    }
    return descriptor.group == _printerId && pointPortAt(_printerId)->setValue(map);
}

// The caller holds the mutex.
bool PrinterSettings::storeValue(const QString &key, const QString &value)
{
    struct Rule
    {
        const QString *key;
        void (*store)(const QString &text);
    };
    static constexpr Rule rules[] = {
        {&PRINTER_TYPE, store<&_printerType, unsignedFrom>},
        {&PRINTER_ID, store<&_printerId, textFrom>},
        {&EMPTY_STRINGS_AT_END, store<&_emptyStringsAtEnd, numberFrom<qint32>>},
        {&SPACES_BEFORE_STRING, store<&_spacessBeforeString, numberFrom<qint32>>},
        {&PAPER_LOOP_FLAG, store<&_paperLoopFlag, choiceFrom<EPaperLoopFlag>>},
        {&MOVE_CHECK_TO, store<&_moveCheckTo, numberFrom<qint8>>},
        {&CHARACTER_MODE, store<&_charactersMode, choiceFrom<ECharactersMode>>},
        {&ENABLE_PORT_LOGGING, store<&_enablePortLogging, flagFrom>},
        {&REMOTE_FR_PRINT_TIMEOUT, store<&_frPrintTout, timeoutFrom>},
        {&REMOTE_FR_TEST_TIMEOUT, store<&_frSrvTestTout, timeoutFrom>},
    };
    for (const Rule &rule : rules) {
        if (*rule.key == key) {
            rule.store(value);
            return true;
        }
    }
    return false;
}

int PrinterSettings::frPrintTout() const
{
    return lockedRead(_settingsMutex, _frPrintTout);
}

void PrinterSettings::setFrPrintTout(const int &timeoutMs)
{
    lockedWrite(_settingsMutex, _frPrintTout, timeoutMs);
}

int PrinterSettings::frSrvTestTout() const
{
    return lockedRead(_settingsMutex, _frSrvTestTout);
}

void PrinterSettings::setFrSrvTestTout(const int &timeoutMs)
{
    lockedWrite(_settingsMutex, _frSrvTestTout, timeoutMs);
}

signed char PrinterSettings::moveCheckTo(const QString &printer) const
{
    return checkMoveSettingsSupported(printer) ? lockedRead(_settingsMutex, _moveCheckTo) : qint8{0};
}

signed char PrinterSettings::moveCheckTo() const
{
    return moveCheckTo(printerId());
}

void PrinterSettings::setCheckMovingTo(signed char distance)
{
    lockedWrite(_settingsMutex, _moveCheckTo, distance);
}

void PrinterSettings::setCheckMovingTo(const QString &printer, signed char distance)
{
    if (checkMoveSettingsSupported(printer)) {
        setCheckMovingTo(distance);
    }
}

void PrinterSettings::setPortSettings(const QString &printer, const RS232Settings &settings)
{
    const SettingsLocker locker(_settingsMutex);
    *pointPortAt(printer) = settings;
}

QString PrinterSettings::printerNameToSection(const QString &printerName) const
{
    return printerName.toHtmlEscaped();
}
