// SPDX-License-Identifier: GPL-3.0-or-later
// Meets the file dialogs of a test: records each and answers it as the test has announced. Dialogs are Qt's
// own from the first object of this class on.
// Main thread; an object on the stack of a test function, which fails if a dialog came unannounced or not at
// all.
#pragma once

#include <QFileDialog>
#include <QList>
#include <QObject>
#include <QStringList>

#include <functional>

class FileDialogAnswers : public QObject
{
    Q_OBJECT

public:
    struct Seen
    {
        QString title;
        QString directory;
        QString name; // in its line of text
        QStringList filters;
        QFileDialog::AcceptMode acceptMode = QFileDialog::AcceptOpen;
        QFileDialog::FileMode fileMode = QFileDialog::AnyFile;
    };

    FileDialogAnswers();
    ~FileDialogAnswers() override;

    // Announces the next dialog: it must have this title, gets the name into its line of text, the filter
    // chosen if one is given, and is accepted with its button. A name is relative to the working directory.
    void expect(const QString &title, const QString &name, const QString &filter = QString());
    // The same, and the action is done at the moment when the dialog has been accepted.
    void expect(const QString &title, const QString &name, const std::function<void()> &whenAccepted);
    // Announces a dialog that is cancelled with its button.
    void expectCancelled(const QString &title);

    // All that was seen so far.
    QList<Seen> seen;
    // True when every announced dialog has come.
    bool isDone() const { return expected.isEmpty(); }

protected:
    bool eventFilter(QObject *object, QEvent *event) override;

private:
    struct Expected
    {
        QString title;
        std::function<void(QFileDialog *)> answer;
    };

    void meet(QFileDialog *dialog);
    void accept(QFileDialog *dialog, const QString &name);

    QList<Expected> expected;
    QStringList failures;
};
