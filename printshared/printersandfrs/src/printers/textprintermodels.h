// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_TEXTPRINTERMODELS_H
#define PRINTSRV_TEXTPRINTERMODELS_H

#include <QString>

/**
 * Names the text printer models: the identifiers under which the catalogue, the settings and device discovery know
 * them.
 *
 * The constants are usable as soon as the library's own static initialisers have run; a static initialiser of another
 * library that links this one may read them.
 */
class Q_DECL_EXPORT TextPrinterModels
{
public:
    /** Custom VKP-80, "CUSTOM_VKP_80". */
    static const QString MODEL_CUSTOM_VKP_80;
    /** Custom TG 2480 H and TG 2460 H, "CUSTOM_TG_2480_H". */
    static const QString MODEL_CUSTOM_TG_2480_H;
    /** Custom TG 2480 and TG 2460 SE, "CUSTOM_TG_2480_SE". */
    static const QString MODEL_CUSTOM_TG_2480_SE;
    /** Citizen PPU-700, "CITIZEN_PPU_700". */
    static const QString MODEL_CITIZEN_PPU_700;
    /** Citizen CBM-1000, "CITIZEN_CBM_1000". */
    static const QString MODEL_CITIZEN_CBM_1000;
    /** Citizen CT-S2000, "CITIZEN_CTS_2000". */
    static const QString MODEL_CITIZEN_CTS_2000;
    /** AV-268, "AV_268". */
    static const QString MODEL_AV_268;
    /** Any printer of the plain ESC/POS command set, "GENERAL_EPSON_PROTOCOL". */
    static const QString MODEL_GENERAL_EPSON;
    /** Star TSP 600/700/800 and TUP 900. Contract: "TSP-TUP", with a hyphen, unlike all others. */
    static const QString MODEL_TSP_TUP;
    /** Citizen PPU-231, "CITIZEN_PPU_231". */
    static const QString MODEL_CITIZEN_PPU_231;
    /** Epson EU-4xx, "EPSON_EU_4XX". */
    static const QString MODEL_EPSON_EU_4XX;
    /** Swecoin TM 20xx, "SWECOIN_TM_20XX". */
    static const QString MODEL_SWECOIN_TM_20XX;
    /** Citizen CPP-8001, "CITIZEN_CPP_8001". */
    static const QString MODEL_CITIZEN_CPP_8001;
    /** WinPos WPK 833. Contract: the value "WPK_833" has an underscore that the constant's name lacks. */
    static const QString MODEL_WPK833;
    /** "PNG", the pseudo-printer that writes pictures; the catalogue has no entry for it. */
    static const QString MODEL_PNG;
};

#endif
