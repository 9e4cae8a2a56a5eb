// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "goldencommand.h"

#include "difference.h"
#include "goldenreceipt.h"
#include "inputfile.h"
#include "outputwriter.h"
#include "preview.h"
#include "report.h"

#include <paperfile.h>

#include <QDir>
#include <QJsonDocument>
#include <QTemporaryDir>

#include <unistd.h>

namespace printsrv {

namespace {

const QLatin1String Picture(".png");
const QLatin1String Document(".document");
// Two columns of 60 characters, wide enough for the receipts of every printer.
constexpr int ColumnsOfLog = 131;

int reportColumns()
{
    return ::isatty(STDOUT_FILENO) == 1 ? terminalColumns() : ColumnsOfLog;
}

// Documents are compared by what they say, so that the output of "printsrv render" does as well.
QByteArray comparable(const QByteArray &content, const QString &suffix)
{
    const QByteArray json = suffix == Document ? QJsonDocument::fromJson(content).toJson() : QByteArray();
    return json.isEmpty() ? content : json;
}

/** One run over the receipts of a folder. */
class GoldenRun
{
public:
    GoldenRun(const QDir &folder, EExpectation expectation)
        : m_folder(folder)
        , m_expectation(expectation)
    {
    }

    void take(const GoldenReceipt &receipt);
    void complainOfUnread(const QStringList &folders);
    ExitCode finish();

private:
    bool hasExpectations(const GoldenReceipt &receipt, const MadeReceipt &made) const;
    void checkText(const QString &path, const QString &suffix, const QByteArray &now);
    void checkPicture(const QString &path, const QImage &now);
    void takeOver(const QString &path, const QByteArray &now);
    bool reportMissing(const QString &path);
    void report(const QString &path, const QString &text);
    QString picturePath(const QString &path);

    QDir m_folder;
    EExpectation m_expectation;
    QByteArray m_report;
    QString m_pictureFolder;
    int m_receipts = 0;
    int m_files = 0;
    int m_changed = 0;
    int m_failures = 0;
};

void GoldenRun::take(const GoldenReceipt &receipt)
{
    ++m_receipts;
    setMessagePlace(receipt.templatePath);
    const auto made = makeReceipt(receipt);
    setMessagePlace({});
    if (!made) {
        ++m_failures;
        return;
    }
    if (!hasExpectations(receipt, *made) && m_expectation == EExpectation::Compare) {
        complain(QStringLiteral("%1: nothing is expected of it yet; 'printsrv test --update' writes what it gives now")
                     .arg(receipt.stem));
        ++m_failures;
        return;
    }
    const auto isWanted = [&](const QString &suffix) {
        return made->expected.contains(suffix) || QFileInfo::exists(receipt.stem + suffix);
    };
    for (auto text = made->texts.begin(); text != made->texts.end(); ++text) {
        if (isWanted(text.key())) {
            checkText(receipt.stem + text.key(), text.key(), *text);
        }
    }
    if (isWanted(Picture)) {
        checkPicture(receipt.stem + Picture, made->picture);
    }
}

bool GoldenRun::hasExpectations(const GoldenReceipt &receipt, const MadeReceipt &made) const
{
    QStringList suffixes = made.texts.keys();
    suffixes.append(Picture);
    return std::any_of(suffixes.begin(), suffixes.end(),
                       [&receipt](const QString &suffix) { return QFileInfo::exists(receipt.stem + suffix); });
}

void GoldenRun::checkText(const QString &path, const QString &suffix, const QByteArray &now)
{
    ++m_files;
    const Outcome<QByteArray> content = QFileInfo::exists(path) ? readInput(path) : QByteArray();
    if (!content) {
        complainAt(content.failure(), path);
        ++m_failures;
        return;
    }
    const QByteArray expected = comparable(*content, suffix);
    if (expected == now && QFileInfo::exists(path)) {
        return;
    }
    if (m_expectation == EExpectation::Update) {
        takeOver(path, now);
        return;
    }
    if (reportMissing(path)) {
        return;
    }
    report(path,
           QStringLiteral("differs\n")
               + textDifference(QString::fromUtf8(expected), QString::fromUtf8(now), reportColumns()));
}

void GoldenRun::checkPicture(const QString &path, const QImage &now)
{
    ++m_files;
    const QImage expected(path, "PNG");
    const qint64 dots = differentDots(expected, now);
    if (dots == 0 && expected.size() == now.size()) {
        return;
    }
    if (m_expectation == EExpectation::Update) {
        takeOver(path, PaperFile::toPng(now));
        return;
    }
    if (reportMissing(path)) {
        return;
    }
    if (expected.isNull()) {
        report(path, QStringLiteral("is no PNG picture\n"));
        return;
    }
    const auto size = [](const QImage &picture) {
        return QStringLiteral("%1 x %2").arg(picture.width()).arg(picture.height());
    };
    report(path, QStringLiteral("differs in %1 dots, expected %2, now %3\n").arg(dots).arg(size(expected), size(now)));
    const QString shown = picturePath(path);
    if (!shown.isEmpty() && pictureDifference(expected, now).save(shown, "PNG")) {
        m_report += "        " + shown.toUtf8() + ": what is expected alone is red, what is new blue\n";
        return;
    }
    complain(
        QStringLiteral("%1: the picture of the difference cannot be written into '%2'; TMPDIR names another folder")
            .arg(path, QDir::tempPath()));
}

void GoldenRun::takeOver(const QString &path, const QByteArray &now)
{
    const QString what = QFileInfo::exists(path) ? QStringLiteral("changed\n") : QStringLiteral("new\n");
    if (writeOutput(path, now) == ExitDone) {
        report(path, what);
    } else {
        ++m_failures;
    }
}

// True when there is nothing to compare with.
bool GoldenRun::reportMissing(const QString &path)
{
    if (QFileInfo::exists(path)) {
        return false;
    }
    report(path, QStringLiteral("is missing; --update writes it\n"));
    return true;
}

void GoldenRun::complainOfUnread(const QStringList &folders)
{
    for (const QString &folder : folders) {
        complainAt({QStringLiteral("not read: permission denied")}, folder);
        ++m_failures;
    }
}

void GoldenRun::report(const QString &path, const QString &text)
{
    ++m_changed;
    m_report += path.toUtf8() + ": " + text.toUtf8();
}

// A folder of our own, so that nobody else can have put a link there.
QString GoldenRun::picturePath(const QString &path)
{
    if (m_pictureFolder.isEmpty()) {
        QTemporaryDir folder(QDir::tempPath() + QStringLiteral("/printsrv-test-XXXXXX"));
        folder.setAutoRemove(false);
        m_pictureFolder = folder.path();
    }
    const QString name
        = m_folder.relativeFilePath(QFileInfo(path).absoluteFilePath()).replace(QLatin1Char('/'), QLatin1Char('-'));
    return m_pictureFolder.isEmpty() ? QString() : QDir(m_pictureFolder).filePath(name);
}

ExitCode GoldenRun::finish()
{
    const QString verb
        = m_expectation == EExpectation::Update ? QStringLiteral("written") : QStringLiteral("not as expected");
    const QString failures = m_failures == 0 ? QString() : QStringLiteral(", failed: %1").arg(m_failures);
    m_report += QStringLiteral("Receipts: %1, files: %2, %3: %4%5\n")
                    .arg(m_receipts)
                    .arg(m_files)
                    .arg(verb)
                    .arg(m_changed)
                    .arg(failures)
                    .toUtf8();
    const ExitCode written = writeOutput({}, m_report);
    const bool isWrong = m_failures > 0 || (m_expectation == EExpectation::Compare && m_changed > 0);
    return written == ExitDone && isWrong ? ExitWrongInput : written;
}

// Empty for a folder that can be read.
QString whyNotRead(const QString &folder)
{
    const QFileInfo place(folder);
    const bool isPortName = !place.exists() && QFileInfo::exists(QStringLiteral("/dev/") + folder);
    if (isPortName || (place.exists() && !place.isDir())) {
        return QStringLiteral("is no folder of receipts; a printer is tested with --port and --model");
    }
    if (!place.exists()) {
        return QStringLiteral("there is no such folder");
    }
    return place.isReadable() ? QString() : QStringLiteral("not read: permission denied");
}

} // namespace

ExitCode testReceipts(const QString &folder, EExpectation expectation)
{
    const QString reason = whyNotRead(folder);
    if (!reason.isEmpty()) {
        return complainAt({reason}, folder);
    }
    const GoldenFolder found = goldenReceipts(folder);
    if (found.receipts.isEmpty() && found.unread.isEmpty()) {
        return complainAt({QStringLiteral("has no receipts: no template NAME.cpt with its data NAME.json")}, folder);
    }
    GoldenRun run(QDir(folder), expectation);
    run.complainOfUnread(found.unread);
    for (const GoldenReceipt &receipt : found.receipts) {
        run.take(receipt);
    }
    return run.finish();
}

} // namespace printsrv
