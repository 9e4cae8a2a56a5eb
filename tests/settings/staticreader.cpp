// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include <checktemplatessettings.h>
#include <printservicestatetolbuswrapper.h>
#include <systemprintersettings.h>
#include <textprintermodels.h>
#include <textprintersettings.h>

// A library whose static objects read the library's constants and use its settings, on the way up and on the way down.
namespace {

const QString Keys = PrinterSettings::SECTION + TextPrinterSettings::PAPER_TYPR_ID
    + SystemPrinterSettings::FULL_JUSTIFY_ALIGN + CheckTemplatesSettings::DEFAULT_CHECK_TEMPLATE
    + TextPrinterModels::MODEL_TSP_TUP + PrinterInfo::RC_INFO_FILENAME;

struct User
{
    TextPrinterSettings text;
    SystemPrinterSettings system;
    CheckTemplatesSettings templates;
    PrintServiceStateTolbusWrapper wrapper{PrintServiceState()};
    QString defaults = text.codec() + QString::number(text.frPrintTout()) + templates.defaultCheckTemplate()
        + QString::number(text.availablePrinters().size()) + text.port()->section();

    ~User()
    {
        IPrintDeviceSettings::setPrintDeviceSettings(QSharedPointer<TextPrinterSettings>::create());
        IPrintDeviceSettings::setPrintDeviceSettings({}); // the pointer's deleter is about to be unloaded
        text.setCodec(text.codec() + QStringLiteral("!"));
        text.setList(text.toList() + system.toList());
    }
};

User user;

} // namespace

/** Null when the static objects saw what they should, else what they saw. The codec grows with each unloaded user. */
extern "C" Q_DECL_EXPORT const char *staticReaderFault()
{
    static QByteArray seen;
    seen = (Keys + QLatin1Char(' ') + user.defaults.remove(QLatin1Char('!'))).toUtf8();
    const bool isRight = seen
        == "PRINTERpaperTypeIdfullJustifyAlignmentdefaultCheckTemplateTSP-TUP:/printinfo/printers.info "
           "cp86610000default.cpt14";
    return isRight ? nullptr : seen.constData();
}
