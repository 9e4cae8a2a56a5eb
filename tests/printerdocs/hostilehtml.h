// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_HOSTILEHTML_H
#define PRINTSRV_HOSTILEHTML_H

#include <QString>
#include <QVector>

/** A hostile value in one form of HTML that the library makes, and the text that a reader has to see. */
struct HostileCase
{
    QString name;
    QString html;
    QString text;
};

/**
 * Every form of HTML with every hostile value in it.
 *
 * Values that would run a script set "window.hit"; those that would make a request ask for @p address, which ends with
 * a "/".
 */
QVector<HostileCase> hostileCases(const QString &address);

/** @p text with each run of blanks, ordinary or not, as one, and none at the ends: layout is no concern here. */
QString withPlainBlanks(const QString &text);

#endif
