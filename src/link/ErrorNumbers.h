// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: LGPL-2.1-or-later
//
// The numbers of the TessalyErrors of the live handset's link, its backups
// and its file system, beside the simulated handset's (model/ErrorNumbers.h).
#pragma once

#include <cstdint>

namespace tessaly::link {

enum LinkError : int32_t {
    errHandsetRefused = 2001, // an error reply of the handset
    errSpcLocked = 2002, // the handset wants its SPC first
    errWrongReply = 2003, // a reply that does not answer the request
    errBadSpc = 2004, // an SPC that is not six digits, or a password not sixteen
    errPortMissing = 2010, // no such port
    errPortUnavailable = 2011, // a port that cannot be opened, or was lost
    errHandsetSilent = 2012, // no reply, or only damaged ones
    errWriteUnverified = 2021, // an item that reads back other than it was written
    errSpcRefused = 2022, // no SPC given, or the handset refused it
    errBackupUnwritable = 2030, // a backup or converted file that cannot be written
    errBackupUnreadable = 2031, // a backup or XQCN file refused
    errOtherHandset = 2032, // a backup of another handset, or of none that can be told
    errRequestsDropped = 2040, // a request the handset keeps dropping
    errScanStopped = 2041, // a full backup that stopped half-way and kept nothing
    errEfsRefused = 2050, // the handset's file system refused an operation, with its errno
    errRoamingListRefused = 2060, // the handset refused to give or take its roaming list
};

} // namespace tessaly::link
