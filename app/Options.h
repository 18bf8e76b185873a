// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// halvane's command line.
#pragma once

#include <QString>

#include <chrono>
#include <optional>

class QCoreApplication;

namespace halvane {

struct Options {
    QString screenshot; // render the panel to this file and exit
    QString page;       // the tree node to show
    QString message;    // the text of the panel's message box
    QString edit;       // "row,column" of the value cell to double-click
    QString state;      // the simulated handset's NV memory file
    std::chrono::milliseconds pace{0};
    QString port;       // a real handset's serial device, "auto", or a bench: devices with commas, or "all"
    std::chrono::milliseconds replyTime{3000};
    QString spc;
    QString restoreBackup;
    bool listPorts = false;
    bool bench = false; // the bench window: every handset found, backed up at once
    bool read = false;  // read the handset on --port without a window
    bool hasMessage = false;
    bool info = false;  // print what the handset on --port says of itself
    bool probe = false; // --list-ports asks each free port for a handset
    bool json = false;  // --list-ports as JSON
    std::chrono::milliseconds probeTime{300};
    // The full backup: every item number from firstItem to lastItem, with
    // inFlight requests on the line at once; a restore then writes items the
    // catalogue does not know too.
    bool allItems = false;
    uint16_t firstItem = 0;
    uint16_t lastItem = 65535;
    int inFlight = 4;
    QString convertFrom{}; // --convert: this file into convertTo
    QString convertTo{};
    // The handset's file system: --efs-list lists efsFrom; --efs-get copies
    // the handset's efsFrom to the local efsTo; --efs-put the local efsFrom
    // to the handset's efsTo. A full backup holds the file system unless
    // noFiles.
    enum class FileWork { None, List, Get, Put } fileWork = FileWork::None;
    QString efsFrom{};
    QString efsTo{};
    bool noFiles = false;
    // One NV item by its number (ItemByNumber.h): --nv-read ITEM[:INDEX], or
    // --nv-write ITEM[:INDEX] with its bytes in hexadecimal after it.
    QString nvRead{};
    QString nvWrite{};
    QString nvBytes{};
    QString diffFrom{}; // --diff: this NV file compared with diffTo (Diff.h)
    QString diffTo{};

    // Whether --port names a bench of handsets rather than one.
    bool manyPorts() const { return port == QLatin1String("all") || port.contains(QLatin1Char(',')); }
    // The roaming list: --prl-show decodes a .prl file; --prl-get reads the
    // handset's list into a new one; --prl-put writes one to the handset.
    QString prlShow{};
    QString prlGet{};
    QString prlPut{};
};

// Reads the command line of `app`. --help and --version are answered and
// exit; a wrong value is told on standard error and gives nothing.
std::optional<Options> ParseOptions(const QCoreApplication& app);

} // namespace halvane
