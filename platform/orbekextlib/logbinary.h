// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef ORBEKEXTLIB_LOGBINARY_H
#define ORBEKEXTLIB_LOGBINARY_H

#include <QByteArray>
#include <QDebug>
#include <QString>

/**
 * Renders bytes for a log line: `qDebug() << "read:" << logbinary(bytes, "UTF-8")` writes `read: 1B 76 41 ".vA"`.
 *
 * The rendering is made when it is written, so that a line that nobody reads costs nothing. Keeps a shared copy of the
 * bytes and the pointer to the encoding's name, which must live as long as the object; a string literal does.
 * Reentrant.
 */
class Q_DECL_EXPORT logbinary // Contract: the name is in lower case
{
public:
    /** Bytes shown at most; of longer data the first ones, followed by "... 300 bytes". */
    static constexpr int MaximumBytes = 256;

    /**
     * Takes @p bytes for rendering, with the text that they are in the encoding of this name.
     * @p encoding is a codec name such as "UTF-8"; null or a name that no codec has renders the numbers alone.
     */
    explicit logbinary(const QByteArray &bytes, const char *encoding = "UTF-8");

    /**
     * Two upper-case hexadecimal digits a byte, then the text in double quotes with "." in place of each character that
     * cannot be printed; "(no bytes)" for none. One line always.
     */
    QString toString() const;

private:
    QByteArray m_bytes;
    const char *m_encoding;
};

/** Writes logbinary::toString() without further quotes. */
Q_DECL_EXPORT QDebug operator<<(QDebug debug, const logbinary &binary);

#endif
