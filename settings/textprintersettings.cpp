// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "textprintersettings.h"

#include "descriptor.h"
#include "settingslocker.h"
#include "textprintermodels.h"

using namespace printsrv;

const QString TextPrinterSettings::PAPER_TYPR_ID = QStringLiteral("paperTypeId");
const QString TextPrinterSettings::PRINTER_CODEC = QStringLiteral("codec");
const QString TextPrinterSettings::DEFAULT_FONT = QStringLiteral("defaultFont");
const QString TextPrinterSettings::PRINT_AS_IMAGE = QStringLiteral("printAsImage");

qint32 TextPrinterSettings::_paperTypeId = 0;
QString TextPrinterSettings::_codec = QStringLiteral("cp866");
QString TextPrinterSettings::_defaultFont;
bool TextPrinterSettings::_printAsImage = false;

// What the rules for descriptors ask of a printer; found before the mutex is taken, as it takes the mutex itself.
struct TextPrinterSettings::Model
{
    QString printer;
    bool hasImages;
    bool needsCodec;
};

TextPrinterSettings::TextPrinterSettings()
{
    ITextPrinterSettings::loadAvailablePrinters();
}

TextPrinterSettings::~TextPrinterSettings() = default;

bool TextPrinterSettings::paperLoopSupported() const
{
    return paperLoopSupported(printerId());
}

bool TextPrinterSettings::paperLoopSupported(const QString &printer) const
{
    return printerInfo(printer).paperLoopSupported();
}

bool TextPrinterSettings::checkMoveSettingsSupported() const
{
    return checkMoveSettingsSupported(printerId());
}

bool TextPrinterSettings::checkMoveSettingsSupported(const QString &printer) const
{
    return printerInfo(printer).checkMoveSettingsSupported();
}

TextPrinterSettings::Model TextPrinterSettings::currentModel() const
{
    const QString printer = printerId();
    return {printer, imageAvailable(printer), needCodecSettings(printer)};
}

QVariantList TextPrinterSettings::toList() const
{
    QVariantList list = PrinterSettings::toList();
    const Model model = currentModel();
    const auto append = [&](const QString &key, const QVariant &value) {
        list.append(Descriptor{model.printer, key, value}.toMap());
    };
    const SettingsLocker locker(_settingsMutex);
    append(PAPER_TYPR_ID, _paperTypeId);
    if (model.needsCodec) {
        append(PRINTER_CODEC, _codec);
    }
    if (model.hasImages) {
        append(PRINT_AS_IMAGE, _printAsImage ? 1 : 0);
    }
    if (model.hasImages && _printAsImage) {
        append(DEFAULT_FONT, _defaultFont);
    }
    return list;
}

void TextPrinterSettings::setList(const QVariantList &list)
{
    PrinterSettings::setList(list);
    const Model model = currentModel();
    const SettingsLocker locker(_settingsMutex);
    for (const QVariant &element : list) {
        storeDescriptor(element.toMap(), model);
    }
}

bool TextPrinterSettings::setValue(const QVariantMap &descriptor)
{
    if (PrinterSettings::setValue(descriptor)) {
        return true;
    }
    const Model model = currentModel();
    const SettingsLocker locker(_settingsMutex);
    return storeDescriptor(descriptor, model);
}

// The caller holds the mutex.
bool TextPrinterSettings::storeDescriptor(const QVariantMap &map, const Model &model)
{
    const Descriptor descriptor = Descriptor::fromMap(map);
    if (!descriptor.hasGroup || descriptor.group != model.printer) {
        return false;
    }
    const QString value = descriptor.value.toString();
    if (descriptor.key == PAPER_TYPR_ID) {
        _paperTypeId = value.toInt();
        return true;
    }
    if (descriptor.key == PRINTER_CODEC) {
        _codec = model.needsCodec ? value : _codec;
        return true;
    }
    if (!model.hasImages) { // Contract: whatever the key is
        _defaultFont.clear();
        _printAsImage = false;
    } else if (descriptor.key == PRINT_AS_IMAGE) {
        _printAsImage = value.toUInt() != 0;
    } else if (descriptor.key == DEFAULT_FONT) {
        _defaultFont = value;
    }
    return descriptor.key == PRINT_AS_IMAGE || descriptor.key == DEFAULT_FONT;
}

PrinterInfo TextPrinterSettings::printerInfo(const QString &printer) const
{
    return ITextPrinterSettings::printerInfo(printer);
}

PrinterInfo TextPrinterSettings::printerInfo() const
{
    return printerInfo(printerId());
}

PaperInfo TextPrinterSettings::paper(const QString &printer) const
{
    return printerInfo(printer).paperType(paperTypeId(printer));
}

PaperInfo TextPrinterSettings::paper() const
{
    return paper(printerId());
}

int TextPrinterSettings::paperTypeId(const QString &) const
{
    return lockedRead(_settingsMutex, _paperTypeId);
}

int TextPrinterSettings::paperTypeId() const
{
    return paperTypeId(printerId());
}

bool TextPrinterSettings::imageAvailable(const QString &printer) const
{
    return printerInfo(printer).customImages();
}

bool TextPrinterSettings::imageAvailable() const
{
    return imageAvailable(printerId());
}

void TextPrinterSettings::setPaperTypeId(const QString &, int paperTypeId)
{
    lockedWrite(_settingsMutex, _paperTypeId, paperTypeId);
}

void TextPrinterSettings::setPaperTypeId(int paperTypeId)
{
    setPaperTypeId(printerId(), paperTypeId);
}

bool TextPrinterSettings::needCodecSettings() const
{
    return needCodecSettings(printerId());
}

QString TextPrinterSettings::codec() const
{
    return codec(printerId());
}

void TextPrinterSettings::setCodec(const QString &codec)
{
    setCodec(printerId(), codec);
}

bool TextPrinterSettings::needCodecSettings(const QString &printer) const
{
    return printer == TextPrinterModels::MODEL_GENERAL_EPSON;
}

QString TextPrinterSettings::codec(const QString &) const
{
    return lockedRead(_settingsMutex, _codec);
}

void TextPrinterSettings::setCodec(const QString &, const QString &codec)
{
    lockedWrite(_settingsMutex, _codec, codec);
}

QString TextPrinterSettings::defaultFont(const QString &) const
{
    return lockedRead(_settingsMutex, _defaultFont);
}

QString TextPrinterSettings::defaultFont() const
{
    return defaultFont(printerId());
}

void TextPrinterSettings::setDefaultFont(const QString &font, const QString &)
{
    lockedWrite(_settingsMutex, _defaultFont, font);
}

void TextPrinterSettings::setDefaultFont(const QString &font)
{
    setDefaultFont(font, printerId());
}

bool TextPrinterSettings::printAsImage(const QString &printer) const
{
    return imageAvailable(printer) && lockedRead(_settingsMutex, _printAsImage);
}

bool TextPrinterSettings::printAsImage() const
{
    return printAsImage(printerId());
}

void TextPrinterSettings::setPrintAsImage(bool isImage, const QString &printer)
{
    const bool isSupported = imageAvailable(printer);
    lockedWrite(_settingsMutex, _printAsImage, isImage && isSupported);
}

void TextPrinterSettings::setPrintAsImage(bool isImage)
{
    setPrintAsImage(isImage, printerId());
}
