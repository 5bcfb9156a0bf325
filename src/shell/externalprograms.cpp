// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/externalprograms.h"

#include "settings/applanguage.h"

#include <QCoreApplication>
#include <QDesktopServices>
#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>
#include <QUrl>

namespace {

#ifdef Q_OS_WIN
const QStringList calculators{QStringLiteral("Calc.exe")};
const QStringList helpViewers{QStringLiteral("hh.exe")};
#else
const QStringList calculators{QStringLiteral("gnome-calculator"), QStringLiteral("kcalc"),
                              QStringLiteral("mate-calc"),        QStringLiteral("galculator"),
                              QStringLiteral("qalculate-gtk"),    QStringLiteral("xcalc")};
const QStringList helpViewers{QStringLiteral("kchmviewer"), QStringLiteral("xchm"), QStringLiteral("okular")};
#endif

QString firstInstalled(const QStringList &programs)
{
    for (const QString &program : programs) {
        const QString path = QStandardPaths::findExecutable(program);
        if (!path.isEmpty())
            return path;
    }
    return QString();
}

// Where the guide lies, seen from the program: installed in bin or in libexec/velmora, then in the tree that
// it was built in, then beside it.
const QStringList guidePlaces{QStringLiteral("../share/doc/velmora/guide"),
                              QStringLiteral("../../share/doc/velmora/guide"), QStringLiteral("../guide"),
                              QStringLiteral("guide")};

void showIn(const QStringList &viewers, const QString &path)
{
    const QString viewer = firstInstalled(viewers);
    if (!viewer.isEmpty())
        QProcess::startDetached(viewer, {path});
}

} // namespace

QStringList calculatorPrograms()
{
    return calculators;
}

void startCalculator(QProcess *process)
{
    if (process->isOpen()) {
        process->close();
        process->waitForFinished(1000);
    }
    const QString program = firstInstalled(calculators);
    if (!program.isEmpty())
        process->start(program, QStringList(), QIODevice::ReadWrite);
}

QString userGuide(const QString &programFolder, const QString &language)
{
    const QString chosen = isChinese(language) ? QStringLiteral("zh") : QStringLiteral("en");
    for (const QString &folder : {chosen, QStringLiteral("en")}) {
        for (const QString &place : guidePlaces) {
            const QFileInfo contents(QDir(programFolder).filePath(place + QLatin1Char('/') + folder) +
                                     QLatin1String("/index.html"));
            if (contents.exists())
                return contents.canonicalFilePath();
        }
    }
    return QString();
}

void openHelp()
{
    const QString programFolder = QCoreApplication::applicationDirPath();
    const QString helpFile = programFolder + QLatin1String("/ServoHelp.CHM");
    if (QFileInfo::exists(helpFile)) {
        showIn(helpViewers, helpFile);
        return;
    }
    const QString guide = userGuide(programFolder, configuredLanguage());
    if (!guide.isEmpty())
        QDesktopServices::openUrl(QUrl::fromLocalFile(guide));
}
