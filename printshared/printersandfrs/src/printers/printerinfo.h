// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_PRINTERINFO_H
#define PRINTSRV_PRINTERINFO_H

#include <QList>
#include <QMap>
#include <QMetaType>
#include <QString>
#include <QVariant>

QT_BEGIN_NAMESPACE
class QDebug;
QT_END_NAMESPACE

/**
 * One font type of a printer model: the size of its character cell and of the symbols that can be loaded into it.
 *
 * A plain value. Reentrant.
 */
class Q_DECL_EXPORT FontInfo
{
public:
    /** Makes a font type without a number: id -1, monospaced, every size 0. */
    FontInfo() = default;

    /** Makes a font type and fills it as setMap() does. */
    explicit FontInfo(const QVariantMap &map);

    /** Copies all nine fields. */
    FontInfo(const FontInfo &other) = default;

    /** Copies all nine fields. */
    FontInfo(FontInfo &&other) noexcept = default;

    /** Copies every field but customHeight. Contract: customHeight keeps the value of the target. */
    FontInfo &operator=(const FontInfo &other) noexcept;

    /** Copies every field but customHeight. Contract: customHeight keeps the value of the target. */
    FontInfo &operator=(FontInfo &&other) noexcept;

    ~FontInfo() = default;

    /** Number of the font type within its model, from 0; -1 by default. */
    qint8 id() const;
    /** Sets id(). */
    void setId(qint8 id);

    /** id() as a decimal number, "-1" for a default record: the key of the font in the model's map. */
    QString idAsString() const;

    /** Width of the character cell in printer dots; 0 by default. */
    quint8 width() const;
    /** Sets width(). */
    void setWidth(quint8 width);

    /** Height of the character cell in printer dots; 0 by default. */
    quint8 height() const;
    /** Sets height(). */
    void setHeight(quint8 height);

    /** Width of a character in millimetres; 0 by default. */
    double mwidth() const;
    /** Sets mwidth(). */
    void setMwidth(double mwidth);

    /** Height of a character in millimetres; 0 by default. */
    double mheight() const;
    /** Sets mheight(). */
    void setMheight(double mheight);

    /** True when all characters are of one width; true by default. */
    bool monospace() const;
    /** Sets monospace(). */
    void setMonospace(bool monospace);

    /** True when symbols of one's own can be loaded for this font; false by default. */
    bool customSymbols() const;
    /** Sets customSymbols(); the sizes of such symbols stay as they are. */
    void setCustomSymbols(bool customSymbols);

    /** Cell width of a loaded symbol in printer dots; 0 by default. */
    quint8 customWidth() const;
    /** Sets customWidth(). */
    void setCustomWidth(quint8 customWidth);

    /** Cell height of a loaded symbol in printer dots; 0 by default. */
    quint8 customHeight() const;
    /** Sets customHeight(). */
    void setCustomHeight(quint8 customHeight);

    /**
     * Replaces all fields by those of @p map: "id", "width", "height", "mwidth", "mheight", "monospace",
     * "customSymbols", "customWidth", "customHeight".
     *
     * A missing key and a value that is no number read as 0 or false, not as the default of a new record; numbers are
     * cut to the width of the field. customWidth and customHeight become 0 when "customSymbols" is false.
     */
    void setMap(const QVariantMap &map);

    /**
     * The fields as setMap() reads them, without "id" (it is the key of the enclosing map) and, when customSymbols() is
     * false, without "customWidth" and "customHeight".
     */
    QVariantMap toMap() const;

    /** True when all nine fields are equal; the two doubles are compared exactly, so a NaN equals nothing. */
    bool operator==(const FontInfo &other) const;
    /** True when any field differs. */
    bool operator!=(const FontInfo &other) const;

private:
    qint8 m_id = -1;
    quint8 m_width = 0;
    quint8 m_height = 0;
    double m_mwidth = 0.0;
    double m_mheight = 0.0;
    bool m_monospace = true;
    bool m_customSymbols = false;
    quint8 m_customWidth = 0;
    quint8 m_customHeight = 0;
};

/**
 * One paper type of a printer model: its printable size and the number of dots in a line.
 *
 * A plain value. Reentrant.
 */
class Q_DECL_EXPORT PaperInfo
{
public:
    /** Makes a paper type without a number: id -1, no caption, every size 0. */
    PaperInfo() = default;

    /** Makes a paper type and fills it as setMap() does. */
    explicit PaperInfo(const QVariantMap &map);

    /** Number of the paper type within its model, from 0; -1 by default. */
    qint8 id() const;
    /** Sets id(). */
    void setId(qint8 id);

    /** id() as a decimal number, "-1" for a default record: the key of the paper in the model's map. */
    QString idAsString() const;

    /** Printable width in millimetres; 0 by default. */
    qint16 width() const;
    /** Sets width(). */
    void setWidth(qint16 width);

    /** Length in millimetres, -1 for a roll; 0 by default. */
    qint16 height() const;
    /** Sets height(). */
    void setHeight(qint16 height);

    /** Printer dots in one printed line; 0 by default. */
    qint32 pointsToLine() const;
    /** Sets pointsToLine(). */
    void setPointsToLine(qint32 pointsToLine);

    /** Text for the person who chooses the paper, "80 mm"; empty by default. */
    QString caption() const;
    /** Sets caption(). */
    void setCaption(const QString &caption);

    /**
     * Replaces all fields by those of @p map: "id", "width", "height", "pointsToLine", "caption".
     *
     * A missing key and a value that is no number read as 0 or empty, not as the default of a new record; numbers are
     * cut to the width of the field.
     */
    void setMap(const QVariantMap &map);

    /** The fields as setMap() reads them, without "id": it is the key of the enclosing map. */
    QVariantMap toMap() const;

    /** True when all five fields are equal. */
    bool operator==(const PaperInfo &other) const;
    /** True when any field differs. */
    bool operator!=(const PaperInfo &other) const;

private:
    qint8 m_id = -1;
    qint16 m_width = 0;
    qint16 m_height = 0;
    qint32 m_pointsToLine = 0;
    QString m_caption;
};

/**
 * A text printer model: what it is called, what it can do, and its paper and font types.
 *
 * The built-in models come from fromResources(). A plain value. Reentrant.
 */
class Q_DECL_EXPORT PrinterInfo
{
public:
    /** Path of the built-in catalogue, ":/printinfo/printers.info"; usable once the library is loaded. */
    static const QString RC_INFO_FILENAME;

    /** Makes a model without a name, "serial", that can do nothing. */
    PrinterInfo() = default;

    /** Makes a model and fills it as setMap() does. */
    explicit PrinterInfo(const QVariantMap &map);

    /** Identifier of the model, one of the constants of TextPrinterModels; empty by default. */
    QString id() const;
    /** Sets id(). */
    void setId(const QString &id);

    /** Name shown to people; empty by default. */
    QString name() const;
    /** Sets name(). */
    void setName(const QString &name);

    /** How the printer is connected: "COM" in the catalogue, "serial" by default. */
    QString interface() const;
    /** Sets interface(). */
    void setInterface(const QString &interface);

    /** True when the printer has double-width characters; false by default, as all flags that follow. */
    bool doubleWidth() const;
    /** Sets doubleWidth(). */
    void setDoubleWidth(bool doubleWidth);

    /** True when the printer has double-height characters. */
    bool doubleHeight() const;
    /** Sets doubleHeight(). */
    void setDoubleHeight(bool doubleHeight);

    /** True when the printer has bold characters. */
    bool bold() const;
    /** Sets bold(). */
    void setBold(bool bold);

    /** True when the printer has italic characters. */
    bool italic() const;
    /** Sets italic(). */
    void setItalic(bool italic);

    /** True when the printer can underline. */
    bool underline() const;
    /** Sets underline(). */
    void setUnderline(bool underline);

    /** True when the printer can print white on black. */
    bool inversion() const;
    /** Sets inversion(). */
    void setInversion(bool inversion);

    /** True when the printer itself can centre a line. */
    bool alignCenter() const;
    /** Sets alignCenter(). */
    void setAlignCenter(bool alignCenter);

    /** True when the printer itself can align a line to the right. */
    bool alignRight() const;
    /** Sets alignRight(). */
    void setAlignRight(bool alignRight);

    /** True when the printer itself can align a line to the left. */
    bool alignLeft() const;
    /** Sets alignLeft(). */
    void setAlignLeft(bool alignLeft);

    /** True when the printer itself can stretch a line to the full width. */
    bool alignJustify() const;
    /** Sets alignJustify(). */
    void setAlignJustify(bool alignJustify);

    /** True when symbols of one's own can be loaded. setMap() gives it the value of customImages(). */
    bool customSymbols() const;
    /** Sets customSymbols(). */
    void setCustomSymbols(bool customSymbols);

    /** True when pictures can be stored in the printer. */
    bool customImages() const;
    /** Sets customImages(). */
    void setCustomImages(bool customImages);

    /** True when the space between lines can be set. */
    bool lineSpacing() const;
    /** Sets lineSpacing(). */
    void setLineSpacing(bool lineSpacing);

    /** True when the printer can pull a receipt back that nobody took. */
    bool retraction() const;
    /** Sets retraction(). */
    void setRetraction(bool retraction);

    /** True when the printer can push a receipt out. False for every built-in model, see setMap(). */
    bool ejection() const;
    /** Sets ejection(). */
    void setEjection(bool ejection);

    /** True when the printer pulls a receipt back by itself after a time. */
    bool retractTimeout() const;
    /** Sets retractTimeout(). */
    void setRetractTimeout(bool retractTimeout);

    /** Resolution in dots per inch; 0 by default. */
    qint32 resolution() const;
    /** Sets resolution(). */
    void setResolution(qint32 resolution);

    /** True when the printer can hold the receipt in a loop while it prints (EPaperLoopFlag). */
    bool paperLoopSupported() const;
    /** Sets paperLoopSupported(). */
    void setPaperLoopSupported(bool paperLoopSupported);

    /** True when the place to which the printer moves a finished receipt can be set. */
    bool checkMoveSettingsSupported() const;
    /** Sets checkMoveSettingsSupported(). */
    void setCheckMoveSettingsSupported(bool checkMoveSettingsSupported);

    /** The paper types by their number; empty by default. */
    QMap<int, PaperInfo> paperTypes() const;
    /** Replaces the paper types; keys are not compared with the numbers in the records. */
    void setPaperTypes(const QMap<int, PaperInfo> &paperTypes);

    /** Puts @p paper under its number, in place of a paper type that is already there. */
    void addPaperType(const PaperInfo &paper);

    /**
     * The paper type number @p id; a number outside the model's range gives the nearest one.
     *
     * A default PaperInfo (id -1) when the model has no paper types or the number falls into a gap between two.
     */
    PaperInfo paperType(int id) const;

    /** The font types in the order in which they were loaded or added; empty by default. */
    QList<FontInfo> fontTypes() const;
    /** Replaces the font types. */
    void setFontTypes(const QList<FontInfo> &fontTypes);

    /** Appends @p font; its number may be taken already. */
    void addFontType(const FontInfo &font);

    /**
     * Replaces all fields by those of @p map.
     *
     * A missing key reads as empty, false or 0, not as the default of a new record: without "interface" it is empty.
     * Contract: the reader differs from toMap() in two keys. "customSymbols" is not read, its value is that of
     * "customImages"; ejection() is read from "ejection_", so that a map made by toMap() gives false.
     */
    void setMap(const QVariantMap &map);

    /** All fields, the paper and font types as maps under "paperTypes" and "fontTypes". */
    QVariantMap toMap() const;

    /**
     * Replaces the paper types by the entries of @p map, whose keys are the numbers; an "id" inside an entry is ignored
     * and a key that is no decimal number counts as 0. Of two entries with one number the later key, as text, stays.
     */
    void paperFromMap(const QVariantMap &map);

    /** The paper types' maps under their numbers. */
    QVariantMap paperToMap() const;

    /** Replaces the font types by the entries of @p map, in the text order of its keys, as paperFromMap() does. */
    void fontFromMap(const QVariantMap &map);

    /** The font types' maps under their numbers; of two fonts with one number the later one stays. */
    QVariantMap fontToMap() const;

    /**
     * True when identifier, name, interface, resolution and all flags are equal. Contract: paper and font types are not
     * compared.
     */
    bool operator==(const PrinterInfo &other) const;
    /** The negation of ==. */
    bool operator!=(const PrinterInfo &other) const;

    /** One model for each element of @p list, in its order; an element that is no map gives an empty model. */
    [[nodiscard]] static QList<PrinterInfo> fromList(const QVariantList &list);

    /**
     * The models of a JSON array.
     *
     * Empty, with the parser's text as one critical line of the default category, when @p json is malformed; empty
     * without a line when its top level is an object.
     */
    [[nodiscard]] static QList<PrinterInfo> fromJson(const QByteArray &json);

    /**
     * The models of a JSON file of at most 16 MiB.
     *
     * Empty, with one critical line of the default category, when the file cannot be opened, is larger, or holds
     * malformed JSON.
     */
    [[nodiscard]] static QList<PrinterInfo> fromFile(const QString &path);

    /** The fourteen built-in models in the order of the catalogue; on failure as fromFile(). */
    [[nodiscard]] static QList<PrinterInfo> fromResources();

private:
    QString m_id;
    QString m_name;
    QString m_interface = QStringLiteral("serial");
    bool m_doubleWidth = false;
    bool m_doubleHeight = false;
    bool m_bold = false;
    bool m_italic = false;
    bool m_underline = false;
    bool m_inversion = false;
    bool m_alignCenter = false;
    bool m_alignRight = false;
    bool m_alignLeft = false;
    bool m_alignJustify = false;
    bool m_customSymbols = false;
    bool m_customImages = false;
    bool m_lineSpacing = false;
    bool m_retraction = false;
    bool m_ejection = false;
    bool m_retractTimeout = false;
    qint32 m_resolution = 0;
    bool m_paperLoopSupported = false;
    bool m_checkMoveSettingsSupported = false;
    QMap<int, PaperInfo> m_paperTypes;
    QList<FontInfo> m_fontTypes;
};

/** Writes the fields for a log line. */
Q_DECL_EXPORT QDebug operator<<(QDebug debug, const FontInfo &font);
/** Writes the fields for a log line. */
Q_DECL_EXPORT QDebug operator<<(QDebug debug, const PaperInfo &paper);
/** Writes identifier, name and the number of paper and font types for a log line. */
Q_DECL_EXPORT QDebug operator<<(QDebug debug, const PrinterInfo &printer);

Q_DECLARE_METATYPE(FontInfo)
Q_DECLARE_METATYPE(PaperInfo)
Q_DECLARE_METATYPE(PrinterInfo)

#endif
