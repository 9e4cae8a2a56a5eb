// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_FULLFOLDER_H
#define PRINTSRV_FULLFOLDER_H

#include <QString>

/**
 * A folder that takes no more from a moment on: a small disk of its own where the test may mount one, otherwise a
 * folder without the right to write.
 */
class FullFolder
{
public:
    explicit FullFolder(const QString &path);
    FullFolder(const FullFolder &) = delete;
    FullFolder &operator=(const FullFolder &) = delete;
    ~FullFolder();

    /** Makes every write that follows fail. */
    void fill() const;

    /** What the system says to such a write. */
    QByteArray reason() const;

private:
    QString m_path;
    bool m_isDisk;
};

#endif
