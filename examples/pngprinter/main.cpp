// SPDX-FileCopyrightText: printsrvlib authors
// SPDX-License-Identifier: MIT

#include <printsrvlib/textprintersettings.h>
#include <printsrvpaper/paperfile.h>
#include <printsrvpaper/paperrenderer.h>

// The pseudo-printer PNG of a print service: a document file and its number become PrintSrvSettings::pngOutputFile().
int main(int argc, char *argv[])
{
    TextPrinterDocument document;
    if (argc != 3 || !document.loadFromFile(QString::fromLocal8Bit(argv[1]))) {
        return 1;
    }
    PaperRenderer paper;
    paper.setEmptyLinesAtEnd(TextPrinterSettings().emptyStringsAtEnd());
    PrintSrvSettings settings;
    return PaperFile::saveOutput(paper.render(document), settings, QByteArray(argv[2]).toInt()) ? 0 : 1;
}
