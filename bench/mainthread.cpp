// SPDX-License-Identifier: GPL-3.0-or-later
// Processor time of the main thread for what the link makes it do: one accepted chunk as the shell sees it,
// and one reply into a page of the editor.
#include "benchmain.h"
#include "catalogueeditor.h"
#include "link/framecodec.h"
#include "link/serialport.h"
#include "messageboxes.h"
#include "parameter/parametereditor.h"
#include "parameter/parametertable.h"
#include "report.h"
#include "shell/mainwindow.h"
#include "shell/startup.h"
#include "support/editordriver.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QHeaderView>
#include <QStackedWidget>

#include <chrono>
#include <thread>

namespace {

constexpr int rounds = 7;
constexpr int burstSize = 20000;
constexpr int pacedSize = 500;
constexpr std::chrono::milliseconds pace(1); // a thousand chunks a second

// The bare peer of a chunk's signal.
class Bare : public QObject
{
    Q_OBJECT

public slots:
    void nothing(bool) {}
};

using Emitter = std::function<void()>;

// Microseconds a signal that another thread has queued: all of them before the first is delivered.
double burstCost(const Emitter &emitOne)
{
    QCoreApplication::processEvents();
    std::thread([&emitOne] {
        for (int i = 0; i < burstSize; ++i)
            emitOne();
    }).join();
    const double before = threadSeconds();
    QCoreApplication::sendPostedEvents();
    return (threadSeconds() - before) / burstSize * 1e6;
}

// The same for signals that come one at a time and wake the event loop.
double pacedCost(const Emitter &emitOne)
{
    QCoreApplication::processEvents();
    QEventLoop loop;
    std::thread worker([&emitOne, &loop] {
        auto next = std::chrono::steady_clock::now();
        for (int i = 0; i < pacedSize; ++i) {
            next += pace;
            std::this_thread::sleep_until(next);
            emitOne();
        }
        QMetaObject::invokeMethod(&loop, &QEventLoop::quit, Qt::QueuedConnection);
    });
    const double before = threadSeconds();
    loop.exec();
    const double used = threadSeconds() - before;
    worker.join();
    return used / pacedSize * 1e6;
}

void measureChunk()
{
    const Application product = startApplication();
    SerialPort link;
    QObject::connect(&link, &SerialPort::servoONOFFLine, product.window.get(), &MainWindow::servoONOFFLine);
    SerialPort bareLink;
    Bare bare;
    QObject::connect(&bareLink, &SerialPort::servoONOFFLine, &bare, &Bare::nothing);
    const Emitter chunk = [&link] { emit link.servoONOFFLine(true); };
    const Emitter bareSignal = [&bareLink] { emit bareLink.servoONOFFLine(true); };
    chunk(); // the indicator shows the state from here on

    QVector<double> burst;
    QVector<double> bareBurst;
    QVector<double> paced;
    QVector<double> barePaced;
    for (int round = 0; round < rounds; ++round) {
        burst.append(burstCost(chunk));
        bareBurst.append(burstCost(bareSignal));
        paced.append(pacedCost(chunk));
        barePaced.append(pacedCost(bareSignal));
    }
    const auto row = [](const char *name, const QVector<double> &cost, const QVector<double> &peer) {
        return QStringList{QString::fromLatin1(name), figure(median(cost), 2), figure(median(peer), 2),
                           figure(medianRatio(cost, peer), 2), ratioSpread(cost, peer)};
    };
    printTable(QStringLiteral("Main thread, microseconds an accepted chunk, median of %1 rounds").arg(rounds),
               {{"delivery", "indicator's slot", "empty slot", "ratio", "spread"},
                row("in a burst", burst, bareBurst),
                row("a thousand a second", paced, barePaced)});
}

QByteArray replyTo(const QByteArray &request, int value)
{
    QByteArray reply = QByteArray::fromHex(request.at(5) == 2 ? "010304000000" : "01030200");
    reply.append(char(value));
    return withCrc(reply);
}

// Microseconds a reply of a page read, the drawing that it causes included.
double replyCost(ParameterEditor &editor, int value)
{
    QByteArray request;
    const auto connection =
        QObject::connect(&editor, qOverload<QByteArray, QString>(&ParameterEditor::writeToSerialPort),
                         &editor, [&request](const QByteArray &frame) { request = frame; });
    const MessageBoxes boxes;
    editor.readPageSlt();
    QCoreApplication::processEvents();
    double used = 0;
    int replies = 0;
    for (;;) {
        const QByteArray reply = replyTo(request, value);
        const double before = threadSeconds();
        editor.handleBaseParameter(reply);
        QCoreApplication::processEvents();
        // The last one runs the message box, which is no cost of a reply.
        if (!boxes.texts.isEmpty())
            break;
        used += threadSeconds() - before;
        ++replies;
    }
    QObject::disconnect(connection);
    return used / replies * 1e6;
}

// Plain tables with the texts of the editor's pages, in a window of the size of its stack of pages.
class BareTables
{
public:
    BareTables(const ParameterEditor &editor, QHeaderView::ResizeMode mode)
    {
        const QList<ParameterTable *> pages = EditorDriver(&editor).pages();
        for (const ParameterTable *page : pages) {
            auto *table = new QTableWidget(page->rowCount(), page->columnCount());
            for (int row = 0; row < page->rowCount(); ++row) {
                for (int column = 0; column < page->columnCount(); ++column) {
                    const auto place = static_cast<ParameterTable::Column>(column);
                    table->setItem(row, column, new QTableWidgetItem(page->text(row, place)));
                }
            }
            table->horizontalHeader()->setSectionResizeMode(mode);
            tables.append(table);
            stack.addWidget(table);
        }
        stack.resize(EditorDriver(&editor).pageStack()->size());
        stack.show();
        QCoreApplication::processEvents();
    }

    // Microseconds a setText() and the drawing that it causes.
    double cost(const QString &text)
    {
        double used = 0;
        int count = 0;
        for (QTableWidget *table : qAsConst(tables)) {
            stack.setCurrentWidget(table);
            QCoreApplication::processEvents();
            for (int row = 0; row < table->rowCount(); ++row) {
                const double before = threadSeconds();
                table->item(row, ParameterTable::ValueColumn)->setText(text);
                QCoreApplication::processEvents();
                used += threadSeconds() - before;
                ++count;
            }
        }
        return used / count * 1e6;
    }

private:
    QStackedWidget stack;
    QList<QTableWidget *> tables;
};

void measureReply()
{
    SerialPort::portOpened = true; // the editor asks nothing of a closed link
    const auto editor = makeEditor();
    BareTables plain(*editor, QHeaderView::Interactive);
    BareTables fitted(*editor, QHeaderView::ResizeToContents);
    QVector<double> reply;
    QVector<double> plainText;
    QVector<double> fittedText;
    for (int round = 0; round < rounds; ++round) {
        // Another value every time: a text that is there already costs nothing.
        const int value = 10 + round;
        reply.append(replyCost(*editor, value));
        plainText.append(plain.cost(QString::number(value)));
        fittedText.append(fitted.cost(QString::number(value)));
    }
    SerialPort::portOpened = false;
    const auto row = [&plainText](const char *name, const QVector<double> &cost) {
        return QStringList{QString::fromLatin1(name), figure(median(cost), 0),
                           figure(medianRatio(cost, plainText), 2), ratioSpread(cost, plainText)};
    };
    printTable(
        QStringLiteral("Main thread, microseconds a value drawn, %1 rows in %2 pages, median of %3 rounds")
            .arg(parameterCount(*editor))
            .arg(EditorDriver(editor.get()).pageCount())
            .arg(rounds),
        {{"what", "microseconds", "to setText", "spread"},
         row("reply into a page, progress shown", reply),
         row("setText in a bare table, columns fitted to contents", fittedText),
         row("setText in a bare table", plainText)});
}

} // namespace

int main(int argc, char *argv[])
{
    return runBenchmark(argc, argv, [] {
        measureChunk();
        measureReply();
    });
}

#include "mainthread.moc"
