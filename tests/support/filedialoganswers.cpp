// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/filedialoganswers.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QFileInfo>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

namespace {

QPushButton *buttonOf(const QFileDialog *dialog, QDialogButtonBox::StandardButton which)
{
    return dialog->findChild<QDialogButtonBox *>(QStringLiteral("buttonBox"))->button(which);
}

QLineEdit *nameLine(const QFileDialog *dialog)
{
    return dialog->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"));
}

} // namespace

FileDialogAnswers::FileDialogAnswers()
{
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    // The dialog keeps its state and its history there.
    static const QTemporaryDir settings;
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, settings.path());
    qApp->installEventFilter(this);
}

FileDialogAnswers::~FileDialogAnswers()
{
    qApp->removeEventFilter(this);
    for (const Expected &missing : qAsConst(expected))
        failures.append(QStringLiteral("no file dialog came with the title: ") + missing.title);
    if (!failures.isEmpty())
        QTest::qFail(qPrintable(failures.join(QLatin1String("; "))), __FILE__, __LINE__);
}

void FileDialogAnswers::expect(const QString &title, const QString &name, const QString &filter)
{
    const auto answer = [this, name, filter](QFileDialog *dialog) {
        if (!filter.isEmpty()) {
            if (!dialog->nameFilters().contains(filter))
                failures.append(QStringLiteral("file dialog has no such filter: ") + filter);
            dialog->selectNameFilter(filter);
        }
        accept(dialog, name);
    };
    expected.append({title, answer});
}

void FileDialogAnswers::expect(const QString &title, const QString &name,
                               const std::function<void()> &whenAccepted)
{
    const auto answer = [this, name, whenAccepted](QFileDialog *dialog) {
        connect(dialog, &QDialog::accepted, this, whenAccepted);
        accept(dialog, name);
    };
    expected.append({title, answer});
}

void FileDialogAnswers::expectCancelled(const QString &title)
{
    expected.append({title, [](QFileDialog *dialog) {
                         QTest::mouseClick(buttonOf(dialog, QDialogButtonBox::Cancel), Qt::LeftButton);
                     }});
}

void FileDialogAnswers::accept(QFileDialog *dialog, const QString &name)
{
    // The dialog would take a relative name from the folder that was last used in it.
    const QString path = QFileInfo(name).absoluteFilePath();
    nameLine(dialog)->setText(path);
    const bool saves = dialog->acceptMode() == QFileDialog::AcceptSave;
    buttonOf(dialog, saves ? QDialogButtonBox::Save : QDialogButtonBox::Open)->click();
    if (dialog->isVisible()) {
        failures.append(QStringLiteral("file dialog does not take the name: ") + name);
        dialog->reject();
    }
}

bool FileDialogAnswers::eventFilter(QObject *object, QEvent *event)
{
    if (event->type() == QEvent::Show) {
        if (auto *const dialog = qobject_cast<QFileDialog *>(object)) {
            const QPointer<QFileDialog> shown(dialog);
            QTimer::singleShot(0, this, [this, shown] {
                if (shown)
                    meet(shown);
            });
        }
    }
    return QObject::eventFilter(object, event);
}

void FileDialogAnswers::meet(QFileDialog *dialog)
{
    seen.append({dialog->windowTitle(), dialog->directory().absolutePath(), nameLine(dialog)->text(),
                 dialog->nameFilters(), dialog->acceptMode(), dialog->fileMode()});
    if (expected.isEmpty()) {
        failures.append(QStringLiteral("unexpected file dialog: ") + dialog->windowTitle());
        dialog->reject();
        return;
    }
    const Expected next = expected.takeFirst();
    if (dialog->windowTitle() != next.title)
        failures.append(QStringLiteral("file dialog is titled \"%1\", not \"%2\"")
                            .arg(dialog->windowTitle(), next.title));
    next.answer(dialog);
}
