// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "testfixture.h"

#include <systemprintersettings.h>
#include <textprintermodels.h>
#include <textprintersettings.h>

#include <cstring>

namespace {

// The slot of a virtual function in its class's table: what x86 compilers keep in a pointer to it, as 1 + its offset.
template<typename Function>
int slotOf(Function function)
{
    std::uintptr_t offset = 0;
    std::memcpy(&offset, &function, sizeof(offset));
    return static_cast<int>((offset - 1) / sizeof(void *)) - 2; // after the two entries of the destructor
}

using Printer = const QString &;

} // namespace

class TestIPrintDeviceSettings : public TestFixture
{
    Q_OBJECT

private Q_SLOTS:
    void registersNothingAtFirst();
    void givesTheViewThatFits();
    void sharesOwnership();
    void carriesTheCatalogueFromBirth();
    void keepsOtherModels();
    void keepsTheSlotOrder();
};

void TestIPrintDeviceSettings::registersNothingAtFirst()
{
    QVERIFY(IPrintDeviceSettings::printDeviceSettings().isNull());
    QVERIFY(IPrintDeviceSettings::textPrinterSettings().isNull());
    QVERIFY(IPrintDeviceSettings::systemPrinterSettings().isNull());
}

void TestIPrintDeviceSettings::givesTheViewThatFits()
{
    const QSharedPointer<TextPrinterSettings> text(new TextPrinterSettings);
    IPrintDeviceSettings::setPrintDeviceSettings(text);
    QCOMPARE(IPrintDeviceSettings::textPrinterSettings().data(), static_cast<ITextPrinterSettings *>(text.data()));
    QVERIFY(IPrintDeviceSettings::systemPrinterSettings().isNull());

    const QSharedPointer<SystemPrinterSettings> system(new SystemPrinterSettings);
    IPrintDeviceSettings::setPrintDeviceSettings(system);
    QCOMPARE(IPrintDeviceSettings::systemPrinterSettings().data(),
             static_cast<ISystemPrinterSettings *>(system.data()));
    QVERIFY(IPrintDeviceSettings::textPrinterSettings().isNull());

    IPrintDeviceSettings::setPrintDeviceSettings({});
    QVERIFY(IPrintDeviceSettings::systemPrinterSettings().isNull());
}

void TestIPrintDeviceSettings::sharesOwnership()
{
    QWeakPointer<IPrintDeviceSettings> watched;
    {
        const QSharedPointer<IPrintDeviceSettings> settings(new TextPrinterSettings);
        watched = settings;
        IPrintDeviceSettings::setPrintDeviceSettings(settings);
    }
    QSharedPointer<ITextPrinterSettings> view = IPrintDeviceSettings::textPrinterSettings();
    IPrintDeviceSettings::setPrintDeviceSettings({});
    QVERIFY(!watched.isNull());
    view.reset();
    QVERIFY(watched.isNull());
}

void TestIPrintDeviceSettings::carriesTheCatalogueFromBirth()
{
    const TextPrinterSettings settings;
    QCOMPARE(settings.availablePrinters().size(), 14);
    QCOMPARE(settings.printerInfo(TextPrinterModels::MODEL_CUSTOM_VKP_80).name(), QStringLiteral("Custom VKP-80"));
    QCOMPARE(settings.printerInfo(TextPrinterModels::MODEL_PNG), PrinterInfo());
}

void TestIPrintDeviceSettings::keepsOtherModels()
{
    TextPrinterSettings settings;
    PrinterInfo model;
    model.setId(QStringLiteral("MINE"));
    settings.setAvailablePrinters({{model.id(), model}});
    settings.loadAvailablePrinters();
    QCOMPARE(settings.availablePrinters().keys(), QStringList{model.id()});
    settings.setAvailablePrinters({});
    settings.loadAvailablePrinters();
    QCOMPARE(settings.availablePrinters().size(), 14);
}

void TestIPrintDeviceSettings::keepsTheSlotOrder()
{
    using Device = IPrintDeviceSettings;
    using Text = ITextPrinterSettings;
    using System = ISystemPrinterSettings;
    QCOMPARE(slotOf(static_cast<QSharedPointer<RS232Settings> (Device::*)(Printer) const>(&Device::port)), 0);
    QCOMPARE(slotOf(static_cast<QSharedPointer<RS232Settings> (Device::*)() const>(&Device::port)), 1);
    QCOMPARE(slotOf(&Device::printerId), 4);
    QCOMPARE(slotOf(&Device::spacessBeforeString), 10);
    QCOMPARE(slotOf(&Device::setCharactersMode), 13);

    using Settings = PrinterSettings;
    QCOMPARE(slotOf(&Settings::setCharactersMode), 13);
    QCOMPARE(slotOf(static_cast<bool (Settings::*)() const>(&Settings::paperLoopSupported)), 14);
    QCOMPARE(slotOf(static_cast<EPaperLoopFlag (Settings::*)(Printer)>(&Settings::paperLoopFlag)), 18);
    QCOMPARE(slotOf(static_cast<bool (Settings::*)() const>(&Settings::checkMoveSettingsSupported)), 20);
    QCOMPARE(slotOf(&Settings::toList), 22);
    QCOMPARE(slotOf(&Settings::setValue), 24);

    QCOMPARE(slotOf(&Text::setAvailablePrinters), 1);
    QCOMPARE(slotOf(static_cast<PrinterInfo (Text::*)() const>(&Text::printerInfo)), 3);
    QCOMPARE(slotOf(static_cast<void (Text::*)(int)>(&Text::setPaperTypeId)), 9);
    QCOMPARE(slotOf(static_cast<bool (Text::*)() const>(&Text::needCodecSettings)), 10);
    QCOMPARE(slotOf(static_cast<void (Text::*)(Printer, Printer)>(&Text::setCodec)), 15);
    QCOMPARE(slotOf(&Text::loadAvailablePrinters), 16);

    using TextSettings = TextPrinterSettings;
    QCOMPARE(slotOf(static_cast<PrinterInfo (TextSettings::*)(Printer) const>(&TextSettings::printerInfo)), 25);
    QCOMPARE(slotOf(static_cast<bool (TextSettings::*)() const>(&TextSettings::imageAvailable)), 32);
    QCOMPARE(slotOf(static_cast<QString (TextSettings::*)() const>(&TextSettings::codec)), 36);
    QCOMPARE(slotOf(static_cast<void (TextSettings::*)(Printer, Printer)>(&TextSettings::setCodec)), 40);

    QCOMPARE(slotOf(&System::defaultFont), 0);
    QCOMPARE(slotOf(&System::setPageWidth), 7);
    QCOMPARE(slotOf(&System::emtyStrings), 12);
    QCOMPARE(slotOf(&System::setBottomMargin), 21);
    QCOMPARE(slotOf(&System::setFullJustifyAlign), 27);
    QCOMPARE(slotOf(&SystemPrinterSettings::defaultFont), 25);
    QCOMPARE(slotOf(&SystemPrinterSettings::setFullJustifyAlign), 52);
}

QTEST_GUILESS_MAIN(TestIPrintDeviceSettings)
#include "tst_iprintdevicesettings.moc"
