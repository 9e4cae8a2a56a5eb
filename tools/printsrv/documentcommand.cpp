// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "actions.h"
#include "commandline.h"
#include "documentcopy.h"
#include "outputwriter.h"
#include "report.h"

#include <QFile>
#include <QFileInfo>

namespace printsrv {

namespace {

QString verdict(const DocumentCopy &copy, const QString &remark)
{
    return QStringLiteral("%1: %2\n").arg(copy.path, copy.isGood() ? QStringLiteral("good") + remark : copy.problem);
}

ExitCode verify(const QStringList &arguments)
{
    CommandLine line(QStringLiteral("document verify"),
                     QStringLiteral("Says which copies of a document file are good and why the others are not.\n"
                                    "Exit code 0 when both are good, 1 otherwise."),
                     {QStringLiteral("printsrv document verify /var/lib/orbek/printsrv/last.doc")});
    line.addArgument(QStringLiteral("FILE"), QStringLiteral("The document file; its backup is FILE.bak."));
    if (const auto code = line.parse(arguments)) {
        return *code;
    }
    const DocumentCopy document = inspectCopy(line.argument(0));
    const DocumentCopy backup = inspectCopy(backupPath(line.argument(0)));
    const bool areGood = document.isGood() && backup.isGood();
    const bool isOther = areGood && document.content != backup.content;
    QString text = verdict(document, {})
        + verdict(backup, isOther ? QStringLiteral(", another version than the document") : QString());
    if (!document.isGood() && document.isRead && backup.isGood()) {
        text += QStringLiteral("'printsrv document restore' puts the backup back in place\n");
    }
    const ExitCode written = writeOutput({}, text.toUtf8());
    return written == ExitDone && !areGood ? ExitWrongInput : written;
}

// A damaged document may still hold what a person can read, so it is kept.
bool keepDamaged(const QString &path)
{
    QString kept = path + QStringLiteral(".damaged");
    for (int number = 2; QFileInfo::exists(kept) && number < 100; ++number) {
        kept = path + QStringLiteral(".damaged%1").arg(number);
    }
    QFile damaged(path);
    if (damaged.exists() && !damaged.copy(kept)) {
        complain(QStringLiteral("%1: nothing restored, as the damaged file cannot be kept as %2: %3")
                     .arg(path, kept, damaged.errorString()));
        return false;
    }
    return true;
}

// The backup is only read, so that it stays good whatever happens on the way.
ExitCode putBack(const QString &path, const QByteArray &content)
{
    if (!keepDamaged(path)) {
        return ExitWrongInput;
    }
    if (writeOutput(path, content) != ExitDone
        || writeOutput(checksumPath(path), checksumLine(path, content)) != ExitDone) {
        return ExitWrongInput;
    }
    const DocumentCopy restored = inspectCopy(path);
    if (!restored.isGood()) {
        complain(QStringLiteral("%1: not restored: %2; the backup is untouched").arg(path, restored.problem));
        return ExitWrongInput;
    }
    return writeOutput({}, QStringLiteral("%1: restored from its backup\n").arg(path).toUtf8());
}

ExitCode restore(const QStringList &arguments)
{
    CommandLine line(
        QStringLiteral("document restore"),
        QStringLiteral("Puts the good backup of a damaged document file back in place. The backup is only\n"
                       "read; the damaged file is kept as FILE.damaged. A good document is left alone."),
        {QStringLiteral("printsrv document restore last.doc")});
    line.addArgument(QStringLiteral("FILE"), QStringLiteral("The document file; its backup is FILE.bak."));
    if (const auto code = line.parse(arguments)) {
        return *code;
    }
    const QString path = line.argument(0);
    const DocumentCopy document = inspectCopy(path);
    if (document.isGood()) {
        return writeOutput({}, QStringLiteral("%1: good, nothing to restore\n").arg(path).toUtf8());
    }
    if (!document.isRead) {
        complain(QStringLiteral("%1: %2; nothing restored, as it may be good").arg(path, document.problem));
        return ExitWrongInput;
    }
    const DocumentCopy backup = inspectCopy(backupPath(path));
    if (!backup.isGood()) {
        complain(QStringLiteral("%1: %2").arg(path, document.problem));
        complain(QStringLiteral("%1: %2; there is no good copy to restore from").arg(backup.path, backup.problem));
        return ExitWrongInput;
    }
    return putBack(path, backup.content);
}

} // namespace

ExitCode runDocument(const QStringList &arguments)
{
    return runAction({"document",
                      "Looks after document files, which have a checksum and a backup.",
                      {{"verify", "says which copies of a document file are good", verify},
                       {"show", "shows a document file as text, HTML or a picture", runDocumentShow},
                       {"restore", "puts a good backup back in place", restore}},
                      {QStringLiteral("printsrv document verify last.doc"),
                       QStringLiteral("printsrv document show last.doc --width 42"),
                       QStringLiteral("printsrv document restore last.doc")}},
                     arguments);
}

} // namespace printsrv
