// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "charactercase.h"

#include <textprintersettings.h>

namespace printsrv {

void useCharacterCase(ECase letters)
{
    const auto settings = QSharedPointer<TextPrinterSettings>::create();
    settings->setCharactersMode(static_cast<IPrintDeviceSettings::ECharactersMode>(letters));
    IPrintDeviceSettings::setPrintDeviceSettings(settings);
}

} // namespace printsrv
