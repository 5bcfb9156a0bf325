// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/modalanswers.h"

#include <QAbstractButton>
#include <QApplication>
#include <QPointer>
#include <QTest>
#include <QTimer>

#include <algorithm>

ModalAnswers::ModalAnswers()
{
    qApp->installEventFilter(this);
}

ModalAnswers::~ModalAnswers()
{
    qApp->removeEventFilter(this);
    for (const Expected &missing : qAsConst(expected)) {
        if (missing.mayBeMissing)
            continue;
        failures.append(QStringLiteral("no box came with the text: ") + missing.text);
    }
    if (!failures.isEmpty())
        QTest::qFail(qPrintable(failures.join(QLatin1String("; "))), __FILE__, __LINE__);
}

void ModalAnswers::expect(const QString &text, QMessageBox::StandardButton answer)
{
    expect(text, [this, answer](QMessageBox *box) {
        QAbstractButton *const button = box->button(answer);
        if (button) {
            button->click();
        } else {
            failures.append(QStringLiteral("box has no such button: ") + box->text());
            box->done(0);
        }
    });
}

void ModalAnswers::expect(const QString &text, const std::function<void(QMessageBox *)> &answer)
{
    expected.append({text, answer});
}

void ModalAnswers::expectPassing(const QString &text)
{
    expected.append({text, {}});
}

void ModalAnswers::allow(const QString &text)
{
    expect(text);
    expected.last().mayBeMissing = true;
}

void ModalAnswers::allowPassing(const QString &text)
{
    expectPassing(text);
    expected.last().mayBeMissing = true;
}

bool ModalAnswers::isDone() const
{
    return std::all_of(expected.begin(), expected.end(), [](const Expected &e) { return e.mayBeMissing; });
}

bool ModalAnswers::eventFilter(QObject *object, QEvent *event)
{
    if (event->type() == QEvent::Show) {
        if (auto *const box = qobject_cast<QMessageBox *>(object)) {
            const QPointer<QMessageBox> shown(box);
            QTimer::singleShot(0, this, [this, shown] {
                if (shown)
                    meet(shown);
            });
        }
    }
    return QObject::eventFilter(object, event);
}

void ModalAnswers::meet(QMessageBox *box)
{
    Seen record{box->windowTitle(), box->text(), box->informativeText(), {}, box->icon()};
    const QList<QAbstractButton *> buttons = box->buttons();
    for (const QAbstractButton *button : buttons)
        record.buttons.append(button->text().remove(QLatin1Char('&')));
    seen.append(record);

    const auto match = std::find_if(expected.begin(), expected.end(),
                                    [box](const Expected &e) { return e.text == box->text(); });
    if (match == expected.end()) {
        failures.append(QStringLiteral("unexpected box: ") + box->text());
        box->done(0);
        return;
    }
    const Expected next = *match;
    expected.erase(match);
    if (next.answer)
        next.answer(box);
}
