// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#ifndef PRINTSRV_TESTFIXTURE_H
#define PRINTSRV_TESTFIXTURE_H

#include <QtTest>

/**
 * The base of every test class: a test function fails when the code under test writes a warning or a critical line that
 * the test did not announce, and when an announced line does not come.
 *
 * The system configuration is one of the test's own, with a temporary work folder, unless the environment variable
 * ORBEK_CONFIG names one.
 *
 * Debug and info lines pass without notice. Lines may be written from any thread. A test class that has an init() or
 * cleanup() of its own calls the one of this class from it.
 */
class TestFixture : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /** Announces one warning or critical line of the running test function; @p pattern matches anywhere in the line. */
    static void expectMessage(QtMsgType type, const QString &pattern);

    /** expectMessage() of a warning. */
    static void expectWarning(const QString &pattern);

    /** expectMessage() of a critical line. */
    static void expectCritical(const QString &pattern);

protected:
    /** A row of test data in one call, for rows that operators would spread over many lines. */
    template<typename... Values>
    static void addRow(const char *name, const Values &...values)
    {
        (QTest::newRow(name) << ... << values);
    }

protected Q_SLOTS:
    /** Starts to listen; Qt Test calls it before each test function. */
    void init();

    /** Fails the test function for each line too many or too few; Qt Test calls it after each test function. */
    void cleanup();
};

#endif
