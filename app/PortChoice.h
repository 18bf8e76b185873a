// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// halvane's serial ports: --list-ports, and the port --port names, found by
// probing with "auto", and freed from ModemManager when it holds it.
#pragma once

#include "Options.h"

#include "link/PortList.h"

#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace halvane {

// The machine's serial ports, with those ModemManager holds by its own
// account marked as held: what --list-ports lists and the bench watches.
std::vector<tessaly::link::SerialPortEntry> Ports();

// Prints the port listing (text or JSON, probed when asked) and gives the
// exit status.
int ListPortsCommand(const Options& options);

// The device node to open for --port: the port given, or with "auto" the one
// port where a handset answers. ModemManager is asked to let go of it first
// when it holds it. Nothing, with `failure` saying why, when no port can be
// taken.
std::optional<QString> ChoosePort(const Options& options, QString& failure);

// The devices of a bench (Options::manyPorts): those of the list, each freed
// from ModemManager where it holds it, or with "all" every port where a
// handset answers. Nothing, with `failure` telling every port tried and why
// it was passed over, when "all" finds no handset.
std::optional<QStringList> ChooseBenchPorts(const Options& options, QString& failure);

} // namespace halvane
