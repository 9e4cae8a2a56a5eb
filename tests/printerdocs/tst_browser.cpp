// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "hostilehtml.h"

#include "testfixture.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTcpServer>

// Hostile values in HTML, all on one page, read by a browser: each is the text that it was, and no value runs a script,
// makes an element or a request. The first argument of the command line may name the browser, "chromium" by default.

namespace {

// Runs behind the cases. What it finds stands in an attribute of the page that the browser prints at the end.
const char *const Inspection = R"(
const elements = 'P TABLE TBODY TR TD DIV PRE BR FONT B I U'.split(' ');
const attributes = 'width cellspacing cellpadding colspan align size'.split(' ');
const faults = [];
for (const [index, text] of texts.entries()) {
    const box = document.getElementById('case' + index);
    const found = box.textContent.replace(/\s+/g, ' ').trim();
    if (found !== text) faults.push(index + ' reads ' + found);
    for (const element of box.querySelectorAll('*')) {
        if (!elements.includes(element.tagName)) faults.push(index + ' makes ' + element.tagName);
        for (const attribute of element.attributes)
            if (!attributes.includes(attribute.name)) faults.push(index + ' sets ' + attribute.name);
    }
}
if (document.querySelectorAll('.case').length !== texts.length) faults.push('cases are lost');
if (window.hit) faults.push('a script ran');
document.body.setAttribute('data-faults', btoa(unescape(encodeURIComponent(JSON.stringify(faults)))));
)";

/** Of a page the part in its body. */
QString bodyOf(const QString &html)
{
    const int begin = html.indexOf(QLatin1String("<body>"));
    const int end = html.lastIndexOf(QLatin1String("</body>"));
    return begin < 0 ? html : html.mid(begin + 6, end - begin - 6);
}

QByteArray pageOf(const QVector<HostileCase> &cases)
{
    QString page = QStringLiteral("<!DOCTYPE html><html><head><meta charset=\"UTF-8\"></head><body>\n");
    QJsonArray texts;
    for (int i = 0; i < cases.size(); ++i) {
        page += QStringLiteral("<div class=\"case\" id=\"case%1\">").arg(i) + bodyOf(cases.at(i).html)
            + QStringLiteral("</div>\n");
        texts.append(cases.at(i).text);
    }
    QByteArray literal = QJsonDocument(texts).toJson(QJsonDocument::Compact);
    literal.replace('<', "\\u003c");
    return page.toUtf8() + "<script>const texts = " + literal + ";" + Inspection + "</script></body></html>\n";
}

} // namespace

class tst_Browser : public TestFixture
{
    Q_OBJECT

private Q_SLOTS:
    void readsText();
};

void tst_Browser::readsText()
{
    int requests = 0;
    QTcpServer server;
    QVERIFY(server.listen(QHostAddress::LocalHost));
    connect(&server, &QTcpServer::newConnection, this, [&] { ++requests; });
    const auto cases = hostileCases(QStringLiteral("http://127.0.0.1:%1/").arg(server.serverPort()));
    const QTemporaryDir folder;
    QFile page(folder.filePath(QStringLiteral("cases.html")));
    QVERIFY(page.open(QIODevice::WriteOnly) && page.write(pageOf(cases)) > 0 && page.flush());

    QProcess browser;
    browser.setStandardErrorFile(QProcess::nullDevice());
    browser.start(qEnvironmentVariable("PRINTSRV_BROWSER", QStringLiteral("chromium")),
                  {QStringLiteral("--headless"), QStringLiteral("--no-sandbox"), QStringLiteral("--disable-gpu"),
                   QStringLiteral("--disable-background-networking"), QStringLiteral("--disable-component-update"),
                   QStringLiteral("--disable-sync"), QStringLiteral("--no-first-run"),
                   QStringLiteral("--user-data-dir=") + folder.filePath(QStringLiteral("profile")),
                   QStringLiteral("--dump-dom"), QStringLiteral("file://") + page.fileName()});
    QTRY_VERIFY_WITH_TIMEOUT(browser.state() == QProcess::NotRunning, 60000);
    const QByteArray dom = browser.readAllStandardOutput();

    const int begin = dom.lastIndexOf("data-faults=\"") + int(qstrlen("data-faults=\""));
    QVERIFY2(begin > 20, qPrintable(QStringLiteral("the browser read no page: ") + browser.errorString()));
    const QByteArray faults = QByteArray::fromBase64(dom.mid(begin, dom.indexOf('"', begin) - begin));
    QCOMPARE(faults, QByteArray("[]"));
    QCOMPARE(requests, 0);
}

QTEST_GUILESS_MAIN(tst_Browser)
#include "tst_browser.moc"
