// SPDX-License-Identifier: GPL-3.0-or-later
// Stands in for the link below a window: records every frame of its outgoing signal, in order, and answers
// it. Main thread.
#pragma once

#include <QByteArray>
#include <QList>
#include <QMap>
#include <QObject>
#include <QStringList>

#include <functional>

class RegisterPeer : public QObject
{
    Q_OBJECT

public:
    explicit RegisterPeer(QObject *parent = nullptr);

    // Registers by address; 0xE000 writes reach the working copy at 0x2000 too. A register never set reads 0.
    QMap<int, quint16> registers;
    QList<QByteArray> frames; // all that the window has sent
    QStringList windowNames;
    // Gives another reply than the registers would; an empty one is silence. None: the registers answer.
    std::function<QByteArray(const QByteArray &request, const QByteArray &usualReply)> intercept;
    // Answers to hold back until release(); recorded all the same.
    bool held = false;
    void release();

public slots:
    void take(QByteArray frame, QString windowName);

signals:
    void reply(QByteArray frame);

private:
    QByteArray usualReply(const QByteArray &request);
    void send(const QByteArray &frame);

    QList<QByteArray> waiting;
};
