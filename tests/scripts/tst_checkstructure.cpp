// SPDX-License-Identifier: GPL-3.0-or-later
// The check of the sources' shape, on this tree and on small ones that break it.
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

class CheckStructureTest : public QObject
{
    Q_OBJECT

private slots:
    void thisTreeKeepsItsShape();
    void lineIsJudged_data();
    void lineIsJudged();
    void treeWithoutSourcesIsRefused();
};

namespace {

struct Verdict
{
    int exitCode = -1;
    QString complaint;
};

Verdict check(const QString &root)
{
    QProcess process;
    process.start(QStringLiteral(VELMORA_SOURCE_DIR "/scripts/check-structure"), {root});
    if (!process.waitForFinished(60000) || process.exitStatus() != QProcess::NormalExit)
        return {};
    return {process.exitCode(), QString::fromUtf8(process.readAllStandardError())};
}

} // namespace

void CheckStructureTest::thisTreeKeepsItsShape()
{
    const Verdict verdict = check(QStringLiteral(VELMORA_SOURCE_DIR));
    QVERIFY2(verdict.exitCode == 0, qPrintable(verdict.complaint));
}

void CheckStructureTest::lineIsJudged_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<QString>("complaint"); // empty where the line may stand
    const auto add = [](const char *name, const char *file, const char *line, const char *complaint) {
        QTest::newRow(name) << file << QByteArray(line) << complaint;
    };
    add("own folder", "scope/scope.cpp", "#include \"scope/plotter.h\"", "");
    add("downwards", "scope/scope.cpp", "#include \"settings/settingskeys.h\"", "");
    add("library", "scope/scope.cpp", "#include <QTimer>", "");
    add("made of a form", "shell/mainwindow.cpp", "#include \"ui_mainwindow.h\"", "");
    add("shell takes a window", "shell/mainwindow.cpp", "#include \"gaintuning/gaintuning.h\"", "");
    add("shell from a window", "monitor/alarm_error.cpp", "#include \"shell/mainwindow.h\"",
        "src/monitor/alarm_error.cpp:2: monitor includes shell");
    add("shell from the ground", "settings/applanguage.h", "  #  include \"shell/startup.h\"",
        "src/settings/applanguage.h:2: settings includes shell");
    add("window from a window", "trialrun/trialrun.cpp", "#include \"parameter/parametertable.h\"",
        "src/trialrun/trialrun.cpp:2: trialrun includes parameter");
    add("window from a widget", "widgets/newcombox.h", "#include \"parameter/bitfieldforms.h\"",
        "src/widgets/newcombox.h:2: widgets includes parameter");
    add("widget from the link", "link/portlist.cpp", "#include \"widgets/messages.h\"",
        "src/link/portlist.cpp:2: link includes widgets");
    add("catalogue from the link", "link/portlist.cpp", "#include \"catalogue/parametercode.h\"",
        "src/link/portlist.cpp:2: link includes catalogue");
    add("not from src", "scope/scope.cpp", "#include \"plotter.h\"",
        "src/scope/scope.cpp:2: \"plotter.h\" is not named");
    add("by way of the folder above", "scope/scope.cpp", "#include \"../shell/startup.h\"",
        "src/scope/scope.cpp:2: \"../shell/startup.h\" is not named");
    add("unknown folder", "helpers/all.cpp", "#include \"link/requests.h\"",
        "src/helpers/all.cpp:2: src/helpers is no folder");
    add("frame in the link", "link/framecodec.h", "constexpr char probe[] = \"010320600002cfd5\";", "");
    add("frame in a frame list", "trialrun/trialrunframes.cpp", "{\"010620070bb83489\"},", "");
    add("frame in a header of a frame list", "monitor/pollframes.h", "{\"010325dc00014efc\"},", "");
    add("frame in a window", "trialrun/trialrun.cpp", "send(\"010620070bb83489\");",
        "src/trialrun/trialrun.cpp:2: a frame outside");
    add("head and register in a window", "monitor/control_run.cpp", "return \"01102014\" + count;",
        "src/monitor/control_run.cpp:2: a frame outside");
    add("stream request in a window", "scope/scope.cpp", "\"01140000000000000000DEC2\"",
        "src/scope/scope.cpp:2: a frame outside");
    add("frame as bytes", "scope/scope.cpp", "\"\\x01\\x14\\x00\"", "src/scope/scope.cpp:2: a frame outside");
    add("head of a reply as bytes", "scope/scope.cpp", "\"\\x01\\x03\"", "");
    add("other number", "scope/scope.cpp", "QString(\"0102030405\")", "");
}

void CheckStructureTest::lineIsJudged()
{
    QFETCH(QString, file);
    QFETCH(QByteArray, line);
    QFETCH(QString, complaint);
    const QTemporaryDir root;
    const QString path = root.filePath(QStringLiteral("src/") + file);
    QVERIFY(QDir().mkpath(QFileInfo(path).path()));
    QFile source(path);
    QVERIFY(source.open(QIODevice::WriteOnly));
    source.write("// A comment.\n" + line + "\n");
    source.close();
    const Verdict verdict = check(root.path());
    QCOMPARE(verdict.exitCode, complaint.isEmpty() ? 0 : 1);
    QVERIFY2(complaint.isEmpty() || verdict.complaint.startsWith(complaint), qPrintable(verdict.complaint));
    QCOMPARE(verdict.complaint.count(QLatin1Char('\n')), complaint.isEmpty() ? 0 : 1);
}

void CheckStructureTest::treeWithoutSourcesIsRefused()
{
    const QTemporaryDir root;
    QCOMPARE(check(root.path()).exitCode, 2);
}

QTEST_GUILESS_MAIN(CheckStructureTest)
#include "tst_checkstructure.moc"
