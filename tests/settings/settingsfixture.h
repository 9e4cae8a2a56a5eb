// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_SETTINGSFIXTURE_H
#define PRINTSRV_SETTINGSFIXTURE_H

#include "testfixture.h"

#include <QVariant>

/** Gives every test function the settings of a fresh process: the values are class-wide. */
class SettingsFixture : public TestFixture
{
    Q_OBJECT

public:
    using TestFixture::TestFixture;

    static QVariantMap descriptor(const QString &group, const QString &key, const QVariant &value);

    /** "group key type value" of each descriptor, with a note of a map that has not exactly its three keys. */
    static QStringList described(const QVariantList &list);

    /** The value that @p list shows under @p key. */
    static QVariant shown(const QVariantList &list, const QString &key);

protected Q_SLOTS:
    void init();
};

#endif
