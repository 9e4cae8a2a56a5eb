// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "textprintermodels.h"

const QString TextPrinterModels::MODEL_CUSTOM_VKP_80 = QStringLiteral("CUSTOM_VKP_80");
const QString TextPrinterModels::MODEL_CUSTOM_TG_2480_H = QStringLiteral("CUSTOM_TG_2480_H");
const QString TextPrinterModels::MODEL_CUSTOM_TG_2480_SE = QStringLiteral("CUSTOM_TG_2480_SE");
const QString TextPrinterModels::MODEL_CITIZEN_PPU_700 = QStringLiteral("CITIZEN_PPU_700");
const QString TextPrinterModels::MODEL_CITIZEN_CBM_1000 = QStringLiteral("CITIZEN_CBM_1000");
const QString TextPrinterModels::MODEL_CITIZEN_CTS_2000 = QStringLiteral("CITIZEN_CTS_2000");
const QString TextPrinterModels::MODEL_AV_268 = QStringLiteral("AV_268");
const QString TextPrinterModels::MODEL_GENERAL_EPSON = QStringLiteral("GENERAL_EPSON_PROTOCOL");
const QString TextPrinterModels::MODEL_TSP_TUP = QStringLiteral("TSP-TUP");
const QString TextPrinterModels::MODEL_CITIZEN_PPU_231 = QStringLiteral("CITIZEN_PPU_231");
const QString TextPrinterModels::MODEL_EPSON_EU_4XX = QStringLiteral("EPSON_EU_4XX");
const QString TextPrinterModels::MODEL_SWECOIN_TM_20XX = QStringLiteral("SWECOIN_TM_20XX");
const QString TextPrinterModels::MODEL_CITIZEN_CPP_8001 = QStringLiteral("CITIZEN_CPP_8001");
const QString TextPrinterModels::MODEL_WPK833 = QStringLiteral("WPK_833");
const QString TextPrinterModels::MODEL_PNG = QStringLiteral("PNG");
