// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_PRINTERSETTINGS_H
#define PRINTSRV_PRINTERSETTINGS_H

#include "iprintdevicesettings.h"
#include "paperloopflag.h"

#include <QMutex>

/**
 * The settings of section "PRINTER", which every kind of receipt printer has: which printer is used, its serial port,
 * how a receipt ends, is indented and moved, and two timeouts.
 *
 * The values are class-wide: every object of this class and of those derived from it shows the same ones. They live in
 * memory; a caller keeps them by toList() and setList(). Thread-safe, but for the object that port() shares. One mutex
 * that is not recursive guards them, and a serial parameter that is refused is logged under it: a message handler must
 * not ask these settings.
 *
 * The key constants and the defaults are there once the library is loaded, for static initialisers of other libraries
 * too.
 *
 * Contract: the virtual functions are declared in the order that programs were compiled against.
 */
class Q_DECL_EXPORT PrinterSettings : public IPrintDeviceSettings
{
public:
    /** "PRINTER", the group of this class's own descriptors. */
    static const QString SECTION;
    /** "printerType", key of printerType(). */
    static const QString PRINTER_TYPE;
    /** "printerName", key of printerId(). Contract: "Name", though the value is an identifier. */
    static const QString PRINTER_ID;
    /** "emptyStringsAtEnd", key of emptyStringsAtEnd(). */
    static const QString EMPTY_STRINGS_AT_END;
    /** "spacesBeforeString", key of spacessBeforeString(). */
    static const QString SPACES_BEFORE_STRING;
    /** "paperLoopFlag", key of paperLoopFlag(). */
    static const QString PAPER_LOOP_FLAG;
    /** "moveCheckTo", key of moveCheckTo(). */
    static const QString MOVE_CHECK_TO;
    /** "characterMode", key of charactersMode(). */
    static const QString CHARACTER_MODE;
    /** "enablePortLogging", key of portLoggingEnabled(). */
    static const QString ENABLE_PORT_LOGGING;
    /** "frPrintTout", key of frPrintTout(). */
    static const QString REMOTE_FR_PRINT_TIMEOUT;
    /** "frSrvTestTout", key of frSrvTestTout(). */
    static const QString REMOTE_FR_TEST_TIMEOUT;

    /** "PRINT_EMPTY_STRINGS_AT_END", another component's name of emptyStringsAtEnd(); not read here, as those below. */
    static const QString MAPPED_EMPTY_STRINGS_AT_END;
    /** "PRINT_SPACES_BEFORE_STRING", another component's name of spacessBeforeString(). */
    static const QString MAPPED_SPACES_BEFORE_STRING;
    /** "PAPER_LOOP_FLAG", another component's name of paperLoopFlag(). */
    static const QString MAPPED_PAPER_LOOP_FLAG;
    /** "MOVE_TICKET_TO", another component's name of moveCheckTo(). */
    static const QString MAPPED_MOVE_CHECK_TO;
    /** "PRINTER_CHARACTER_MODE", another component's name of charactersMode(). */
    static const QString MAPPED_PRINTER_CHARACTER_MODE;

    /** Points the shared port settings at the current printer. */
    PrinterSettings();
    ~PrinterSettings() override;

    /** The one port settings object of the process, pointed at the section @p printer. It is no copy: not locked. */
    QSharedPointer<RS232Settings> port(const QString &printer) const override;
    QSharedPointer<RS232Settings> port() const override;

    unsigned int printerType() const override;
    void setPrinterType(unsigned int printerType) override;

    QString printerId() const override;
    /** Sets the current printer and points the shared port settings at it. */
    void setPrinterId(const QString &printerId) override;

    bool portLoggingEnabled() const override;
    void setPortLoggingEnabled(bool isEnabled) override;

    int emptyStringsAtEnd() const override;
    void setEmptyStringsAtEnd(int count) override;

    int spacessBeforeString() const override;
    void setSpacesBeforeString(int count) override;

    ECharactersMode charactersMode() const override;
    void setCharactersMode(const IPrintDeviceSettings::ECharactersMode &mode) override;

    /** True when the current printer can hold a receipt in a loop; false in this class, which knows no models. */
    virtual bool paperLoopSupported() const;
    /** True when @p printer can hold a receipt in a loop; false in this class. */
    virtual bool paperLoopSupported(const QString &printer) const;

    /** The stored flag, one for all printers, or PaperLoopAsConfigured when the current printer has no loop. */
    virtual EPaperLoopFlag paperLoopFlag() const;
    /** Stores the flag as it is. */
    virtual void setPaperLoopFlag(EPaperLoopFlag flag);
    /** The stored flag, or PaperLoopAsConfigured when @p printer has no loop. Contract: not const. */
    virtual EPaperLoopFlag paperLoopFlag(const QString &printer);
    /** Stores the flag, or PaperLoopAsConfigured when @p printer has no loop. */
    virtual void setPaperLoopFlag(EPaperLoopFlag flag, const QString &printer);

    /** True when the current printer can move a finished receipt; false in this class, which knows no models. */
    virtual bool checkMoveSettingsSupported() const;
    /** True when @p printer can move a finished receipt; false in this class. */
    virtual bool checkMoveSettingsSupported(const QString &printer) const;

    /**
     * Ten descriptors of the group "PRINTER" in the order of the key constants, the name as a string and all others as
     * int, with the stored values whatever the model supports; then those of the current printer's port.
     * A printer type above 2147483647 shows as a negative number, which setValue() does not take back.
     */
    virtual QVariantList toList() const;

    /** Applies the descriptors of @p list in their order as setValue() does, all under one lock. */
    virtual void setList(const QVariantList &list);

    /**
     * Applies one descriptor: of the group "PRINTER", or a serial parameter of the current printer.
     *
     * The value is read as text. No number reads as 0; the paper loop flag and the characters mode are 0 unless they
     * are 1 or 2; the timeouts are brought into 1000 to 30000; "moveCheckTo" is cut to 8 bits; any number but 0 turns
     * port logging on. A new printer name moves the port settings only when they are used next.
     *
     * @return true when the descriptor was recognised; false, and nothing is changed, when it has no group, or an
     * unknown one or key
     */
    virtual bool setValue(const QVariantMap &descriptor);

    /** Milliseconds that the remote fiscal register service has for printing; 10000 by default. */
    int frPrintTout() const;
    /** Sets frPrintTout() without a range check. */
    void setFrPrintTout(const int &timeoutMs);

    /** Milliseconds that the remote fiscal register service has to answer a test; 5000 by default. */
    int frSrvTestTout() const;
    /** Sets frSrvTestTout() without a range check. */
    void setFrSrvTestTout(const int &timeoutMs);

    /** How far a finished receipt is moved, in the printer's own steps, or 0 when @p printer cannot; 50 by default. */
    signed char moveCheckTo(const QString &printer) const;
    /** moveCheckTo() of the current printer. */
    signed char moveCheckTo() const;
    /** Stores how far a finished receipt is moved. */
    void setCheckMovingTo(signed char distance);
    /** Stores how far a finished receipt is moved; does nothing when @p printer cannot, unlike setPaperLoopFlag(). */
    void setCheckMovingTo(const QString &printer, signed char distance);

    /** Copies @p settings, its section included, into the shared port settings object. */
    void setPortSettings(const QString &printer, const RS232Settings &settings);

    /** The name of a printer with `<`, `>`, `&` and `"` escaped as in HTML, for use as a section. */
    QString printerNameToSection(const QString &printerName) const;

protected:
    /** Guards all values of this class and of those derived from it; not recursive. */
    static QMutex _settingsMutex;
    static QString _printerId;

private:
    static bool storeValue(const QString &key, const QString &value);
    static bool storeDescriptor(const QVariantMap &map);
    static const QSharedPointer<RS232Settings> &pointPortAt(const QString &section);

    static quint32 _printerType;
    static qint32 _emptyStringsAtEnd;
    static qint32 _spacessBeforeString;
    static EPaperLoopFlag _paperLoopFlag;
    static qint8 _moveCheckTo;
    static ECharactersMode _charactersMode;
    static bool _enablePortLogging;
    static qint32 _frPrintTout;
    static qint32 _frSrvTestTout;
    static QSharedPointer<RS232Settings> _port;
};

#endif
