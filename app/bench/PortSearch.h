// SPDX-FileCopyrightText: The Tessaly developers
// SPDX-License-Identifier: GPL-2.0-or-later
//
// Probes ports for handsets away from the window's thread: each search runs
// link::ProbePorts on a thread of its own and tells its results back on the
// thread that asked, so that the window keeps painting while ports are asked.
#pragma once

#include "link/PortProbe.h"

#include <QObject>

#include <chrono>
#include <memory>
#include <vector>

namespace halvane {

// A port to ask: the device the user names it by and the node to open.
struct PortToProbe {
    QString device;
    QString node;
};

class PortSearch : public QObject {
    Q_OBJECT
public:
    explicit PortSearch(std::chrono::milliseconds within, QObject* parent = nullptr);
    // Waits for the searches under way: their threads hold the ports open.
    ~PortSearch() override;

    // Starts asking `ports`, all at once; found() tells what answered.
    void search(const std::vector<PortToProbe>& ports);
    // Whether a search is under way on the port, by its node.
    bool searching(const QString& node) const;
    bool idle() const;

signals:
    // A search ended: each port with what its probe found.
    void probed(const std::vector<halvane::PortToProbe>& ports,
                const std::vector<tessaly::link::ProbeResult>& results);

private:
    struct Private;
    std::unique_ptr<Private> const d;
};

} // namespace halvane
