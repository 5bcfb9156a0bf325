// SPDX-License-Identifier: GPL-3.0-or-later
// The frame list of gain tuning: what its three groups read, in this order, and the registers that it writes.
// Frames stand as hexadecimal text without CRC. Constant data and pure functions; any thread.
#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

namespace gaintuning {

// Reads of one register each. The mode registers come last, so that the widgets they switch find the values
// in place.
QList<QByteArray> gainModeReads();
QList<QByteArray> inertiaReads();
QList<QByteArray> vibrationReads();

// Closes a frame that stands as text with its CRC.
QByteArray closed(const QByteArray &hexFrame);

// True for a read that the endless round repeats: the calculated inertia ratio and three resonances.
bool isCyclic(const QByteArray &hexFrame);

// Registers of the replies, with the base of reads.
enum Register {
    RegisterTorqueFilterTime = 0x21F6,           // Pn-502
    RegisterGainMode = 0x2258,                   // Pn-600
    RegisterRigidityGrade = 0x2259,              // Pn-601
    RegisterInertiaRatio = 0x225A,               // Pn-602
    RegisterOfflineMode = 0x225C,                // Pn-604
    RegisterMaximumSpeed = 0x225D,               // Pn-605, the first of the four table rows
    RegisterIntervalTime = 0x2260,               // Pn-608, the last
    RegisterPositionLoopGain = 0x2262,           // Pn-610
    RegisterSpeedLoopGain = 0x2263,              // Pn-611
    RegisterSpeedLoopIntegralTime = 0x2264,      // Pn-612
    RegisterSpeedFeedforwardGain = 0x227D,       // Pn-637
    RegisterSpeedFeedforwardFilterTime = 0x227E, // Pn-638
    RegisterNotchMode = 0x2296,                  // Pn-662
    RegisterNotch1Frequency = 0x2297,            // Pn-663, the first of twelve
    RegisterNotch4DeepGrade = 0x22A2,            // Pn-674, the last
    RegisterOnlineMode = 0x22AE,                 // Pn-686
    RegisterResonance = 0x2601,                  // Pn-F37
    RegisterCalculatedRatio = 0x2618             // Pn-F60
};

// Write of a register in its stored form, 0x10 with one word: the low 16 bits of the value.
QByteArray storeFrame(int readRegister, int value);

// The same for a run of words from the register on.
QByteArray storeFrame(int readRegister, const QList<int> &values);

// The text of a value as the fields show it, by the scale of its register: unsigned, with two fraction
// digits, one, or in the general format with six significant digits.
QString valueText(int readRegister, quint32 value);

} // namespace gaintuning
