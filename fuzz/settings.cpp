// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "support.h"
#include "targets.h"

#include <checktemplatessettings.h>
#include <systemprintersettings.h>
#include <textprintersettings.h>

namespace {

/** The values are class-wide: each input starts with the same ones, or a crash could not be shown again. */
template<typename Settings>
void reset(const QVariantList &defaults)
{
    Settings settings;
    settings.setList(defaults);
    settings.setList(defaults);
}

/** Takes a list over and shows it; what is shown is taken over unchanged. */
template<typename Settings>
QVariantList takeOver(const QVariantList &list)
{
    static const QVariantList defaults = Settings().toList();
    reset<Settings>(defaults);
    Settings settings;
    for (const QVariant &element : list) {
        settings.setValue(element.toMap());
    }
    settings.setList(list);
    return settings.toList();
}

template<typename Settings>
void requireFixedPoint(const QVariantList &list)
{
    const QVariantList shown = takeOver<Settings>(list);
    Settings settings;
    settings.setList(shown);
    fuzz::require(settings.toList() == shown, "what a settings class shows it takes over unchanged");
}

} // namespace

void fuzz::settings(const QByteArray &input)
{
    const LogCount log;
    const QVariantList list = jsonVariant(input).toList();
    requireFixedPoint<TextPrinterSettings>(list);
    requireFixedPoint<SystemPrinterSettings>(list);
    requireFixedPoint<CheckTemplatesSettings>(list);
    const SystemPrinterSettings system;
    system.defaultFont(QString());
    system.pageLayoutUnit(QString());
    system.pageLayoutOrientation(QString());
    const int mode = system.printerMode(QString());
    require(mode >= QPrinter::ScreenResolution && mode <= QPrinter::HighResolution, "a printer mode is one");
    const TextPrinterSettings text;
    text.paper();
    text.moveCheckTo();
}
