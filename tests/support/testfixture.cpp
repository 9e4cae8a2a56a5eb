// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "testfixture.h"

#include <QMutex>
#include <QRegularExpression>
#include <QTemporaryDir>

namespace {

struct Expectation
{
    QtMsgType type;
    QRegularExpression pattern;
};

struct Listener
{
    QMutex mutex;
    QtMessageHandler previous = nullptr;
    QVector<Expectation> expected;
    QStringList unexpected;
};

Listener &listener()
{
    static Listener instance;
    return instance;
}

bool isAnnounced(QtMsgType type, const QString &text)
{
    auto &expected = listener().expected;
    const auto found = std::find_if(expected.begin(), expected.end(), [&](const Expectation &candidate) {
        return candidate.type == type && candidate.pattern.match(text).hasMatch();
    });
    if (found == expected.end()) {
        return false;
    }
    expected.erase(found);
    return true;
}

void listen(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    QMutexLocker locker(&listener().mutex);
    const bool isSerious = type == QtWarningMsg || type == QtCriticalMsg;
    if (isSerious && isAnnounced(type, text)) {
        return;
    }
    if (isSerious) {
        listener().unexpected.append(text);
    }
    const QtMessageHandler previous = listener().previous;
    locker.unlock();
    previous(type, context, text);
}

// The terminal's own configuration names folders that a test may not write to.
void useConfigurationOfTheTest()
{
    static const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("orbek.conf"));
    QFile file(path);
    if (!qEnvironmentVariableIsEmpty("ORBEK_CONFIG") || !file.open(QIODevice::WriteOnly)) {
        return;
    }
    file.write("[paths]\nworkDir=" + folder.path().toUtf8() + '\n');
    qputenv("ORBEK_CONFIG", QFile::encodeName(path));
}

} // namespace

void TestFixture::expectMessage(QtMsgType type, const QString &pattern)
{
    QMutexLocker locker(&listener().mutex);
    listener().expected.append({type, QRegularExpression(pattern)});
}

void TestFixture::expectWarning(const QString &pattern)
{
    expectMessage(QtWarningMsg, pattern);
}

void TestFixture::expectCritical(const QString &pattern)
{
    expectMessage(QtCriticalMsg, pattern);
}

void TestFixture::init()
{
    useConfigurationOfTheTest();
    listener().expected.clear();
    listener().unexpected.clear();
    listener().previous = qInstallMessageHandler(listen);
}

void TestFixture::cleanup()
{
    qInstallMessageHandler(listener().previous);
    QStringList missing;
    for (const Expectation &expectation : qAsConst(listener().expected)) {
        missing.append(expectation.pattern.pattern());
    }
    const QString unexpected = listener().unexpected.join(QLatin1Char('\n'));
    QVERIFY2(missing.isEmpty(),
             qPrintable(QStringLiteral("lines that did not come: ") + missing.join(QLatin1Char('\n'))));
    QVERIFY2(unexpected.isEmpty(), qPrintable(QStringLiteral("lines that were not announced: ") + unexpected));
}
