// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_IPRINTDEVICESETTINGS_H
#define PRINTSRV_IPRINTDEVICESETTINGS_H

#include "printerinfo.h"
#include "rs232settings.h"

#include <QFont>
#include <QPrinter>
#include <QSharedPointer>

class ISystemPrinterSettings;
class ITextPrinterSettings;

/**
 * The settings that every kind of receipt printer has, and the registry through which the process reaches them.
 *
 * One object is registered at start-up, before other threads use it; the registry itself is not locked. The values of
 * the library's implementations are class-wide and may be used from any thread.
 *
 * Contract: the virtual functions are declared in the order that programs were compiled against.
 */
class Q_DECL_EXPORT IPrintDeviceSettings
{
public:
    /** What happens to the letters of a receipt before it is printed. */
    enum ECharactersMode : int {
        CharactersAsWritten = 0, /**< Printed as the template and the values have them; the default. */
        CharactersUpper = 1, /**< Turned into upper case, for printers without lower-case letters. */
        CharactersLower = 2, /**< Turned into lower case. */
    };

    virtual ~IPrintDeviceSettings();

    /**
     * The serial port settings of the printer @p printer, whose identifier is their section.
     * There is one such object in the process: asking for another printer's re-points it. Never null.
     */
    virtual QSharedPointer<RS232Settings> port(const QString &printer) const = 0;

    /** port() of the current printer. */
    virtual QSharedPointer<RS232Settings> port() const = 0;

    /** Number of the kind of printer, in the numbering of the print service; 0 by default. */
    virtual unsigned int printerType() const = 0;
    virtual void setPrinterType(unsigned int printerType) = 0;

    /** Identifier of the current printer, for a text printer one of TextPrinterModels; empty by default. */
    virtual QString printerId() const = 0;
    virtual void setPrinterId(const QString &printerId) = 0;

    /** True when the bytes that go over the port are to be logged; false by default. */
    virtual bool portLoggingEnabled() const = 0;
    virtual void setPortLoggingEnabled(bool isEnabled) = 0;

    /** Count of empty lines that end a receipt; 5 by default. */
    virtual int emptyStringsAtEnd() const = 0;
    virtual void setEmptyStringsAtEnd(int count) = 0;

    /** Count of blanks in front of each line; 0 by default. Contract: "spacess". */
    virtual int spacessBeforeString() const = 0;
    virtual void setSpacesBeforeString(int count) = 0;

    /** What happens to the letters of a receipt; CharactersAsWritten by default. */
    virtual ECharactersMode charactersMode() const = 0;
    virtual void setCharactersMode(const IPrintDeviceSettings::ECharactersMode &mode) = 0;

    /** The registered settings, shared; null when none are registered. */
    static QSharedPointer<IPrintDeviceSettings> printDeviceSettings();

    /** Registers @p settings in place of the former ones, which live on with their other holders; null registers none.
     */
    static void setPrintDeviceSettings(const QSharedPointer<IPrintDeviceSettings> &settings);

    /** The registered settings as those of a text printer, shared; null when they are not, or none are registered. */
    static QSharedPointer<ITextPrinterSettings> textPrinterSettings();

    /** The registered settings as those of a system printer, shared; null when they are not, or none are registered. */
    static QSharedPointer<ISystemPrinterSettings> systemPrinterSettings();

private:
    static QSharedPointer<IPrintDeviceSettings> _printDeviceSettings;
};

/**
 * The settings of a serial text printer, and what its model can do.
 *
 * The map of models is filled at construction and not locked: let it load before other threads use the object.
 *
 * Contract: the virtual functions are declared in the order that programs were compiled against.
 */
class Q_DECL_EXPORT ITextPrinterSettings
{
public:
    /** Starts with the built-in models, see loadAvailablePrinters(). */
    ITextPrinterSettings();
    virtual ~ITextPrinterSettings();

    /** The known models by their identifiers. */
    virtual QMap<QString, PrinterInfo> availablePrinters() const;

    /** Replaces the known models. */
    virtual void setAvailablePrinters(const QMap<QString, PrinterInfo> &printers);

    /** The model @p printer; a default PrinterInfo, which can do nothing, when it is not known. */
    virtual PrinterInfo printerInfo(const QString &printer) const;

    /** The model of the current printer. */
    virtual PrinterInfo printerInfo() const = 0;

    /** The paper in @p printer; a default PaperInfo (id -1) for a model that is not known. */
    virtual PaperInfo paper(const QString &printer) const = 0;

    /** The paper in the current printer. */
    virtual PaperInfo paper() const = 0;

    /** Number of the paper type, as it was set; 0 by default. paper() brings it into the model's range. */
    virtual int paperTypeId(const QString &printer) const = 0;
    virtual int paperTypeId() const = 0;
    virtual void setPaperTypeId(const QString &printer, int paperTypeId) = 0;
    virtual void setPaperTypeId(int paperTypeId) = 0;

    /** True when the printer's character set is not known from its model, so that codec() must be set. */
    virtual bool needCodecSettings() const = 0;
    virtual bool needCodecSettings(const QString &printer) const = 0;

    /** Name of the codec that turns text into the printer's bytes; "cp866" by default. */
    virtual QString codec() const = 0;
    virtual QString codec(const QString &printer) const = 0;
    virtual void setCodec(const QString &codec) = 0;
    virtual void setCodec(const QString &printer, const QString &codec) = 0;

    /**
     * Fills an empty map of models with the built-in ones; does nothing to a map that holds any.
     *
     * When the catalogue cannot be read the map stays empty, one critical line tells why, and the next call tries
     * again. The catalogue is read once in the process.
     */
    virtual void loadAvailablePrinters();

protected:
    /** The known models by their identifiers. */
    QMap<QString, PrinterInfo> _availablePrinters;
};

/**
 * The settings of a printer of the operating system that prints receipts.
 *
 * Lengths are in unit(). The first argument of each function names the printer.
 *
 * Contract: the virtual functions are declared in the order that programs were compiled against.
 */
class Q_DECL_EXPORT ISystemPrinterSettings
{
public:
    /** Unit of the page's size and margins, in the numbering of QPageLayout and QPageSize. */
    enum Unit : int {
        UnitMillimeter = 0, /**< Millimetres; the default. */
        UnitPoint = 1, /**< Typographic points, 1/72 inch. */
        UnitInch = 2, /**< Inches. */
        UnitPica = 3, /**< Picas, 12 points. */
        UnitDidot = 4, /**< Didot points, 0.375 mm. */
        UnitCicero = 5, /**< Ciceros, 12 Didot points. */
    };

    /** How the page lies, in the numbering of QPageLayout. */
    enum Orientation : int {
        OrientationPortrait = 0, /**< Upright; the default. */
        OrientationLandscape = 1, /**< Turned by a quarter. */
    };

    virtual ~ISystemPrinterSettings();

    /** Font of text that no template gives another one; a fixed-pitch font with Cyrillic letters when none was set. */
    virtual QFont defaultFont(const QString &printer) const = 0;
    virtual void setDefaultFont(const QString &printer, const QFont &font) = 0;

    /** Unit of all lengths; UnitMillimeter by default. */
    virtual Unit unit(const QString &printer) const = 0;
    virtual void setUnit(const QString &printer, Unit unit) = 0;

    /** Name of the page size, in the vocabulary of the print service; empty by default. */
    virtual QString pageSizeKey(const QString &printer) const = 0;
    virtual void setPageSizeKey(const QString &printer, const QString &key) = 0;

    /** Width of the page; 0 by default. Contract: "widgth". */
    virtual double pageWidgth(const QString &printer) const = 0;
    virtual void setPageWidth(const QString &printer, double width) = 0;

    /** Height of the page; 0 by default. */
    virtual double pageHeight(const QString &printer) const = 0;
    virtual void setPageHeight(const QString &printer, double height) = 0;

    /** True when the page is as high as the receipt needs; false by default. */
    virtual bool autoPageHeight(const QString &printer) const = 0;
    virtual void setAutoPageHeight(const QString &printer, bool isAutomatic) = 0;

    /** Count of empty lines that end a receipt; 0 by default. Contract: "emty". */
    virtual int emtyStrings(const QString &printer) const = 0;
    virtual void setEmptyStrings(const QString &printer, int count) = 0;

    /** Left margin; 0 by default, as the three that follow. */
    virtual double leftMargin(const QString &printer) const = 0;
    virtual void setLeftMargin(const QString &printer, double margin) = 0;

    /** Right margin. */
    virtual double rightMargin(const QString &printer) const = 0;
    virtual void setRightMargin(const QString &printer, double margin) = 0;

    /** Top margin. */
    virtual double topMargin(const QString &printer) const = 0;
    virtual void setTopMargin(const QString &printer, double margin) = 0;

    /** Bottom margin. */
    virtual double bottomMargin(const QString &printer) const = 0;
    virtual void setBottomMargin(const QString &printer, double margin) = 0;

    /** How the page lies; OrientationPortrait by default. */
    virtual Orientation orientation(const QString &printer) const = 0;
    virtual void setOrientation(const QString &printer, Orientation orientation) = 0;

    /** Resolution that Qt's print support asks the printer for; QPrinter::PrinterResolution by default. */
    virtual QPrinter::PrinterMode printerMode(const QString &printer) const = 0;
    virtual void setPrinterMode(const QString &printer, QPrinter::PrinterMode mode) = 0;

    /** True when lines with a left and a right part are stretched to the full width; true by default. */
    virtual bool fullJustifyAlign(const QString &printer) const = 0;
    virtual void setFullJustifyAlign(const QString &printer, bool isJustified) = 0;
};

Q_DECLARE_METATYPE(IPrintDeviceSettings::ECharactersMode)
Q_DECLARE_METATYPE(ISystemPrinterSettings::Unit)
Q_DECLARE_METATYPE(ISystemPrinterSettings::Orientation)

#endif
