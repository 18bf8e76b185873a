// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// The handset's answers to EFS2, subsystem 0x13: each request decoded and
// each reply encoded by link/Efs2.h, the calls made on the emulator's file
// system (EfsTree.h). Hello answers with the handset's windows of 1 MB and
// version 1; a read gives 1024 bytes at most, however many were asked for.
#pragma once

#include "EfsTree.h"

#include <QByteArray>

namespace emu {

class EfsAnswers {
public:
    static constexpr uint32_t MaxReadBytes = 1024;

    explicit EfsAnswers(EfsTree& tree);

    // The reply to a request of subsystem 0x13: "bad length" for one cut
    // short, "bad command" for a command EFS2 does not have.
    QByteArray answer(const QByteArray& request);

private:
    EfsTree& m_tree;
};

} // namespace emu
