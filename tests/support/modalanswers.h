// SPDX-License-Identifier: GPL-3.0-or-later
// Meets the message boxes of a test: records each and answers it as the test has announced.
// Main thread; an object on the stack of a test function, which fails if a box came unannounced or not at
// all.
#pragma once

#include <QList>
#include <QMessageBox>
#include <QObject>
#include <QStringList>

#include <functional>

class ModalAnswers : public QObject
{
    Q_OBJECT

public:
    struct Seen
    {
        QString title;
        QString text;
        QString informativeText;
        QStringList buttons;
        QMessageBox::Icon icon = QMessageBox::NoIcon;
    };

    ModalAnswers();
    ~ModalAnswers() override;

    // Announces a box with this text, and its answer. Where the order of several matters, seen tells it.
    void expect(const QString &text, QMessageBox::StandardButton answer = QMessageBox::Ok);
    // The same, but something else is done instead of pressing a button.
    void expect(const QString &text, const std::function<void(QMessageBox *)> &answer);
    // Announces a box that goes by itself.
    void expectPassing(const QString &text);
    // A box that may come or not; "OK" is pressed.
    void allow(const QString &text);
    // The same for a box that goes by itself.
    void allowPassing(const QString &text);

    // All that was seen so far.
    QList<Seen> seen;
    // True when every announced box has come.
    bool isDone() const;

protected:
    bool eventFilter(QObject *object, QEvent *event) override;

private:
    struct Expected
    {
        QString text;
        std::function<void(QMessageBox *)> answer;
        bool mayBeMissing = false;
    };

    void meet(QMessageBox *box);

    QList<Expected> expected;
    QStringList failures;
};
