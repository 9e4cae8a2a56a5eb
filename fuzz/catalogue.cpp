// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include "support.h"
#include "targets.h"

#include <printerinfo.h>

void fuzz::catalogue(const QByteArray &input)
{
    const LogCount log;
    const QList<PrinterInfo> models = PrinterInfo::fromJson(input);
    require(log.lines() <= 1 && (models.isEmpty() || log.lines() == 0), "a catalogue is complained of once");
    for (const PrinterInfo &model : models) {
        // Contract: ejection is written under another key than it is read from; once read again it is false.
        const PrinterInfo normal(model.toMap());
        require(PrinterInfo(normal.toMap()) == normal, "a model's map is its normal form");
        const auto papers = model.paperTypes();
        for (auto paper = papers.keyBegin(); paper != papers.keyEnd(); ++paper) {
            require(model.paperType(*paper).id() == *paper, "a paper is found by its number");
        }
        model.paperType(1 << 30);
    }
}
