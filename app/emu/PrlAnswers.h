// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// The handset's roaming list and its answers to the roaming list commands
// (link/DiagRoamingList.h). It holds one list, for the first NAM: the
// factory list of FactoryPrl.h until it takes another. A new list comes in
// blocks numbered from 0; a block out of sequence, or one past the room it
// has, ends the write; at the last block the list is checked as a handset
// checks it (its size field and CRC) and taken, or refused with NV status 6
// (bad parameter), the old list kept. Kept in a file of its own when one is
// given (the .prl bytes, "<state>.prl"), written whole when a list is taken.
#pragma once

#include <QByteArray>
#include <QString>

namespace emu {

class PrlAnswers {
public:
    // The room of the handset's list in its NV memory.
    static constexpr qsizetype Room = 16384;

    PrlAnswers();

    // Keeps the list in `path` from now on: the list there, when there is a
    // file there, else the list held is written there. Gives what went
    // wrong, or an empty string.
    QString keepIn(const QString& path);

    QByteArray read(const QByteArray& request) const;
    // The handset's SPC lock is the caller's to check first.
    QByteArray write(const QByteArray& request);

private:
    QByteArray m_list;
    QString m_path;
    QByteArray m_incoming;
    int m_nextBlock = -1; // none: no write under way
};

} // namespace emu
