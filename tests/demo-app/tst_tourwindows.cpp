// SPDX-License-Identifier: GPL-3.0-or-later
// The tour's list of windows holds each that the sources make, and no other.
#include "demo-app/tourwindows.h"

#include <QDir>
#include <QDirIterator>
#include <QRegularExpression>
#include <QSet>
#include <QTest>

namespace {

const QString sources = QStringLiteral(VELMORA_SOURCE_DIR "/src");

QString contentsOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

// What makes a window: a dialog or a menu, on the stack, with new, or by a function of its class.
QSet<QString> dialogsMadeIn(const QString &code)
{
    static const QRegularExpression made(
        QStringLiteral(
            "(?:\\bnew (Q\\w*Dialog|Q?\\w+Dialog|QMessageBox|QMenu|QWizard)\\b"
            "|\\b(Q\\w*Dialog|QMessageBox|QWizard)::(?:get|warning|critical|information|question|about)"
            "|^ +(Q\\w*Dialog|QMessageBox|QMenu|QWizard) \\w+[(;{])"),
        QRegularExpression::MultilineOption);
    QSet<QString> classes;
    auto found = made.globalMatch(code);
    while (found.hasNext())
        classes.insert(found.next().capturedTexts().last());
    static const QRegularExpression told(QStringLiteral("^.*[ (\\[{]showMessage\\("),
                                         QRegularExpression::MultilineOption);
    if (code.contains(told))
        classes.insert(QStringLiteral("QMessageBox"));
    return classes;
}

// The class of a file that gives itself a title.
QString titledClassIn(const QString &code)
{
    static const QRegularExpression constructor(QStringLiteral("^(\\w+)::\\1\\("),
                                                QRegularExpression::MultilineOption);
    static const QRegularExpression title(QStringLiteral("^    setWindowTitle\\("),
                                          QRegularExpression::MultilineOption);
    static const QRegularExpression form(QStringLiteral("<class>(\\w+)</class>"));
    if (code.contains(QLatin1String("<property name=\"windowTitle\">")))
        return form.match(code).captured(1);
    return code.contains(title) ? constructor.match(code).captured(1) : QString();
}

QSet<QString> windowsInSources()
{
    QSet<QString> entries;
    QDirIterator files(sources, {QStringLiteral("*.cpp"), QStringLiteral("*.ui")}, QDir::Files,
                       QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString path = files.next();
        const QString name = QDir(sources).relativeFilePath(path);
        const QString code = contentsOf(path);
        QSet<QString> classes = dialogsMadeIn(code);
        classes.insert(titledClassIn(code));
        if (code.contains(QLatin1String("class=\"QMenu\"")))
            classes.insert(QStringLiteral("QMenu"));
        classes.remove(QString());
        for (const QString &className : qAsConst(classes))
            entries.insert(name + QLatin1Char(' ') + className);
    }
    // It shows the text that its callers give it.
    entries.remove(QStringLiteral("widgets/messages.cpp QMessageBox"));
    return entries;
}

QSet<QString> windowsOfTour()
{
    QSet<QString> entries;
    for (const TourWindow &window : tourWindows())
        entries.insert(QLatin1String(window.source) + QLatin1Char(' ') + QLatin1String(window.className));
    return entries;
}

QString listOf(const QSet<QString> &entries)
{
    QStringList sorted = entries.values();
    sorted.sort();
    return sorted.join(QStringLiteral("; "));
}

} // namespace

class tst_TourWindows : public QObject
{
    Q_OBJECT

private slots:
    void makingOfAWindowIsSeen_data();
    void makingOfAWindowIsSeen();
    void everyWindowOfTheSourcesIsOnTheTour();
    void everyWindowOfTheTourIsInTheSources();
};

void tst_TourWindows::makingOfAWindowIsSeen_data()
{
    QTest::addColumn<QString>("code");
    QTest::addColumn<QString>("classes");
    QTest::newRow("on the stack") << "    QPrintPreviewDialog dialog(&printer);"
                                  << "QPrintPreviewDialog";
    QTest::newRow("box on the stack") << "    QMessageBox box;"
                                      << "QMessageBox";
    QTest::newRow("with new") << "    dialog = new QColorDialog(this);"
                              << "QColorDialog";
    QTest::newRow("own class") << "    progress = new RunProgressDialog(this);"
                               << "RunProgressDialog";
    QTest::newRow("by a function") << "    QFileDialog::getSaveFileName(this);"
                                   << "QFileDialog";
    QTest::newRow("box by a function") << "    QMessageBox::warning(this, text);"
                                       << "QMessageBox";
    QTest::newRow("message") << "    return [] { showMessage(text); };"
                             << "QMessageBox";
    QTest::newRow("menu") << "    menu = new QMenu(this);"
                          << "QMenu";
    QTest::newRow("use of one") << "    connect(dialog, &QColorDialog::colorSelected, this);"
                                << "";
    QTest::newRow("include") << "#include <QFileDialog>"
                             << "";
}

void tst_TourWindows::makingOfAWindowIsSeen()
{
    QFETCH(QString, code);
    QFETCH(QString, classes);
    QCOMPARE(listOf(dialogsMadeIn(code)), classes);
}

void tst_TourWindows::everyWindowOfTheSourcesIsOnTheTour()
{
    QVERIFY(QDir(sources).exists());
    QCOMPARE(listOf(windowsInSources() - windowsOfTour()), QString());
}

void tst_TourWindows::everyWindowOfTheTourIsInTheSources()
{
    QCOMPARE(listOf(windowsOfTour() - windowsInSources()), QString());
}

QTEST_GUILESS_MAIN(tst_TourWindows)
#include "tst_tourwindows.moc"
