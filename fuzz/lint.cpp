// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include <templatelint.h>

#include "support.h"
#include "targets.h"

#include <QTextCodec>

namespace {

/** With everything that lint can look for; texts only, as any bytes make one. */
printsrv::LintOptions optionsFrom(const QStringList &parts)
{
    static const PrinterInfo model = PrinterInfo::fromResources().constFirst();
    QVariantMap attributes;
    const QStringList assignments = parts.mid(2);
    for (const QString &attribute : assignments) {
        attributes.insert(attribute.section(QLatin1Char('='), 0, 0), attribute.section(QLatin1Char('='), 1));
    }
    PrinterDocument receipt;
    receipt.setAttributes(attributes);
    receipt.setEntries(parts.value(1));
    printsrv::LintOptions options;
    options.receipts = {receipt};
    options.model = model;
    options.codec = QTextCodec::codecForName("IBM866");
    options.isHostile = true;
    return options;
}

} // namespace

void fuzz::lint(const QByteArray &input)
{
    const LogCount log;
    const QStringList parts = QString::fromUtf8(input).split(QLatin1Char(Separator));
    const QStringList lines = parts.first().split(QLatin1Char('\n'));
    const printsrv::LintOptions options = optionsFrom(parts);
    if (options.receipts.constFirst().document.entries().contains(QLatin1String("<ENTRIES>"), Qt::CaseInsensitive)) {
        return; // up to the limit, which takes long
    }
    const auto findings = printsrv::lintTemplate(lines, options).value_or(QVector<printsrv::Finding>());
    for (const printsrv::Finding &finding : findings) {
        require(finding.line >= 1 && finding.line <= lines.size(), "a finding is in a line of the template");
        require(finding.column >= 1 && finding.column <= lines.at(finding.line - 1).size() + 1,
                "a finding is at a character of its line");
        require(!finding.text.isEmpty(), "a finding says what is wrong");
    }
    require(log.lines() == 0, "lint logs nothing");
}
