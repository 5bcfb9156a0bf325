// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/pdffile.h"

#include "files/wholefile.h"

#include <QFile>
#include <QPrinter>
#include <QTemporaryDir>

namespace {

// The printer does not tell when its file could not take everything; the last line of a PDF does.
bool isWholePdf(const QByteArray &content)
{
    return content.startsWith("%PDF-") && content.trimmed().endsWith("%%EOF");
}

} // namespace

bool writePdfFile(const QString &fileName, const QString &title, const std::function<void(QPrinter *)> &print)
{
    const QTemporaryDir directory;
    if (!directory.isValid())
        return false;
    const QString draft = directory.filePath(QStringLiteral("draft.pdf"));
    {
        QPrinter printer(QPrinter::ScreenResolution);
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(draft);
        printer.setDocName(title);
        print(&printer);
    }
    QFile file(draft);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    const QByteArray content = file.readAll();
    if (!isWholePdf(content))
        return false;
    return writeWholeFile(fileName, content);
}
