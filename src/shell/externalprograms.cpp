// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/externalprograms.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>

namespace {

#ifdef Q_OS_WIN
const QStringList calculators{QStringLiteral("Calc.exe")};
const QStringList helpViewers{QStringLiteral("hh.exe")};
const QStringList guideViewers;
#else
const QStringList calculators{QStringLiteral("gnome-calculator"), QStringLiteral("kcalc"),
                              QStringLiteral("mate-calc"),        QStringLiteral("galculator"),
                              QStringLiteral("qalculate-gtk"),    QStringLiteral("xcalc")};
const QStringList helpViewers{QStringLiteral("kchmviewer"), QStringLiteral("xchm"), QStringLiteral("okular")};
const QStringList guideViewers{QStringLiteral("xdg-open"), QStringLiteral("x-www-browser"),
                               QStringLiteral("sensible-browser")};
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

// The user guide lies beside an installed program, or in the tree that it was built from.
QString userGuide()
{
    const QDir programDir(QCoreApplication::applicationDirPath());
    for (const char *place : {"docs/user-guide", "../share/doc/velmora/user-guide", "../docs/user-guide",
                              "../../docs/user-guide", "../../../docs/user-guide"}) {
        const QFileInfo guide(programDir.filePath(QLatin1String(place) + QLatin1String("/README.md")));
        if (guide.exists())
            return guide.canonicalFilePath();
    }
    return QString();
}

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

void openHelp()
{
    const QString helpFile = QCoreApplication::applicationDirPath() + QLatin1String("/ServoHelp.CHM");
    if (QFileInfo::exists(helpFile)) {
        showIn(helpViewers, helpFile);
        return;
    }
    const QString guide = userGuide();
    if (!guide.isEmpty())
        showIn(guideViewers, guide);
}
