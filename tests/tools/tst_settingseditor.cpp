// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "commandrunner.h"
#include "testfixture.h"

namespace {

struct Step
{
    QString command;
    QString expected;
};

// The commands of the page's console blocks, each with what the page shows below it.
QVector<Step> stepsOf(const QString &page)
{
    QVector<Step> steps;
    bool isConsole = false;
    const QStringList lines = page.split(QLatin1Char('\n'));
    for (const QString &line : lines) {
        if (line.startsWith(QStringLiteral("```"))) {
            isConsole = line == QStringLiteral("```console");
        } else if (isConsole && line.startsWith(QStringLiteral("$ "))) {
            steps.append({line.mid(2), QString()});
        } else if (isConsole) {
            steps.last().expected += line + QLatin1Char('\n');
        }
    }
    return steps;
}

QString outputOf(const CommandRunner &folder, const QString &command)
{
    const QString commandFolder = QFileInfo(CommandRunner::command()).path();
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("PATH"),
                       commandFolder + QLatin1Char(':') + environment.value(QStringLiteral("PATH")));
    QProcess shell;
    shell.setProcessEnvironment(environment);
    shell.setWorkingDirectory(folder.path());
    shell.setProcessChannelMode(QProcess::MergedChannels);
    shell.start(QStringLiteral("sh"), {QStringLiteral("-c"), command});
    return shell.waitForFinished() ? QString::fromUtf8(shell.readAll()) : QStringLiteral("does not end");
}

} // namespace

/** The page about a settings editor shows what its commands write. */
class TestSettingsEditor : public TestFixture
{
    Q_OBJECT

private Q_SLOTS:
    void showsWhatComesOut();
};

void TestSettingsEditor::showsWhatComesOut()
{
    QFile page(QStringLiteral(PRINTSRV_EXAMPLES "/settings-editor-descriptors.md"));
    QVERIFY(page.open(QIODevice::ReadOnly));
    const QVector<Step> steps = stepsOf(QString::fromUtf8(page.readAll()));
    QVERIFY(steps.size() > 15);
    const CommandRunner folder;
    for (const Step &step : steps) {
        const QString output = outputOf(folder, step.command);
        QVERIFY2(
            output == step.expected,
            qPrintable(step.command + QStringLiteral("\nwrote\n") + output + QStringLiteral("not\n") + step.expected));
    }
}

QTEST_GUILESS_MAIN(TestSettingsEditor)
#include "tst_settingseditor.moc"
