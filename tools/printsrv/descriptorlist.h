// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_DESCRIPTORLIST_H
#define PRINTSRV_DESCRIPTORLIST_H

#include "outcome.h"

#include <QVariant>

namespace printsrv {

/** A descriptor's parts; empty for what it does not have. */
QString groupOf(const QVariantMap &descriptor);
QString keyOf(const QVariantMap &descriptor);
QVariant valueOf(const QVariantMap &descriptor);

QVariantMap makeDescriptor(const QString &group, const QString &key, const QVariant &value);

/** Place of the descriptor of @p group and @p key in @p list, or -1. */
int indexOf(const QVariantList &list, const QString &group, const QString &key);

/** The descriptors of a JSON array; a syntax error has its line and column. */
[[nodiscard]] Outcome<QVariantList> descriptorsFromJson(const QByteArray &json);

/** The list as a JSON array with one descriptor a line. */
QByteArray descriptorsToJson(const QVariantList &list);

} // namespace printsrv

#endif
