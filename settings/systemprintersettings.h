// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_SYSTEMPRINTERSETTINGS_H
#define PRINTSRV_SYSTEMPRINTERSETTINGS_H

#include "printersettings.h"

#include <QPageLayout>
#include <QPageSize>

#include <array>

namespace printsrv {
struct Descriptor;
}

/**
 * The settings of a terminal that prints receipts on a printer of the operating system: page, margins and font.
 *
 * The values are class-wide, one for all printers: the identifier that each function takes selects nothing. Lengths are
 * in unit(). Thread-safe as PrinterSettings.
 *
 * Contract: the virtual functions are declared in the order that programs were compiled against.
 */
class Q_DECL_EXPORT SystemPrinterSettings : public PrinterSettings, public ISystemPrinterSettings
{
public:
    /** "defaultFont", key of defaultFont(). */
    static const QString DEFAULT_FONT;
    /** "unit", key of unit(). */
    static const QString UNIT;
    /** "pageSizeKey", key of pageSizeKey(). */
    static const QString PAGE_SIZE_KEY;
    /** "pageWidth", key of pageWidgth(). */
    static const QString PAGE_WIDTH;
    /** "pageHeight", key of pageHeight(). */
    static const QString PAGE_HEIGHT;
    /** "autoPageHeight", key of autoPageHeight(). */
    static const QString AUTO_PAGE_HEIGHT;
    /** "emptyStrings", key of emtyStrings(). */
    static const QString EMPTY_STRINGS;
    /** "leftMargin", key of leftMargin(). */
    static const QString LEFT_MARGIN;
    /** "rightMargin", key of rightMargin(). */
    static const QString RIGHT_MARGIN;
    /** "topMargin", key of topMargin(). */
    static const QString TOP_MARGIN;
    /** "bottomMargin", key of bottomMargin(). */
    static const QString BOTTOM_MARGIN;
    /** "orientation", key of orientation(). */
    static const QString ORIENTATION;
    /** "printerMode", key of printerMode(). */
    static const QString PRINTER_MODE;
    /** "fullJustifyAlignment", key of fullJustifyAlign(). */
    static const QString FULL_JUSTIFY_ALIGN;

    SystemPrinterSettings();
    ~SystemPrinterSettings() override;

    /**
     * The list of PrinterSettings, then fourteen descriptors of the current printer's group in the order of the key
     * constants: font and page size key as strings, lengths as double, "autoPageHeight" as bool, all others as int.
     */
    QVariantList toList() const override;

    /**
     * PrinterSettings::setList(), then the fourteen keys of this class under one lock: "defaultFont" of any group,
     * the others of the current printer's.
     */
    void setList(const QVariantList &list) override;

    /**
     * Applies what PrinterSettings recognises, and the fourteen keys of this class in the group of the current printer,
     * without a range check; what cannot be converted reads as 0, false or empty.
     *
     * @return true when the descriptor was recognised; false, and nothing is changed, otherwise
     */
    bool setValue(const QVariantMap &descriptor) override;

    /**
     * The font that was set. When none was, or its text is no font's, prepareDefaultFont().
     * Usable without a QGuiApplication.
     */
    QFont defaultFont(const QString &printer) const override;
    /** Stores the text of @p font, QFont::toString(). */
    void setDefaultFont(const QString &printer, const QFont &font) override;

    Unit unit(const QString &printer) const override;
    void setUnit(const QString &printer, Unit unit) override;

    QString pageSizeKey(const QString &printer) const override;
    void setPageSizeKey(const QString &printer, const QString &key) override;

    double pageWidgth(const QString &printer) const override;
    void setPageWidth(const QString &printer, double width) override;

    double pageHeight(const QString &printer) const override;
    void setPageHeight(const QString &printer, double height) override;

    bool autoPageHeight(const QString &printer) const override;
    void setAutoPageHeight(const QString &printer, bool isAutomatic) override;

    int emtyStrings(const QString &printer) const override;
    void setEmptyStrings(const QString &printer, int count) override;

    double leftMargin(const QString &printer) const override;
    void setLeftMargin(const QString &printer, double margin) override;

    double rightMargin(const QString &printer) const override;
    void setRightMargin(const QString &printer, double margin) override;

    double topMargin(const QString &printer) const override;
    void setTopMargin(const QString &printer, double margin) override;

    double bottomMargin(const QString &printer) const override;
    void setBottomMargin(const QString &printer, double margin) override;

    Orientation orientation(const QString &printer) const override;
    void setOrientation(const QString &printer, Orientation orientation) override;

    QPrinter::PrinterMode printerMode(const QString &printer) const override;
    void setPrinterMode(const QString &printer, QPrinter::PrinterMode mode) override;

    bool fullJustifyAlign(const QString &printer) const override;
    void setFullJustifyAlign(const QString &printer, bool isJustified) override;

    /** unit() for a page layout; millimetres when the stored number is no unit. */
    QPageLayout::Unit pageLayoutUnit(const QString &printer) const;
    /** Stores @p unit; does nothing when it is none of the six units. */
    void setPageLayoutUnit(const QString &printer, QPageLayout::Unit unit);

    /** unit() for a page size; millimetres when the stored number is no unit. */
    QPageSize::Unit pageSizeUnit(const QString &printer) const;

    /** orientation() for a page layout; portrait when the stored number is not that of landscape. */
    QPageLayout::Orientation pageLayoutOrientation(const QString &printer) const;
    /** Stores @p orientation; does nothing when it is neither of the two. */
    void setPageLayoutOrientation(const QString &printer, QPageLayout::Orientation orientation);

    /**
     * The font of text when none was set: "Monospace" when that family has Cyrillic letters, else the first family that
     * has them and is of fixed pitch, else the application's font; always upright, of normal weight, 14 points.
     * Stores nothing. Without a QGuiApplication, where fonts cannot be looked up, "Monospace".
     */
    static QFont prepareDefaultFont();

private:
    struct Field;
    static const std::array<Field, 14> &fields();
    static const Field *findField(const QString &key);
    static bool storeDescriptor(const printsrv::Descriptor &descriptor, const QString &group);

    static QString _defaultFont;
    static Unit _unit;
    static QString _pageSizeKey;
    static double _pageWidgth;
    static double _pageHeight;
    static bool _autoPageHeight;
    static qint32 _emtyStrings;
    static double _leftMargin;
    static double _rightMargin;
    static double _topMargin;
    static double _bottomMargin;
    static Orientation _orientation;
    static qint32 _printerMode; // a number, as lists may bring one that is no mode
    static bool _fullJustifyAlign;
};

#endif
