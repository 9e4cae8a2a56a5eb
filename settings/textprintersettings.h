// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_TEXTPRINTERSETTINGS_H
#define PRINTSRV_TEXTPRINTERSETTINGS_H

#include "printersettings.h"

/**
 * The settings of a terminal that prints on a serial text printer: to those of PrinterSettings it adds paper type,
 * codec and printing as a picture, and it answers from the catalogue what a printer can do.
 *
 * The values are class-wide, one for all printers: a printer's identifier as an argument decides only what the model
 * supports. A function without it means the current printer. Thread-safe as PrinterSettings, but for the map of models.
 *
 * Contract: the virtual functions are declared in the order that programs were compiled against.
 */
class Q_DECL_EXPORT TextPrinterSettings : public PrinterSettings, public ITextPrinterSettings
{
public:
    /** "paperTypeId", key of paperTypeId(). Contract: "TYPR". */
    static const QString PAPER_TYPR_ID;
    /** "codec", key of codec(). */
    static const QString PRINTER_CODEC;
    /** "defaultFont", key of defaultFont(). */
    static const QString DEFAULT_FONT;
    /** "printAsImage", key of printAsImage(). */
    static const QString PRINT_AS_IMAGE;

    /** Loads the built-in models, with a second try when the first fails. */
    TextPrinterSettings();
    ~TextPrinterSettings() override;

    bool paperLoopSupported() const override;
    /** The catalogue's answer; false for a model that is not known. */
    bool paperLoopSupported(const QString &printer) const override;
    bool checkMoveSettingsSupported() const override;
    /** The catalogue's answer; false for a model that is not known. */
    bool checkMoveSettingsSupported(const QString &printer) const override;

    /**
     * The list of PrinterSettings, then descriptors of the current printer's group: "paperTypeId" (int); "codec"
     * (string) when needCodecSettings(); "printAsImage" (int, 0 or 1) when imageAvailable(), followed by "defaultFont"
     * (string) when it is 1.
     */
    QVariantList toList() const override;

    /** PrinterSettings::setList(), then setValue()'s rules of this class for each descriptor of the current printer. */
    void setList(const QVariantList &list) override;

    /**
     * Applies what PrinterSettings recognises, and the four keys of this class in the group of the current printer.
     *
     * A "codec" is stored only when needCodecSettings(). Contract: for a model without pictures, any key of the current
     * printer's group but "paperTypeId" and "codec" clears the default font and turns printing as a picture off.
     *
     * @return true when the base recognised the descriptor or the key is one of the four, even if nothing is stored;
     * false otherwise, also when an unknown key cleared the font
     */
    bool setValue(const QVariantMap &descriptor) override;

    PrinterInfo printerInfo(const QString &printer) const override;
    PrinterInfo printerInfo() const override;

    PaperInfo paper(const QString &printer) const override;
    PaperInfo paper() const override;

    int paperTypeId(const QString &printer) const override;
    int paperTypeId() const override;

    /** True when pictures can be stored in @p printer, so that a receipt can be printed as one. */
    virtual bool imageAvailable(const QString &printer) const;
    virtual bool imageAvailable() const;

    void setPaperTypeId(const QString &printer, int paperTypeId) override;
    void setPaperTypeId(int paperTypeId) override;

    bool needCodecSettings() const override;
    QString codec() const override;
    void setCodec(const QString &codec) override;
    /** True for TextPrinterModels::MODEL_GENERAL_EPSON alone. */
    bool needCodecSettings(const QString &printer) const override;
    QString codec(const QString &printer) const override;
    void setCodec(const QString &printer, const QString &codec) override;

    /** Name of the font of receipts that are printed as a picture; empty by default, which leaves it to the driver. */
    QString defaultFont(const QString &printer) const;
    QString defaultFont() const;
    /** Contract: the font comes first here. */
    void setDefaultFont(const QString &font, const QString &printer);
    void setDefaultFont(const QString &font);

    /** True when receipts are printed as a picture and @p printer can; false by default. */
    bool printAsImage(const QString &printer) const;
    bool printAsImage() const;
    /** Stores @p isImage, or false when @p printer cannot store pictures. */
    void setPrintAsImage(bool isImage, const QString &printer);
    void setPrintAsImage(bool isImage);

private:
    struct Model;
    static bool storeDescriptor(const QVariantMap &map, const Model &model);
    Model currentModel() const;

    static qint32 _paperTypeId;
    static QString _codec;
    static QString _defaultFont;
    static bool _printAsImage;
};

#endif
