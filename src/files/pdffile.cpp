// SPDX-License-Identifier: GPL-3.0-or-later
#include "files/pdffile.h"

#include <QFile>
#include <QFileInfo>
#include <QPrinter>
#include <QTemporaryFile>

#include <filesystem>

namespace {

constexpr int tailLength = 64; // bytes, more than the last line has

// The printer does not tell when its file could not take everything; the last line of a PDF does.
bool isWholePdf(const QString &fileName)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly) || !file.read(tailLength).startsWith("%PDF-"))
        return false;
    return file.seek(qMax<qint64>(0, file.size() - tailLength)) && file.readAll().trimmed().endsWith("%%EOF");
}

// The name of a file that does not exist yet, in the folder of this one; empty where the folder takes none.
QString freeNameBeside(const QString &fileName)
{
    QTemporaryFile file(fileName + QStringLiteral(".XXXXXX"));
    return file.open() ? file.fileName() : QString();
}

void printInto(const QString &fileName, const QString &title, const std::function<void(QPrinter *)> &print)
{
    QPrinter printer(QPrinter::ScreenResolution);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(fileName);
    printer.setDocName(title);
    print(&printer);
}

// In one step: the name never stands for half a file, nor for none.
bool replaceFile(const QString &newFile, const QString &target)
{
    std::error_code error;
    std::filesystem::rename(std::filesystem::u8path(newFile.toUtf8().constData()),
                            std::filesystem::u8path(target.toUtf8().constData()), error);
    return !error;
}

} // namespace

bool writePdfFile(const QString &fileName, const QString &title, const std::function<void(QPrinter *)> &print)
{
    // A link stays one, and what it leads to is replaced.
    const QFileInfo info(fileName);
    const QString target = info.exists() ? info.canonicalFilePath() : info.absoluteFilePath();
    const QString draft = info.exists() && !info.isFile() ? QString() : freeNameBeside(target);
    const QString printed = draft.isEmpty() ? target : draft;
    if (QFileInfo(printed).isDir() || (draft.isEmpty() && info.exists() && !info.isWritable()))
        return false;
    printInto(printed, title, print);
    const bool isWhole = isWholePdf(printed);
    if (draft.isEmpty())
        return isWhole;
    if (isWhole && info.exists())
        QFile::setPermissions(draft, QFile::permissions(target));
    if (isWhole && replaceFile(draft, target))
        return true;
    QFile::remove(draft);
    return false;
}
