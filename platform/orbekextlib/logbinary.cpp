// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "logbinary.h"

#include <QTextCodec>

namespace {

QString printable(QString text)
{
    for (QChar &character : text) {
        const bool isSafe = character.isPrint() && !character.isSurrogate() && character != QChar::ReplacementCharacter;
        if (!isSafe) {
            character = QLatin1Char('.');
        }
    }
    return text;
}

QString decoded(const QByteArray &bytes, const char *encoding)
{
    const QTextCodec *codec = encoding == nullptr ? nullptr : QTextCodec::codecForName(encoding);
    if (codec == nullptr) {
        return {};
    }
    QTextCodec::ConverterState state(QTextCodec::IgnoreHeader);
    return QStringLiteral(" \"%1\"").arg(printable(codec->toUnicode(bytes.constData(), bytes.size(), &state)));
}

} // namespace

logbinary::logbinary(const QByteArray &bytes, const char *encoding)
    : m_bytes(bytes)
    , m_encoding(encoding)
{
}

QString logbinary::toString() const
{
    if (m_bytes.isEmpty()) {
        return QStringLiteral("(no bytes)");
    }
    const QByteArray shown = m_bytes.left(MaximumBytes);
    const QString text = QString::fromLatin1(shown.toHex(' ').toUpper()) + decoded(shown, m_encoding);
    if (shown.size() == m_bytes.size()) {
        return text;
    }
    return QStringLiteral("%1... %2 bytes").arg(text, QString::number(m_bytes.size()));
}

QDebug operator<<(QDebug debug, const logbinary &binary)
{
    const QDebugStateSaver saver(debug);
    debug.noquote() << binary.toString();
    return debug;
}
