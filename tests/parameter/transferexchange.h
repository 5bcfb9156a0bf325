// SPDX-License-Identifier: GPL-3.0-or-later
// The editor's conversation with a peer that answers when it is told to, and what both say. Main thread.
#pragma once

#include "parameter/parametertransfer.h"
#include "support/registerpeer.h"
#include "support/signallog.h"
#include "support/wire.h"

#include <QCoreApplication>

#include <functional>

namespace transferexchange {

using End = ParameterTransfer::End;

// A transfer whose frames go to a peer that answers when it is told to.
class Exchange
{
public:
    Exchange()
        : transfer({QStringLiteral("Pn-304")})
    {
        peer.held = true;
        QObject::connect(&transfer, &ParameterTransfer::frameReady, &peer,
                         [this](const QByteArray &frame) { peer.take(frame, QString()); });
        QObject::connect(&peer, &RegisterPeer::reply, &transfer, &ParameterTransfer::takeReply);
    }

    // Lets what is held back come in, and what it sets going, as far as the next frame.
    void answer()
    {
        peer.release();
        peer.held = true;
        QCoreApplication::processEvents();
    }
    // Answers until nothing is asked any more.
    void answerAll()
    {
        for (int count = 0; count != peer.frames.size();) {
            count = peer.frames.size();
            answer();
        }
    }

    RegisterPeer peer;
    ParameterTransfer transfer;
    SignalLog<int, QByteArray> answers{&transfer, &ParameterTransfer::answered};
    SignalLog<End> ends{&transfer, &ParameterTransfer::ended};
    SignalLog<> withdrawals{&transfer, &ParameterTransfer::withdrawn};
    SignalLog<int, int> counts{&transfer, &ParameterTransfer::progress};
};

using Start = std::function<void(ParameterTransfer &)>;

inline const QStringList jog{"Pn-007", "", "150.0", "0.1rpm", "0.0", "6000.0"};
inline const QStringList gear{"Pn-100", "", "3", "", "0", "8"};

inline const QByteArray readJog = wire::frame("01 03 20 07 00 01");
inline const QByteArray readGear = wire::frame("01 03 20 64 00 01");
inline const QByteArray storeJog = wire::frame("01 10 e0 07 00 01 02 05 dc");

inline void readOne(ParameterTransfer &transfer)
{
    transfer.readOne(QStringLiteral("Pn-007"));
}

inline void readPages(ParameterTransfer &transfer)
{
    transfer.readPages({"Pn-007", "Pn-100"});
}

inline void readBatch(ParameterTransfer &transfer)
{
    transfer.readBatch({"Pn-007", "Pn-100"});
}

inline void writePages(ParameterTransfer &transfer)
{
    transfer.writePages({jog, gear});
}

inline void writeBatch(ParameterTransfer &transfer)
{
    transfer.writeBatch({jog, gear});
}

} // namespace transferexchange

Q_DECLARE_METATYPE(transferexchange::Start)
Q_DECLARE_METATYPE(transferexchange::End)
