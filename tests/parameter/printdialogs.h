// SPDX-License-Identifier: GPL-3.0-or-later
// Meets the dialogs that printing opens, answers them and remembers what they were. Main thread; an object on
// the stack of a test function.
#pragma once

#include <QApplication>
#include <QFileDialog>
#include <QFileInfo>
#include <QLineEdit>
#include <QPointer>
#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QProgressDialog>
#include <QPushButton>
#include <QTimer>

#include <functional>

class PrintDialogs : public QObject
{
public:
    PrintDialogs()
    {
        QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
        qApp->installEventFilter(this);
    }
    ~PrintDialogs() override { qApp->removeEventFilter(this); }

    QString nameToGive; // none: the file dialog is cancelled
    std::function<void()> whileTransformed;
    std::function<void()> whilePreviewed;
    std::function<void(QPrintPreviewDialog *)> whenPreviewIsMade; // before its maker has touched it

    QStringList progress; // title, label, font size, range and modality of each progress dialog shown
    QStringList fileDialogs;
    QList<Qt::WindowFlags> previews;
    QList<int> resolutions;       // of the printers that the previews show
    bool wasProgressOpen = false; // when the preview was there

protected:
    bool eventFilter(QObject *object, QEvent *event) override
    {
        if (event->type() == QEvent::Show) {
            if (auto *const file = qobject_cast<QFileDialog *>(object))
                later(file, [this, file] { answer(file); });
            else if (auto *const preview = qobject_cast<QPrintPreviewDialog *>(object))
                later(preview, [this, preview] { answer(preview); });
            else if (auto *const bar = qobject_cast<QProgressDialog *>(object))
                remember(bar);
        } else if (event->type() == QEvent::WindowTitleChange && whenPreviewIsMade) {
            // Its constructor ends with the title.
            if (auto *const preview = qobject_cast<QPrintPreviewDialog *>(object))
                whenPreviewIsMade(preview);
        }
        return false;
    }

private:
    static void later(QDialog *dialog, const std::function<void()> &answer)
    {
        QTimer::singleShot(0, dialog, answer);
    }
    void remember(const QProgressDialog *bar)
    {
        shownBar = bar;
        if (whileTransformed)
            whileTransformed();
        progress.append(QStringLiteral("%1|%2|%3|%4-%5|%6|%7")
                            .arg(bar->windowTitle(), bar->labelText())
                            .arg(bar->font().pointSize())
                            .arg(bar->minimum())
                            .arg(bar->maximum())
                            .arg(bar->isModal() ? "modal" : "free",
                                 bar->findChild<QPushButton *>() ? "button" : "no button"));
    }
    void answer(QFileDialog *dialog)
    {
        fileDialogs.append(dialog->windowTitle() + QLatin1Char('|') +
                           dialog->nameFilters().join(QLatin1Char(',')) + QLatin1Char('|') +
                           (dialog->acceptMode() == QFileDialog::AcceptSave ? "save" : "open"));
        if (nameToGive.isEmpty()) {
            dialog->reject();
            return;
        }
        // The dialog would take a relative name from the folder that was last used in it.
        const QString path = QFileInfo(nameToGive).absoluteFilePath();
        dialog->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"))->setText(path);
        static_cast<QDialog *>(dialog)->accept();
    }
    void answer(QPrintPreviewDialog *preview)
    {
        previews.append(preview->windowFlags());
        resolutions.append(preview->printer()->resolution());
        wasProgressOpen = shownBar && shownBar->isVisible();
        if (whilePreviewed)
            whilePreviewed();
        preview->reject();
    }

    QPointer<const QProgressDialog> shownBar;
};
